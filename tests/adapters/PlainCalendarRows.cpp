// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarRows.h"

using namespace Qt::StringLiterals;

namespace corvane {

std::vector<CalendarRow> plainRows()
{
    // Most rows use a Wednesday in the middle of a month.
    const QDate wednesday(2025, 5, 14);
    return {
        {"single in UTC",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250514T120000Z\nDTEND:20250514T123000Z\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:30"_s}},
        {"duration instead of an end",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250514T120000Z\nDURATION:PT45M\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:45"_s}},
        {"neither end nor duration",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250514T120000Z\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:00"_s}},
        {"floating",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250514T093000\nDTEND:20250514T100000\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"local 09:30 10:00"_s}},
        {"floating series",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250115T093000\nDTEND:20250115T100000\nRRULE:FREQ=WEEKLY\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {u"local 09:30 10:00"_s}},
        {"zone by name",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;TZID=America/New_York:20250514T083000\nDTEND;TZID=America/"
         "New_York:20250514T090000\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"12:30 13:00"_s}},
        {"zone by private rules",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;TZID=/private/School "
         "Zone:20250514T153000\nDTEND;TZID=/private/School "
         "Zone:20250514T160000\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:30"_s}},
        {"series in private rules over the change of the clocks",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;TZID=/private/School "
         "Zone:20250108T153000\nDTEND;TZID=/private/School "
         "Zone:20250108T160000\nRRULE:FREQ=WEEKLY\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:30"_s}},
        {"weekly over the change of the clocks",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;TZID=Europe/Berlin:20250115T140000\nDTEND;TZID=Europe/"
         "Berlin:20250115T143000\nRRULE:FREQ=WEEKLY;BYDAY=WE\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:30"_s}},
        {"excluded instance",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;TZID=Europe/Berlin:20250115T140000\nDTEND;TZID=Europe/"
         "Berlin:20250115T143000\nRRULE:FREQ=WEEKLY\nEXDATE;TZID=Europe/"
         "Berlin:20250514T140000\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {}},
        {"excluded instance told in UTC",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;TZID=Europe/Berlin:20250115T140000\nDTEND;TZID=Europe/"
         "Berlin:20250115T143000\nRRULE:FREQ=WEEKLY\nEXDATE:20250514T120000Z\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {}},
        {"added instance",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250101T110000Z\nDTEND:20250101T113000Z\nRDATE:"
         "20250514T120000Z\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:30"_s}},
        {"moved within the day",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250115T110000Z\nDTEND:20250115T113000Z\nRRULE:FREQ=WEEKLY\nSUMMARY:"
         "%"
         "N\nEND:VEVENT\n"
         "BEGIN:VEVENT\nUID:%N\nRECURRENCE-ID:20250514T110000Z\nDTSTART:20250514T130000Z\nDTEND:"
         "20250514T140000Z\nSUMMARY:"
         "%N moved\nEND:VEVENT\n",
         wednesday,
         {u"13:00 14:00 moved"_s}},
        {"moved away from the day",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250115T110000Z\nDTEND:20250115T113000Z\nRRULE:FREQ=WEEKLY\nSUMMARY:"
         "%"
         "N\nEND:VEVENT\n"
         "BEGIN:VEVENT\nUID:%N\nRECURRENCE-ID:20250514T110000Z\nDTSTART:20250620T130000Z\nDTEND:"
         "20250620T140000Z\nSUMMARY:"
         "%N moved\nEND:VEVENT\n",
         wednesday,
         {}},
        {"moved to the day from another",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250110T110000Z\nDTEND:20250110T113000Z\nRRULE:FREQ=WEEKLY\nSUMMARY:"
         "%"
         "N\nEND:VEVENT\n"
         "BEGIN:VEVENT\nUID:%N\nRECURRENCE-ID:20250620T110000Z\nDTSTART:20250514T130000Z\nDTEND:"
         "20250514T140000Z\nSUMMARY:"
         "%N moved\nEND:VEVENT\n",
         wednesday,
         {u"13:00 14:00 moved"_s}},
        {"moved, told in the series' zone",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;TZID=Asia/Tokyo:20250115T200000\nDTEND;TZID=Asia/"
         "Tokyo:20250115T203000\nRRULE:FREQ=WEEKLY\nSUMMARY:%N\nEND:VEVENT\n"
         "BEGIN:VEVENT\nUID:%N\nRECURRENCE-ID;TZID=Asia/Tokyo:20250514T200000\nDTSTART;TZID=Asia/"
         "Tokyo:20250514T220000\nDTEND;TZID=Asia/Tokyo:20250514T230000\nSUMMARY:%N moved\nEND:VEVENT\n",
         wednesday,
         {u"13:00 14:00 moved"_s}},
        {"cancelled instance",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250115T110000Z\nDTEND:20250115T113000Z\nRRULE:FREQ=WEEKLY\nSUMMARY:"
         "%"
         "N\nEND:VEVENT\n"
         "BEGIN:VEVENT\nUID:%N\nRECURRENCE-ID:20250514T110000Z\nDTSTART:20250514T110000Z\nDTEND:"
         "20250514T113000Z\nSTATUS:"
         "CANCELLED\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {}},
        {"cancelled event",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250514T120000Z\nDTEND:20250514T123000Z\nSTATUS:CANCELLED\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {}},
        {"cancelled series",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250115T110000Z\nDTEND:20250115T113000Z\nRRULE:FREQ=WEEKLY\nSTATUS:"
         "CANCELLED\nSUMMARY:"
         "%N\nEND:VEVENT\n",
         wednesday,
         {}},
        {"tentative event",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250514T120000Z\nDTEND:20250514T123000Z\nSTATUS:TENTATIVE\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:30"_s}},
        {"declined event",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250514T120000Z\nDTEND:20250514T123000Z\nATTENDEE;PARTSTAT=DECLINED:"
         "mailto:a@"
         "example.org\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:30"_s}},
        {"changed instance without its series",
         "BEGIN:VEVENT\nUID:%N\nRECURRENCE-ID:20250514T110000Z\nDTSTART:20250514T130000Z\nDTEND:"
         "20250514T140000Z\nSUMMARY:"
         "%N\nEND:VEVENT\n",
         wednesday,
         {u"13:00 14:00"_s}},
        {"two changed instances of one day",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250101T110000Z\nDTEND:20250101T113000Z\nRRULE:FREQ=DAILY\nSUMMARY:%"
         "N\nEND:VEVENT\n"
         "BEGIN:VEVENT\nUID:%N\nRECURRENCE-ID:20250514T110000Z\nDTSTART:20250514T120000Z\nDTEND:"
         "20250514T123000Z\nSUMMARY:"
         "%N one\nEND:VEVENT\n"
         "BEGIN:VEVENT\nUID:%N\nRECURRENCE-ID:20250515T110000Z\nDTSTART:20250514T130000Z\nDTEND:"
         "20250514T133000Z\nSUMMARY:"
         "%N two\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:30 one"_s, u"13:00 13:30 two"_s}},
        {"this and all that follow",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250115T110000Z\nDTEND:20250115T113000Z\nRRULE:FREQ=WEEKLY\nSUMMARY:"
         "%"
         "N\nEND:VEVENT\n"
         "BEGIN:VEVENT\nUID:%N\nRECURRENCE-ID;RANGE=THISANDFUTURE:20250430T110000Z\nDTSTART:"
         "20250430T120000Z\nDTEND:"
         "20250430T124500Z\nSUMMARY:%N later\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:45 later"_s}},
        {"limited by a date",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250115T110000Z\nDTEND:20250115T113000Z\nRRULE:FREQ=WEEKLY;UNTIL="
         "20250507T235959Z\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {}},
        {"limited by a count",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250430T110000Z\nDTEND:20250430T113000Z\nRRULE:FREQ=WEEKLY;COUNT="
         "3\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {u"11:00 11:30"_s}},
        {"ended by its count",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250430T110000Z\nDTEND:20250430T113000Z\nRRULE:FREQ=WEEKLY;COUNT="
         "2\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {}},
        {"every other week, not this one",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250507T110000Z\nDTEND:20250507T113000Z\nRRULE:FREQ=WEEKLY;INTERVAL="
         "2\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {}},
        {"second Wednesday of the month",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250108T110000Z\nDTEND:20250108T113000Z\nRRULE:FREQ=MONTHLY;BYDAY="
         "2WE\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {u"11:00 11:30"_s}},
        {"several a day",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250101T110000Z\nDTEND:20250101T113000Z\nRRULE:FREQ=DAILY;BYHOUR=11,"
         "12,13\nSUMMARY:"
         "%N\nEND:VEVENT\n",
         wednesday,
         {u"11:00 11:30"_s, u"12:00 12:30"_s, u"13:00 13:30"_s}},
        {"across midnight in UTC",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250114T233000Z\nDTEND:20250115T003000Z\nRRULE:FREQ=DAILY;UNTIL="
         "20250116T235959Z\nSUMMARY:"
         "%N\nEND:VEVENT\n",
         QDate(2025, 1, 20),
         {}},
        {"floating across midnight",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250513T233000\nDTEND:20250514T003000\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"local -23:30 00:30"_s}},
        {"twelve hours' floating series across midnight",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250101T200000\nDTEND:20250102T080000\nRRULE:FREQ=DAILY\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {u"local -20:00 08:00"_s, u"local 20:00 +08:00"_s}},
        {"whole day",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;VALUE=DATE:20250514\nDTEND;VALUE=DATE:20250515\nSUMMARY:%N\nEND:"
         "VEVENT\n",
         wednesday,
         {u"local 00:00 +00:00 (whole day)"_s}},
        {"whole day of yesterday",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;VALUE=DATE:20250513\nDTEND;VALUE=DATE:20250514\nSUMMARY:%N\nEND:"
         "VEVENT\n",
         wednesday,
         {}},
        {"whole day every year",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;VALUE=DATE:20000514\nDTEND;VALUE=DATE:20000515\nRRULE:FREQ="
         "YEARLY\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {u"local 00:00 +00:00 (whole day)"_s}},
        {"end before its start",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250514T120000Z\nDTEND:20250514T110000Z\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"12:00 12:00"_s}},
        {"zone that nobody knows",
         "BEGIN:VEVENT\nUID:%N\nDTSTART;TZID=Atlantis/Capital:20250514T093000\nDTEND;TZID=Atlantis/"
         "Capital:20250514T100000\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday,
         {u"local 09:30 10:00"_s}},
        {"hourly for years",
         "BEGIN:VEVENT\nUID:%N\nDTSTART:20250512T100000Z\nDTEND:20250512T101000Z\nRRULE:FREQ=HOURLY;BYHOUR="
         "11,13\nSUMMARY:%"
         "N\nEND:VEVENT\n",
         wednesday,
         {u"11:00 11:10"_s, u"13:00 13:10"_s}},
        {"not an event",
         "BEGIN:VTODO\nUID:%N\nDTSTART:20250514T120000Z\nDUE:20250514T123000Z\nSUMMARY:%N\nEND:VTODO\n",
         wednesday,
         {}},
    };
}

} // namespace corvane
