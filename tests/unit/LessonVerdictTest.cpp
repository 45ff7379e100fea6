// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/LessonVerdict.h"
#include "Corvane/Calendar/CalendarLessonParser.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

CalendarLessonEvent bookedAs(const QString &title, Seconds length = minutes(30))
{
    return {.title = title,
            .startDate = at("10:00:00"),
            .endDate = at("10:00:00") + length,
            .location = std::nullopt,
            .notes = std::nullopt,
            .url = std::nullopt};
}

LessonVerdict verdict(const CalendarLessonEvent &event)
{
    return CalendarLessonParser(PlatformProfile::defaults()).verdicts({event}).front();
}

} // namespace

class LessonVerdictTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachRuleGivesItsReason_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<NoLessonReason>("reason");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const QString &title, double seconds, NoLessonReason reason,
                            const QString &word, const QString &text) {
            QTest::newRow(name) << title << seconds << reason << word << text;
        };
        using enum NoLessonReason;
        row("no length", u"Zoom - Anna"_s, 0, noLength, {}, u"It has no length"_s);
        row("negative length", u"Zoom dentist"_s, -60, noLength, {}, u"It has no length"_s);
        row("a personal word", u"Zoom with my DENTIST"_s, 1800, personalWord, u"dentist"_s,
            u"A personal word in the title: dentist"_s);
        row("inside another word", u"Gymnastics"_s, 1800, personalWord, u"gym"_s,
            u"A personal word in the title: gym"_s);
        row("the first of two words in the rule's order", u"Lunch after the doctor"_s, 1800, personalWord,
            u"doctor"_s, u"A personal word in the title: doctor"_s);
        row("no title", u" \n"_s, 1800, untitled, {}, u"No platform named, and no title"_s);
        row("49 characters", QString(49, u'a'), 1800, longTitle, {},
            u"No platform named, and the title is too long for a name"_s);
        row("a meeting", u"Team Meeting"_s, 1800, meeting, u"meeting"_s,
            u"No platform named, and the title speaks of a meeting"_s);
        row("a character", u"Anna & Ben / Cem"_s, 1800, unfitCharacter, u"&"_s,
            u"No platform named, and the title is no name: no name has “&”"_s);
        row("an emoji", u"Anna 😀"_s, 1800, unfitCharacter, u"😀"_s,
            u"No platform named, and the title is no name: no name has “😀”"_s);
        row("a line break", u"Anna\nBen"_s, 1800, unfitCharacter, u"\n"_s,
            u"No platform named, and the title is no name: no name has U+000A"_s);
        row("an invisible mark", u"Anna\uFEFF"_s, 1800, unfitCharacter, u"\uFEFF"_s,
            u"No platform named, and the title is no name: no name has U+FEFF"_s);
        row("a direction", u"Anna\u202E"_s, 1800, unfitCharacter, u"\u202E"_s,
            u"No platform named, and the title is no name: no name has U+202E"_s);
        row("half a surrogate pair", u"Anna"_s + QChar(0xD800), 1800, unfitCharacter, u"\uFFFD"_s,
            u"No platform named, and the title is no name: no name has “\uFFFD”"_s);
        row("599 seconds", u"Anna"_s, 599, tooShort, {}, u"No platform named, and shorter than 10 minutes"_s);
        row("5401 seconds", u"Anna"_s, 5401, tooLong, {}, u"No platform named, and longer than 90 minutes"_s);
        row("a bad title is reported before a bad length", u"Anna!"_s, 9000, unfitCharacter, u"!"_s,
            u"No platform named, and the title is no name: no name has “!”"_s);
    }

    void eachRuleGivesItsReason()
    {
        QFETCH(QString, title);
        QFETCH(double, seconds);
        QFETCH(NoLessonReason, reason);
        QFETCH(QString, word);
        QFETCH(QString, text);
        const LessonVerdict found = verdict(bookedAs(title, Seconds{seconds}));
        QVERIFY(!found);
        QCOMPARE(found.error().reason, reason);
        QCOMPARE(found.error().word, word);
        QCOMPARE(plainText(found.error()), text);
    }

    void aLessonsVerdictIsTheLesson()
    {
        const LessonVerdict found = verdict(bookedAs(u"Zoom - Anna"_s));
        QVERIFY(found.has_value());
        QCOMPARE(found->studentName, u"Anna"_s);
        QCOMPARE(found->duration, Seconds{1500});
    }

    void aPlatformWithoutAProfileIsNamed()
    {
        auto profiles = PlatformProfile::defaults();
        profiles.erase(TeachingPlatform::zoom);
        const auto found = CalendarLessonParser(profiles).verdicts({bookedAs(u"Zoom Ben"_s)});
        QVERIFY(!found.front());
        QCOMPARE(found.front().error(), (NotALesson{.reason = NoLessonReason::noProfile, .word = u"Zoom"_s}));
        QCOMPARE(plainText(found.front().error()), u"No lead times are known for Zoom"_s);
    }

    void anAllDayEventIsLeftOutBeforeTheParser()
    {
        CalendarEvent event;
        event.title = u"Anna"_s;
        event.startDate = at("10:00:00");
        event.endDate = at("10:30:00");
        QCOMPARE(CalendarLessonEvent::fromTimedEvent(event), CalendarLessonEvent::fromEvent(event));
        event.isAllDay = true;
        QVERIFY(!CalendarLessonEvent::fromTimedEvent(event));
        QCOMPARE(plainText({.reason = NoLessonReason::allDay, .word = {}}), u"An all-day event"_s);
    }

    void theVerdictsAreInTheOrderOfTheEvents()
    {
        CalendarLessonEvent later = bookedAs(u"Zoom Late"_s);
        later.startDate += minutes(60);
        later.endDate += minutes(60);
        const std::vector<CalendarLessonEvent> events{later, bookedAs(u"Lunch"_s), bookedAs(u"Zoom Anna"_s)};
        const CalendarLessonParser parser(PlatformProfile::defaults());
        const auto verdicts = parser.verdicts(events);
        QCOMPARE(verdicts.size(), std::size_t{3});
        QCOMPARE(verdicts[0]->studentName, u"Late"_s);
        QVERIFY(!verdicts[1]);
        QCOMPARE(verdicts[2]->studentName, u"Anna"_s);
        QCOMPARE(parser.lessons(events).size(), std::size_t{2});
    }

    void eventsWithTheSameTitleAreJudgedByTheirOwnTexts()
    {
        CalendarLessonEvent onZoom = bookedAs(u"Team meeting"_s);
        onZoom.location = u"Zoom"_s;
        const auto verdicts =
            CalendarLessonParser(PlatformProfile::defaults())
                .verdicts({bookedAs(u"Team meeting"_s), onZoom, bookedAs(u"Team meeting"_s)});
        QVERIFY(!verdicts[0] && verdicts[1] && !verdicts[2]);
        QCOMPARE(verdicts[2].error().reason, NoLessonReason::meeting);
    }
};

QUILLET_TEST(LessonVerdictTest, runTest<LessonVerdictTest>);
#include "LessonVerdictTest.moc"
