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

/// Runs on a worker thread.
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
    : m_services(services)
    , m_expander(std::make_shared<CalendarExpander>(std::move(services)))
{
}

QCoro::Task<void> SharedEvents::answer(CalendarQuestion question, std::vector<QByteArray> texts,
                                       QDeadlineTimer deadline, CalendarAnswers &answers)
{
    if (texts.empty()) {
        m_known.reset();
        m_last.reset();
        co_return;
    }
    if (!m_known || m_known->question != question || m_known->texts != texts) {
        m_known = std::make_shared<Known>(question, std::move(texts));
        spawn(expand(m_services, m_expander, m_known));
    }
    const std::shared_ptr<Known> known = m_known;
    const auto outcome = known->outcome;
    const bool isInTime = co_await outcome.until(deadline);
    if (isInTime && *outcome.value()) {
        const Expansion &expansion = (*outcome.value())->expansion;
        if (expansion.isComplete) {
            m_last = known;
        } else {
            m_known.reset(); // the next load tries again, without what took too long
        }
        std::ranges::copy(expansion.events, std::back_inserter(answers.events));
        co_return;
    }
    if (isInTime) {
        m_known.reset();
    }
    if (m_last && m_last->question == question) {
        const Expansion &expansion = (*m_last->outcome.value())->expansion;
        std::ranges::copy(expansion.events, std::back_inserter(answers.events));
        co_return;
    }
    ++answers.silent;
    answers.error = u"The events that several calendar files name could not be read in time."_s;
}

QCoro::Task<void> SharedEvents::expand(std::shared_ptr<CalendarServices> services,
                                       std::shared_ptr<CalendarExpander> expander,
                                       std::shared_ptr<Known> known)
{
    const auto parsing = startOnPool(services->files.threads(), [texts = known->texts] {
        return std::make_shared<std::vector<ComponentGroup>>(groupsOfTexts(texts));
    });
    co_await parsing.untilResolved();
    CalendarExpander::Work work = [groups = *parsing.value()](const ExpansionRequest &request,
                                                              ExpansionControl &control) {
        CalendarExpander::Outcome outcome{expandGroups(*groups, request, control), {}};
        groups->clear();
        return outcome;
    };
    Outcome outcome = co_await CalendarExpander::expand(expander, known->question, std::move(work));
    known->outcome.resolve(std::make_shared<Outcome>(std::move(outcome)));
}

} // namespace corvane
