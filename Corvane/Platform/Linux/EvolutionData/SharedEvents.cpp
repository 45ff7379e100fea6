// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SharedEvents.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"
#include "Corvane/Utilities/Spawn.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// On a worker thread.
std::vector<ComponentGroup> groupsOfTexts(const std::vector<QByteArray> &texts)
{
    std::vector<CalendarContents> calendars;
    for (const QByteArray &text : texts) {
        if (auto contents = readCalendarText(text)) {
            std::ranges::move(*contents, std::back_inserter(calendars));
        }
    }
    return groupsOf(std::move(calendars));
}

} // namespace

SharedEvents::SharedEvents(std::shared_ptr<CalendarServices> services)
    : m_expander(std::make_shared<CalendarExpander>(std::move(services)))
{
}

QCoro::Task<void> SharedEvents::answer(CalendarQuestion question, std::vector<QByteArray> texts,
                                       QDeadlineTimer deadline, CalendarAnswers &answers)
{
    if (texts.empty()) {
        m_known.reset();
        co_return;
    }
    if (!m_known || m_known->question != question || m_known->texts != texts) {
        m_known = std::make_shared<Known>(question, std::move(texts));
        spawn(expand(m_expander, m_known));
    }
    const auto outcome = m_known->outcome;
    if (!co_await outcome.until(deadline) || !*outcome.value()) {
        if (outcome.isResolved()) {
            m_known.reset();
        }
        ++answers.silent;
        answers.error = u"The events that several calendar files name could not be read in time."_s;
        co_return;
    }
    std::ranges::copy((*outcome.value())->expansion.events, std::back_inserter(answers.events));
}

QCoro::Task<void> SharedEvents::expand(std::shared_ptr<CalendarExpander> expander,
                                       std::shared_ptr<Known> known)
{
    CalendarExpander::Work work = [texts = known->texts](const ExpansionRequest &request,
                                                         ExpansionControl &control) {
        return CalendarExpander::Outcome{expandGroups(groupsOfTexts(texts), request, control), {}};
    };
    Outcome outcome = co_await CalendarExpander::expand(expander, known->question, std::move(work));
    known->outcome.resolve(std::make_shared<Outcome>(std::move(outcome)));
}

} // namespace corvane
