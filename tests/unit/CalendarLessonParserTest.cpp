// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/CalendarLessonParser.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

CalendarLessonEvent booked(const QString &title, Seconds length = minutes(30))
{
    return {.title = title,
            .startDate = at("10:00:00"),
            .endDate = at("10:00:00") + length,
            .location = std::nullopt,
            .notes = std::nullopt,
            .url = std::nullopt};
}

/// Platform, student and seconds, as "Zoom|Anna|1500"; "none" if the event is not a lesson.
QString described(const CalendarLessonEvent &event)
{
    const CalendarLessonParser parser(PlatformProfile::defaults());
    const auto lessons = parser.lessons({event});
    if (lessons.empty()) {
        return u"none"_s;
    }
    const Lesson &lesson = lessons.front();
    return rawValue(lesson.platform) + u'|' + lesson.studentName + u'|' +
           QString::number(lesson.duration.count());
}

QString described(const QString &title, Seconds length = minutes(30))
{
    return described(booked(title, length));
}

} // namespace

class CalendarLessonParserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anEventOfNoOrNegativeLengthIsDropped()
    {
        QCOMPARE(described(u"Zoom - Anna"_s, Seconds{0}), u"none"_s);
        QCOMPARE(described(u"Zoom - Anna"_s, Seconds{-60}), u"none"_s);
    }

    void blockerWordsComeBeforePlatforms() { QCOMPARE(described(u"Lunch with Zoom team"_s), u"none"_s); }

    void eachBlockerWordDropsTheEventEvenInsideAnotherWord()
    {
        for (const char *title :
             {"Zoom appointment", "Zoom BREAKfast", "Zoom dentist", "Zoom Doctor", "Zoom gymnastics",
              "Zoom lunch", "Zoom personal", "Zoom reminder", "Zoom Travel"}) {
            QCOMPARE(described(QString::fromLatin1(title)), u"none"_s);
        }
    }

    void aBlockerWordInTheNotesDropsNothing()
    {
        CalendarLessonEvent lesson = booked(u"Zoom - Anna"_s);
        lesson.notes = u"after lunch"_s;
        QCOMPARE(described(lesson), u"Zoom|Anna|1500"_s);
    }

    void aBareNameOfTenToNinetyMinutesIsAnOnlineLesson()
    {
        QCOMPARE(described(u"Anna"_s), u"Online Lesson|Anna|1500"_s);
        QCOMPARE(described(u"Anna"_s, minutes(5)), u"none"_s);
        QCOMPARE(described(u"Anna"_s, minutes(120)), u"none"_s);
        QCOMPARE(described(u"Anna"_s, Seconds{600}), u"Online Lesson|Anna|600"_s);
        QCOMPARE(described(u"Anna"_s, Seconds{599}), u"none"_s);
        QCOMPARE(described(u"Anna"_s, Seconds{5400}), u"Online Lesson|Anna|5400"_s);
        QCOMPARE(described(u"Anna"_s, Seconds{5401}), u"none"_s);
    }

    void aPlatformsEventMayBeOfAnyLength()
    {
        QCOMPARE(described(u"Zoom - Anna"_s, minutes(5)), u"Zoom|Anna|300"_s);
        QCOMPARE(described(u"Zoom - Anna"_s, minutes(120)), u"Zoom|Anna|7200"_s);
    }

    void aBareNameHasAtMostFortyEightCharacters()
    {
        QCOMPARE(described(QString(48, u'a')), u"Online Lesson|"_s + QString(48, u'a') + u"|1500"_s);
        QCOMPARE(described(QString(49, u'a')), u"none"_s);
        QCOMPARE(described(u"  "_s + QString(48, u'a') + u" \n"_s),
                 u"Online Lesson|"_s + QString(48, u'a') + u"|1500"_s);
    }

    void charactersAreCountedAsGraphemes()
    {
        // Each is a letter with a combining accent: two code points, one character.
        const QString accented = u"e\u0301"_s.repeated(48);
        QCOMPARE(described(accented), u"Online Lesson|"_s + accented + u"|1500"_s);
        QCOMPARE(described(u"e\u0301"_s.repeated(49)), u"none"_s);
        // Ideographs beyond the basic plane: two UTF-16 units, one character.
        QCOMPARE(described(u"\U00020000"_s.repeated(48)),
                 u"Online Lesson|"_s + u"\U00020000"_s.repeated(48) + u"|1500"_s);
    }

    void aMeetingIsALessonOnlyOnAPlatform()
    {
        QCOMPARE(described(u"Team meeting"_s), u"none"_s);
        QCOMPARE(described(u"Zoom meeting"_s), u"Zoom|meeting|1500"_s);
    }

    void aBareNameHasOnlyTheCharactersOfNames()
    {
        for (const QString &title : {u"Anna & Ben"_s, u"Anna/Ben"_s, u"Anna B."_s, u"Anna 😀"_s,
                                     u"Anna\nBen"_s, u"Anna: Ben"_s, u"Anna_Ben"_s, u"Anna\u0007"_s}) {
            QCOMPARE(described(title), u"none"_s);
        }
    }

    void aBareNameInChineseIsKept()
    {
        QCOMPARE(described(u"王小明"_s), u"Online Lesson|王小明|1500"_s);
        QCOMPARE(described(u"王小明【一】"_s), u"Online Lesson|王小明 一|1500"_s);
    }

    void namesInOtherScriptsAreKept()
    {
        for (const QString &name :
             {u"محمد علي"_s, u"Мария"_s, u"नमिता"_s, u"O'Neil-Smith"_s, u"Anna\tMaria"_s}) {
            QVERIFY2(described(name) != u"none"_s, qPrintable(name));
        }
    }

    void hoursAndHalfHoursAreSnappedWithTheirBoundsIncluded()
    {
        const auto snapped = [](double length) {
            return described(u"Zoom"_s, minutes(length)).section(u'|', 2);
        };
        QCOMPARE(snapped(61), u"3000"_s);
        QCOMPARE(snapped(59), u"3000"_s);
        QCOMPARE(snapped(60), u"3000"_s);
        QCOMPARE(snapped(62), u"3720"_s);
        QCOMPARE(snapped(58), u"3480"_s);
        QCOMPARE(snapped(31), u"1500"_s);
        QCOMPARE(snapped(29), u"1500"_s);
        QCOMPARE(snapped(28), u"1680"_s);
        QCOMPARE(snapped(45), u"2700"_s);
    }

    void aPlatformMayBeNamedOnlyInTheLink()
    {
        CalendarLessonEvent lesson = booked(u"Tom"_s);
        lesson.url = QUrl(u"https://meet.google.com/abc-defg-hij"_s);
        QCOMPARE(described(lesson), u"Google Meet|Tom|1500"_s);
    }

    void keywordsAreFoundInEveryField_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("platform");
        const auto row = [](const char *text, const char *platform) {
            QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(platform);
        };
        row("LingoAce 12", "LingoAce");
        row("LINGO ACE", "LingoAce");
        row("https://teams.microsoft.com/l/meetup-join/1", "Microsoft Teams");
        row("Microsoft Teams Meeting", "Microsoft Teams");
        row("via MS Teams", "Microsoft Teams");
        row("https://us02web.zoom.us/j/123", "Zoom");
        row("https://zoom.com/my/anna", "Zoom");
        row("ZOOM", "Zoom");
        row("https://meet.google.com/abc", "Google Meet");
        row("on Google Meet", "Google Meet");
    }

    void keywordsAreFoundInEveryField()
    {
        QFETCH(QString, text);
        QFETCH(QString, platform);
        CalendarLessonEvent inLocation = booked(u"Tom"_s);
        inLocation.location = text;
        QCOMPARE(described(inLocation), platform + u"|Tom|1500"_s);
        CalendarLessonEvent inNotes = booked(u"Tom"_s);
        inNotes.notes = text;
        QCOMPARE(described(inNotes), platform + u"|Tom|1500"_s);
        QCOMPARE(CalendarLessonParser::platform(booked(text)).has_value(), true);
        QCOMPARE(rawValue(*CalendarLessonParser::platform(booked(text))), platform);
    }

    void lingoAceComesBeforeItsZoomLink()
    {
        CalendarLessonEvent lesson = booked(u"Tom"_s);
        lesson.notes = u"https://zoom.us/j/1 booked through lingoace"_s;
        QCOMPARE(described(lesson), u"LingoAce|Tom|1500"_s);
    }

    void aClassPlatformsNumberIsRemovedOnlyThere()
    {
        CalendarLessonEvent lesson = booked(u"拓课云 Anna 12"_s);
        lesson.notes = u"https://zoom.us/j/1"_s;
        QCOMPARE(described(lesson), u"Zoom|Anna|1500"_s);
        QCOMPARE(described(u"Anna 12"_s), u"Online Lesson|Anna 12|1500"_s);
    }

    void studentNames_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("name");
        const auto row = [](const QString &title, const QString &name) {
            QTest::newRow(title.toUtf8().constData()) << title << name;
        };
        row(u"Zoom - Anna (ABC)"_s, u"Anna"_s);
        row(u"LingoAce Lesson: Tom"_s, u"Tom"_s);
        row(u"Lesson"_s, u"Student"_s);
        row(QString(), u"Student"_s);
        row(u"Zoom - "_s, u"-"_s);
        row(u"Anna (AB) (CDEF) Smith"_s, u"Anna Smith"_s);
        row(u"Anna (A)"_s, u"Anna A"_s);
        row(u"Anna (ABCDE)"_s, u"Anna ABCDE"_s);
        row(u"Anna (abc)"_s, u"Anna abc"_s);
        row(u"(AB"_s, u"AB"_s);
        row(u"ZOOM class ànna"_s, u"ànna"_s);
        row(u"Zôom Anna"_s, u"Anna"_s);
        row(u"Anna—Ben|Cleo•Dora"_s, u"Anna Ben Cleo Dora"_s);
        row(u"esl  MS   Teams Anna"_s, u"MS Teams Anna"_s);
        row(u"ms teams: anna b"_s, u"anna b"_s);
        row(u"【拓课云】Anna 7 "_s, u"Anna"_s);
        row(u"拓课云 Anna 3 12"_s, u"Anna 3"_s);
    }

    void studentNames()
    {
        QFETCH(QString, title);
        QFETCH(QString, name);
        QCOMPARE(CalendarLessonParser::studentName(title, TeachingPlatform::zoom), name);
    }

    void foldingThatChangesLengthCutsNoNeighbour()
    {
        const auto name = [](const QString &title) {
            return CalendarLessonParser::studentName(title, TeachingPlatform::zoom);
        };
        // "ß" is not "ss": no word begins or ends within it.
        QCOMPARE(name(u"Groß Lesson Anna"_s), u"Groß Anna"_s);
        QCOMPARE(name(u"Weißzoom"_s), u"Weiß"_s);
        QCOMPARE(name(u"Clasß Anna"_s), u"Clasß Anna"_s);
        QCOMPARE(name(u"İpek Zoom"_s), u"İpek"_s);
        QCOMPARE(name(u"Zoom \u1E9Eara"_s), u"\u1E9Eara"_s);
        // Nor is "ﬂ" "fl".
        QCOMPARE(name(u"\uFB02esson Anna"_s), u"\uFB02esson Anna"_s);
        // A combining mark is removed with its letter.
        QCOMPARE(name(u"Zoom\u0302 Anna"_s), u"Anna"_s);
        // A character of two units is kept whole.
        QCOMPARE(name(u"\U00020000Zoom Anna"_s), u"\U00020000 Anna"_s);
        QCOMPARE(name(u"\U0001D400 Zoom \U00020000"_s), u"\U0001D400 \U00020000"_s);
    }

    void longRepetitiveTitlesAreHandledInLinearTime()
    {
        // Backtracking patterns would take minutes for each of these; the test's time limit would notice.
        constexpr int length = 300000;
        for (const QString &title :
             {QString(length, u' '), u" ("_s.repeated(length), u"1 "_s.repeated(length),
              QString(length, u'1') + u'x', u"zoo"_s.repeated(length), u"\u0301"_s.repeated(length)}) {
            const QString name =
                CalendarLessonParser::studentName(u"拓课云"_s + title, TeachingPlatform::zoom);
            QVERIFY(!name.isEmpty());
        }
    }

    void theTitleIsNeitherTrimmedNorCapitalised()
    {
        QCOMPARE(described(u"  zoom   anna   de  vries "_s), u"Zoom|anna de vries|1500"_s);
    }

    void ofTwoPlatformsTheEarlierInTheOrderCounts()
    {
        const QStringList keywords{u"LingoAce"_s,        u"Lingo Ace"_s, u"teams.microsoft.com"_s,
                                   u"Microsoft Teams"_s, u"MS Teams"_s,  u"zoom.us"_s,
                                   u"zoom.com"_s,        u"Zoom"_s,      u"meet.google.com"_s,
                                   u"Google Meet"_s};
        for (const QString &earlier : keywords) {
            const auto alone = CalendarLessonParser::platform(booked(earlier));
            QVERIFY(alone);
            for (const QString &later : keywords.mid(keywords.indexOf(earlier))) {
                const QString title = later + u" - "_s + earlier;
                QVERIFY2(CalendarLessonParser::platform(booked(title)) == alone, qPrintable(title));
            }
        }
    }

    void eventsWithTheSameTitleAreParsedByTheirOtherTextsToo()
    {
        CalendarLessonEvent onMeet = booked(u"Tom"_s);
        onMeet.url = QUrl(u"https://meet.google.com/abc"_s);
        CalendarLessonEvent onZoom = booked(u"Tom"_s);
        onZoom.notes = u"Zoom"_s;
        CalendarLessonEvent onTeams = booked(u"Tom"_s);
        onTeams.location = u"MS Teams"_s;
        const CalendarLessonEvent longOne = booked(u"Tom"_s, minutes(120));
        const CalendarLessonParser parser(PlatformProfile::defaults());
        QStringList platforms;
        for (const Lesson &lesson :
             parser.lessons({onMeet, booked(u"Tom"_s), longOne, onZoom, onMeet, booked(u"Tom"_s), onTeams})) {
            platforms.append(rawValue(lesson.platform) + u' ' + lesson.studentName);
        }
        QCOMPARE(platforms,
                 (QStringList{u"Google Meet Tom"_s, u"Online Lesson Tom"_s, u"Zoom Tom"_s,
                              u"Google Meet Tom"_s, u"Online Lesson Tom"_s, u"Microsoft Teams Tom"_s}));
    }

    void textsOfARecurringEventAreParsedOnce()
    {
        // Parsing each occurrence would take minutes; the test's time limit would notice.
        CalendarLessonEvent often = booked(u"Zoom "_s + QString(100000, u'a'));
        often.notes = QString(1000000, u'b');
        const CalendarLessonParser parser(PlatformProfile::defaults());
        QCOMPARE(parser.lessons(std::vector(5000, often)).size(), std::size_t{5000});
    }

    void lessonsAreSortedByStartAndKeepTheirOrderOtherwise()
    {
        CalendarLessonEvent late = booked(u"Zoom Late"_s);
        late.startDate += minutes(60);
        late.endDate += minutes(60);
        const CalendarLessonParser parser(PlatformProfile::defaults());
        const auto lessons = parser.lessons({late, booked(u"Zoom Ben"_s), booked(u"Zoom Anna"_s)});
        QCOMPARE(lessons.size(), std::size_t{3});
        QCOMPARE(lessons[0].studentName, u"Ben"_s);
        QCOMPARE(lessons[1].studentName, u"Anna"_s);
        QCOMPARE(lessons[2].studentName, u"Late"_s);
        QVERIFY(lessons[0].id != lessons[1].id);
        QCOMPARE(lessons[0].startTime, at("10:00:00"));
    }

    void anEventWhosePlatformHasNoProfileIsDropped()
    {
        auto profiles = PlatformProfile::defaults();
        profiles.erase(TeachingPlatform::zoom);
        const CalendarLessonParser parser(profiles);
        const auto lessons = parser.lessons({booked(u"Zoom Ben"_s), booked(u"Anna"_s)});
        QCOMPARE(lessons.size(), std::size_t{1});
        QCOMPARE(lessons[0].studentName, u"Anna"_s);
        QVERIFY(lessons[0].profile == profiles.at(TeachingPlatform::onlineLesson));
        QVERIFY(CalendarLessonParser({}).lessons({booked(u"Anna"_s)}).empty());
    }

    void anEventWithoutATitleIsALessonOnlyByItsOtherTexts()
    {
        CalendarEvent untitled;
        untitled.startDate = at("10:00:00");
        untitled.endDate = at("10:30:00");
        QCOMPARE(described(CalendarLessonEvent::fromEvent(untitled)), u"none"_s);
        untitled.location = u"Zoom"_s;
        QCOMPARE(described(CalendarLessonEvent::fromEvent(untitled)), u"Zoom|Student|1500"_s);
    }

    void theParserGetsEveryFieldOfAnEvent()
    {
        const CalendarEvent event{.title = u"Anna"_s,
                                  .startDate = at("10:00:00"),
                                  .endDate = at("10:30:00"),
                                  .location = u"room 3"_s,
                                  .notes = u"Google Meet"_s,
                                  .url = QUrl(u"https://example.org/42"_s)};
        const CalendarLessonEvent seen = CalendarLessonEvent::fromEvent(event);
        QCOMPARE(seen.title, u"Anna"_s);
        QCOMPARE(seen.startDate, event.startDate);
        QCOMPARE(seen.endDate, event.endDate);
        QCOMPARE(seen.location, event.location);
        QCOMPARE(seen.notes, event.notes);
        QCOMPARE(seen.url, event.url);
    }
};

QUILLET_TEST(CalendarLessonParserTest, runTest<CalendarLessonParserTest>);
#include "CalendarLessonParserTest.moc"
