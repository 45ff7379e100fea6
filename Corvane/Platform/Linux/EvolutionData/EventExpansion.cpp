// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/GroupExpansion.h"
#include "Corvane/Platform/Linux/EvolutionData/Revisions.h"

#include <QHash>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// Expands the groups of one calendar within one budget.
class CalendarExpansion {
public:
    CalendarExpansion(const std::vector<ComponentGroup> &groups, const ExpansionRequest &request,
                      ExpansionControl &control)
        : m_groups(groups)
        , m_request(request)
        , m_control(control)
        , m_zones(request.timeZoneId)
        , m_outcomes(groups.size())
        , m_left(request.budget)
    {
        const EventTimes times(m_zones);
        for (ComponentGroup &group : m_groups) {
            keepNewestRevisions(group, times);
        }
    }

    Expansion run()
    {
        std::vector<std::size_t> series;
        for (std::size_t index = 0; index < m_groups.size(); ++index) {
            if (m_groups[index].isSeries()) {
                series.push_back(index);
                continue;
            }
            if (m_control.isCancelled()) {
                continue;
            }
            if (auto outcome = GroupExpansion(m_groups[index], m_request, m_control, m_zones).run()) {
                keep(index, std::make_shared<const GroupOutcome>(std::move(*outcome)));
            }
        }
        expandSeries(series);
        for (std::size_t index = 0; index < m_outcomes.size(); ++index) {
            if (const auto &outcome = m_outcomes[index]) {
                std::ranges::copy(outcome->events, std::back_inserter(m_expansion.events));
                std::ranges::copy(outcome->skippedEvents, std::back_inserter(m_expansion.skippedEvents));
                if (!outcome->events.empty()) {
                    m_expansion.occurring.push_back(index);
                }
            }
        }
        m_expansion.unknownZones = m_zones.takeUnknown();
        m_expansion.isComplete = !m_control.isCancelled();
        return std::move(m_expansion);
    }

private:
    struct Series {
        std::size_t index;
        double steps;
        GroupExpansion expansion;
    };

    /// The cheapest first, so that slow ones delay no others.
    void expandSeries(const std::vector<std::size_t> &indices)
    {
        std::vector<Series> series;
        for (const std::size_t index : indices) {
            GroupExpansion expansion(m_groups[index], m_request, m_control, m_zones);
            const double steps = m_control.isCancelled() ? 0 : expansion.plan();
            series.push_back({index, steps, std::move(expansion)});
        }
        std::vector<Series *> order;
        std::ranges::transform(series, std::back_inserter(order), [](Series &one) { return &one; });
        std::ranges::stable_sort(order, {}, [](const Series *one) { return one->steps; });
        for (Series *one : order) {
            expandOne(*one);
        }
    }

    void expandOne(Series &series)
    {
        ICalComponent *first = m_groups[series.index].components.front().component.get();
        if (m_control.isCancelled()) {
            m_expansion.unfinishedSeries.push_back(skippedEvent(first, u"it was not reached in time"_s));
            return;
        }
        const QByteArray key = m_groups[series.index].key();
        const bool isTooMuch = series.steps > m_left.steps;
        if (isTooMuch) {
            series.expansion.refuse(u"its calendar repeats too much altogether"_s);
        } else {
            m_left.steps -= series.steps;
            if (const auto known = m_request.knownSeries.find(key); known != m_request.knownSeries.end()) {
                m_expansion.series.insert(*known);
                keep(series.index, known->second);
                return;
            }
        }
        const std::size_t hash = qHash(key) | 1;
        if (m_request.suspects.contains(hash)) {
            m_expansion.skippedEvents.push_back(skippedEvent(first, u"it takes too long to follow"_s));
            return;
        }
        m_control.busyWith = hash;
        if (auto outcome = series.expansion.run()) {
            auto shared = std::make_shared<const GroupOutcome>(std::move(*outcome));
            if (!isTooMuch) {
                m_expansion.series.emplace(key, shared);
            }
            keep(series.index, std::move(shared));
        } else {
            m_expansion.unfinishedSeries.push_back(skippedEvent(first, u"it took too long"_s));
        }
        m_control.busyWith = 0;
    }

    /// Keeps what was found if the budget allows.
    void keep(std::size_t index, std::shared_ptr<const GroupOutcome> outcome)
    {
        if (outcome->events.size() > m_left.occurrences || outcome->text > m_left.text) {
            m_expansion.skippedEvents.push_back(
                skippedEvent(m_groups[index].components.front().component.get(),
                             u"its calendar has too many events of this day, or too long ones"_s));
            return;
        }
        m_left.occurrences -= outcome->events.size();
        m_left.text -= outcome->text;
        m_outcomes[index] = std::move(outcome);
    }

    std::vector<ComponentGroup> m_groups;
    const ExpansionRequest &m_request;
    ExpansionControl &m_control;
    ZoneTable m_zones;
    /// In the order of the groups.
    std::vector<std::shared_ptr<const GroupOutcome>> m_outcomes;
    ExpansionBudget m_left;
    Expansion m_expansion;
};

} // namespace

Expansion expandGroups(const std::vector<ComponentGroup> &groups, const ExpansionRequest &request,
                       ExpansionControl &control)
{
    return CalendarExpansion(groups, request, control).run();
}

} // namespace corvane
