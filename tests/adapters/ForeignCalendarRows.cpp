// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarRows.h"

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr auto berlinOwnRules =
    "BEGIN:VTIMEZONE\nTZID:/private/School Zone\n"
    "BEGIN:STANDARD\nDTSTART:19701025T030000\nRRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10\n"
    "TZOFFSETFROM:+0330\nTZOFFSETTO:+0230\nEND:STANDARD\n"
    "BEGIN:DAYLIGHT\nDTSTART:19700329T020000\nRRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3\n"
    "TZOFFSETFROM:+0230\nTZOFFSETTO:+0330\nEND:DAYLIGHT\nEND:VTIMEZONE\n";

/// Rules that were abolished in 2014, under a name that every system knows.
constexpr auto outdatedMoscow =
    "BEGIN:VTIMEZONE\nTZID:Europe/Moscow\nBEGIN:STANDARD\nDTSTART:20110327T020000\n"
    "TZOFFSETFROM:+0300\nTZOFFSETTO:+0400\nEND:STANDARD\nEND:VTIMEZONE\n";

/// An event with these lines, which include its time.
QByteArray event(const QByteArray &lines)
{
    return "BEGIN:VEVENT\nUID:%N\n" + lines + "\nSUMMARY:%N\nEND:VEVENT\n";
}

/// A series on Wednesdays: `times` of the first event, by default in UTC, and further `lines`.
QByteArray weekly(const QByteArray &lines,
                  const QByteArray &times = "DTSTART:20250115T110000Z\nDTEND:20250115T113000Z\n")
{
    return event(times + lines);
}

QByteArray movedInstance(const QByteArray &lines)
{
    return "BEGIN:VEVENT\nUID:%N\n" + lines + "\nSUMMARY:%N moved\nEND:VEVENT\n";
}

constexpr auto tokyo = "DTSTART;TZID=Asia/Tokyo:20250115T200000\nDTEND;TZID=Asia/Tokyo:20250115T203000\n";
constexpr auto noon = "DTSTART:20250514T120000Z\nDTEND:20250514T123000Z\n";

} // namespace

QByteArray definedZones()
{
    return QByteArray(berlinOwnRules) + outdatedMoscow;
}

std::vector<CalendarRow> foreignRows()
{
    const QDate wednesday(2025, 5, 14);
    const QStringList atNoon{u"12:00 12:30"_s};
    const auto link = [](const QString &address) { return QStringList{u"12:00 12:30 <"_s + address + u'>'}; };
    return {
        {"end beside an empty duration",
         event("DTSTART:20250514T120000Z\nDTEND:20250514T123000Z\nDURATION:PT0S"), wednesday, atNoon},
        {"moved with an end beside an empty duration",
         weekly("RRULE:FREQ=WEEKLY") +
             movedInstance("RECURRENCE-ID:20250514T110000Z\nDTSTART:20250514T120000Z\n"
                           "DTEND:20250514T123000Z\nDURATION:PT0S"),
         wednesday,
         {u"12:00 12:30 moved"_s}},
        {"outdated rules under a known name",
         event("DTSTART;TZID=Europe/Moscow:20250514T150000\nDTEND;TZID=Europe/Moscow:20250514T153000"),
         wednesday, atNoon},
        {"zone of Windows in Asia",
         event("DTSTART;TZID=China Standard Time:20250514T200000\nDTEND;TZID=China Standard "
               "Time:20250514T203000"),
         wednesday, atNoon},
        {"zone of Windows in Europe",
         event("DTSTART;TZID=W. Europe Standard Time:20250514T140000\n"
               "DTEND;TZID=W. Europe Standard Time:20250514T143000"),
         wednesday, atNoon},
        {"zone with a prefix",
         event("DTSTART;TZID=/example.org/20250101_1/Europe/Berlin:20250514T140000\n"
               "DTEND;TZID=/example.org/20250101_1/Europe/Berlin:20250514T143000"),
         wednesday, atNoon},
        {"excluded without a zone",
         weekly("RRULE:FREQ=WEEKLY\nEXDATE:20250514T200000", tokyo),
         wednesday,
         {}},
        {"moved without a zone",
         weekly("RRULE:FREQ=WEEKLY", tokyo) + movedInstance("RECURRENCE-ID:20250514T200000\n"
                                                            "DTSTART;TZID=Asia/Tokyo:20250514T210000\n"
                                                            "DTEND;TZID=Asia/Tokyo:20250514T213000"),
         wednesday,
         {u"12:00 12:30 moved"_s}},
        {"weekday named twice", weekly("RRULE:FREQ=WEEKLY;BYDAY=WE,WE"), wednesday, {u"11:00 11:30"_s}},
        {"excluded by a rule with a weekday named twice",
         weekly("RRULE:FREQ=DAILY\nEXRULE:FREQ=WEEKLY;BYDAY=WE,WE"),
         wednesday,
         {}},
        {"rule with a blank after a comma",
         weekly("RRULE:FREQ=WEEKLY;BYDAY=MO, WE"),
         wednesday,
         {u"11:00 11:30"_s}},
        {"times without seconds", event("DTSTART:20250514T1200Z\nDTEND:20250514T1230Z"), wednesday, atNoon},
        {"end without seconds in a zone",
         event("DTSTART;TZID=Europe/Berlin:20250514T140000\nDTEND;TZID=Europe/Berlin:20250514T1430"),
         wednesday, atNoon},
        {"start without seconds in a zone",
         event("DTSTART;TZID=Europe/Berlin:20250514T1400\nDTEND;TZID=Europe/Berlin:20250514T143000"),
         wednesday, atNoon},
        {"floating without seconds",
         event("DTSTART:20250514T0930\nDTEND:20250514T1000"),
         wednesday,
         {u"local 09:30 10:00"_s}},
        {"times with an offset", event("DTSTART:20250514T140000+0200\nDTEND:20250514T143000+02:00"),
         wednesday, atNoon},
        {"times with dashes and colons", event("DTSTART:2025-05-14T12:00:00Z\nDTEND:2025-05-14T12:30:00Z"),
         wednesday, atNoon},
        {"start on a day that does not exist",
         event("DTSTART:20250231T110000Z\nDTEND:20250231T113000Z"),
         QDate(2025, 3, 3),
         {}},
        {"private event", event(QByteArray(noon) + "CLASS:PRIVATE"), wednesday, atNoon},
        // The calendar service lists these series as single events, up to the note.
        {"rule that ends with a private part",
         weekly("RRULE:FREQ=WEEKLY;BYDAY=WE;X-SOURCE=app"),
         wednesday,
         {u"11:00 11:30"_s}},
        {"rule that ends with a private part, ended by its count",
         event("DTSTART:20250512T110000Z\nDTEND:20250512T113000Z\nRRULE:FREQ=DAILY;COUNT=2;X-SOURCE=app"),
         wednesday,
         {}},
        {"rule with a private part in its middle",
         weekly("RRULE:FREQ=WEEKLY;X-SOURCE=app;BYDAY=WE"),
         wednesday,
         {u"11:00 11:30"_s}},
        {"rule with a blank after a semicolon",
         weekly("RRULE:FREQ=WEEKLY; BYDAY=WE"),
         wednesday,
         {u"11:00 11:30"_s}},
        {"rule with an empty part",
         weekly("RRULE:FREQ=WEEKLY;WKST=;BYDAY=WE"),
         wednesday,
         {u"11:00 11:30"_s}},
        {"rule until a time without seconds",
         weekly("RRULE:FREQ=WEEKLY;UNTIL=20250514T2359Z"),
         wednesday,
         {u"11:00 11:30"_s}},
        // What followed the private part is missing.
        {"note of a rule that was cut",
         event("DTSTART:20250512T110000Z\nDTEND:20250512T113000Z\n"
               "X-LIC-ERROR;X-LIC-ERRORTYPE=VALUE-PARSE-ERROR:Can't parse as RECUR value in RRULE property. "
               "Removing entire property: FREQ=DAILY\\;X-SOURCE=app\\;"),
         wednesday,
         {}},
        {"rule until a time without seconds, ended",
         weekly("RRULE:FREQ=WEEKLY;UNTIL=20250514T1059Z"),
         wednesday,
         {}},
        {"properties of a program's own",
         event(QByteArray(noon) + "X-OWN;X-PART=\"a:b;c\":DTSTART:20250514T000000Z\nX-EMPTY:"), wednesday,
         atNoon},
        {"component of a program's own",
         "BEGIN:VEVENT\nUID:%N\n" + QByteArray(noon) +
             "BEGIN:X-OWN\nDTSTART:20250514T150000Z\nSUMMARY:inner\nEND:X-OWN\nSUMMARY:%N\nEND:VEVENT\n",
         wednesday, atNoon},
        {"link of a conference",
         event(QByteArray(noon) + "CONFERENCE;VALUE=URI;FEATURE=PHONE:tel:+1-555\n"
                                  "CONFERENCE;VALUE=URI;FEATURE=VIDEO:https://meet.example.org/a?b=1"),
         wednesday, link(u"https://meet.example.org/a?b=1"_s)},
        {"link of a conference in one provider's way",
         event(QByteArray(noon) + "X-GOOGLE-CONFERENCE:https://meet.example.org/b"), wednesday,
         link(u"https://meet.example.org/b"_s)},
        {"link of a conference in another provider's way",
         event(QByteArray(noon) + "X-MICROSOFT-SKYPETEAMSMEETINGURL:https://teams.example.org/c?d=1\\,2"),
         wednesday, link(u"https://teams.example.org/c?d=1,2"_s)},
        {"link of its own beside one of a conference",
         event(QByteArray(noon) +
               "CONFERENCE;VALUE=URI:https://meet.example.org/a\nURL:https://example.org/own"),
         wednesday, link(u"https://example.org/own"_s)},
    };
}

std::vector<CalendarRow> folderRows()
{
    const QDate wednesday(2025, 5, 14);
    return {
        {"rule with an empty part and a count",
         event("DTSTART:20250513T110000Z\nDTEND:20250513T113000Z\nRRULE:FREQ=DAILY;;COUNT=2"),
         wednesday,
         {u"11:00 11:30"_s}},
        {"rule with an empty part, ended by its count",
         event("DTSTART:20250512T110000Z\nDTEND:20250512T113000Z\nRRULE:FREQ=DAILY;;COUNT=2"),
         wednesday,
         {}},
    };
}

} // namespace corvane
