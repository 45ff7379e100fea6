// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/ExpandedText.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarText.h"
#include "tests/adapters/CalendarRoom.h"

#include <algorithm>
#include <iterator>

namespace corvane {

ExpansionRequest testRequest()
{
    return {testDay(), "UTC"};
}

std::vector<ComponentGroup> groupsOfTexts(const std::vector<QByteArray> &texts)
{
    std::vector<CalendarContents> all;
    for (const QByteArray &text : texts) {
        auto calendars = readCalendarText(text);
        if (!calendars) {
            qFatal("%s", qPrintable(calendars.error().reason));
        }
        std::ranges::move(*calendars, std::back_inserter(all));
    }
    return groupsOf(std::move(all));
}

Expansion expandTexts(const std::vector<QByteArray> &texts, const ExpansionRequest &request)
{
    ExpansionControl control;
    return expandGroups(groupsOfTexts(texts), request, control);
}

QStringList titles(const Expansion &expansion)
{
    QStringList found;
    for (const CalendarEvent &event : expansion.events) {
        found << event.title.value_or(QString());
    }
    return found;
}

} // namespace corvane
