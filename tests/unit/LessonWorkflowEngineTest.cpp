// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/LessonWorkflowEngine.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

QString inWords(const std::optional<Date> &date)
{
    return date ? descriptionText(*date).sliced(11, 8) : u"none"_s;
}

/// State, message, priority, lesson, next lesson and transition in one line, so that a failure shows all of
/// them.
QString inWords(const TeachingAction &action)
{
    const auto name = [](const std::optional<Lesson> &lesson) {
        return lesson ? lesson->studentName : u"-"_s;
    };
    const QString priority = action.priority == TeachingActionPriority::calm        ? u"calm"_s
                             : action.priority == TeachingActionPriority::attention ? u"attention"_s
                                                                                    : u"urgent"_s;
    return QStringList{rawValue(action.state), action.message,          priority,
                       name(action.lesson),    name(action.nextLesson), inWords(action.nextTransitionDate)}
        .join(u" / "_s);
}

} // namespace

class LessonWorkflowEngineTest : public QObject {
    Q_OBJECT

    SystemDateProvider m_dateProvider;
    LessonWorkflowEngine m_engine{m_dateProvider};

    [[nodiscard]] QString answer(const std::vector<Lesson> &lessons, const char *time) const
    {
        const TeachingAction action = m_engine.action(lessons, at(time));
        return action.effectiveDate == at(time) ? inWords(action) : u"wrong effective date"_s;
    }

    static Lesson anna(TeachingPlatform platform = TeachingPlatform::zoom)
    {
        return sampleLesson(u"Anna"_s, at("10:00:00"), minutes(30), platform);
    }

private Q_SLOTS:
    void theTimelineOfOneLesson_data()
    {
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *time, const char *expected) {
            QTest::newRow(time) << QString::fromLatin1(time) << QString::fromLatin1(expected);
        };
        row("08:00:00", "scheduled / Next: Anna / calm / - / Anna / 09:54:00");
        row("09:55:59", "scheduled / Next: Anna / calm / - / Anna / 09:54:00");
        row("09:56:00", "prepare / 4 min before next lesson / attention / Anna / Anna / 09:59:00");
        row("09:58:59.999", "prepare / 4 min before next lesson / attention / Anna / Anna / 09:59:00");
        row("09:59:00",
            "oneMinuteWarning / 1 minute before next lesson / attention / Anna / Anna / 09:59:30");
        row("09:59:29.999",
            "oneMinuteWarning / 1 minute before next lesson / attention / Anna / Anna / 09:59:30");
        row("09:59:30", "joinPlatform / Join Zoom now / urgent / Anna / Anna / 09:59:40");
        row("09:59:39.999", "joinPlatform / Join Zoom now / urgent / Anna / Anna / 09:59:40");
        row("09:59:40", "startNow / START NOW - 20 seconds remaining / urgent / Anna / Anna / 10:00:00");
        row("09:59:59.999", "startNow / START NOW - 20 seconds remaining / urgent / Anna / Anna / 10:00:00");
        row("10:00:00", "startNow / START NOW / urgent / Anna / - / 10:00:05");
        row("10:00:04.999", "startNow / START NOW / urgent / Anna / - / 10:00:05");
        row("10:00:05", "teaching / Teach Anna / calm / Anna / - / 10:29:00");
        row("10:28:59.999", "teaching / Teach Anna / calm / Anna / - / 10:29:00");
        row("10:29:00", "wrapUp / Finish up Anna / attention / Anna / - / 10:30:00");
        row("10:29:59.999", "wrapUp / Finish up Anna / attention / Anna / - / 10:30:00");
        row("10:30:00", "scheduled / No lessons remaining / calm / - / - / none");
    }

    void theTimelineOfOneLesson()
    {
        QFETCH(QString, time);
        QFETCH(QString, expected);
        QCOMPARE(answer({anna()}, time.toLatin1().constData()), expected);
    }

    void aTeamsLessonIsJoinedAMinuteEarlyWithoutAOneMinuteWarning()
    {
        const std::vector lessons{anna(TeachingPlatform::microsoftTeams)};
        QCOMPARE(answer(lessons, "09:58:59.999"),
                 u"prepare / 4 min before next lesson / attention / Anna / Anna / 09:59:00"_s);
        QCOMPARE(answer(lessons, "09:59:00"),
                 u"joinPlatform / Join Microsoft Teams now / urgent / Anna / Anna / 09:59:40"_s);
        QCOMPARE(answer(lessons, "09:59:39"),
                 u"joinPlatform / Join Microsoft Teams now / urgent / Anna / Anna / 09:59:40"_s);
    }

    void aGenericLessonIsJoinedByTheStudentsName()
    {
        const auto ben = sampleLesson(u"Ben"_s, at("10:00:00"), minutes(30), TeachingPlatform::onlineLesson);
        QCOMPARE(answer({ben}, "09:59:35"), u"joinPlatform / Join Ben now / urgent / Ben / Ben / 09:59:40"_s);
    }

    void eachNamedPlatformIsJoinedByItsName()
    {
        QCOMPARE(LessonWorkflowEngine::joinMessage(anna(TeachingPlatform::lingoAce)), u"Join LingoAce now"_s);
        QCOMPARE(LessonWorkflowEngine::joinMessage(anna(TeachingPlatform::googleMeet)),
                 u"Join Google Meet now"_s);
    }

    void lessonsOutOfOrderGiveTheSameAnswer()
    {
        std::vector lessons{anna(), sampleLesson(u"Ben"_s, at("10:30:00"), minutes(30)),
                            sampleLesson(u"Cleo"_s, at("11:30:00"), minutes(50))};
        std::vector reversed(lessons.rbegin(), lessons.rend());
        for (Date now = at("09:50:00"); now < at("12:30:00"); now += Seconds{1}) {
            QVERIFY(m_engine.action(lessons, now) == m_engine.action(reversed, now));
        }
    }

    void simultaneousLessonsKeepTheOrderGiven()
    {
        const auto ben = sampleLesson(u"Ben"_s, at("10:00:00"), minutes(30));
        QCOMPARE(answer({ben, anna()}, "10:10:00"), u"teaching / Teach Ben / calm / Ben / - / 10:29:00"_s);
        QCOMPARE(answer({anna(), ben}, "10:10:00"), u"teaching / Teach Anna / calm / Anna / - / 10:29:00"_s);
        QCOMPARE(answer({ben, anna()}, "09:00:00"), u"scheduled / Next: Ben / calm / - / Ben / 09:54:00"_s);
        QCOMPARE(answer({anna(), ben}, "09:00:00"), u"scheduled / Next: Anna / calm / - / Anna / 09:54:00"_s);
    }

    void ofOverlappingLessonsTheEarlierIsCurrent()
    {
        const auto ben = sampleLesson(u"Ben"_s, at("09:50:00"), minutes(60));
        QCOMPARE(answer({anna(), ben}, "10:10:00"), u"teaching / Teach Ben / calm / Ben / - / 10:49:00"_s);
    }

    void aLessonInProgressHoldsBackTheNextOnesPhases()
    {
        const std::vector lessons{anna(), sampleLesson(u"Ben"_s, at("10:40:00"), minutes(30))};
        QCOMPARE(answer(lessons, "10:10:00"), u"teaching / Teach Anna / calm / Anna / Ben / 10:29:00"_s);
        QCOMPARE(answer(lessons, "10:29:30"),
                 u"wrapUp / Finish up Anna / attention / Anna / Ben / 10:30:00"_s);
        QCOMPARE(answer(lessons, "10:30:00"), u"scheduled / Next: Ben / calm / - / Ben / 10:34:00"_s);
        QCOMPARE(answer(lessons, "10:36:00"),
                 u"prepare / 4 min before next lesson / attention / Ben / Ben / 10:39:00"_s);
    }

    void whileTeachingTheEarliestUpcomingMomentIsTheTransition()
    {
        // The second lesson begins during the first, so its phases come before the first one's end.
        const std::vector lessons{anna(), sampleLesson(u"Ben"_s, at("10:20:00"), minutes(30))};
        QCOMPARE(answer(lessons, "10:10:00"), u"teaching / Teach Anna / calm / Anna / Ben / 10:16:00"_s);
        QCOMPARE(answer(lessons, "10:16:00"), u"teaching / Teach Anna / calm / Anna / Ben / 10:19:00"_s);
        QCOMPARE(answer(lessons, "10:19:00"), u"teaching / Teach Anna / calm / Anna / Ben / 10:19:30"_s);
        QCOMPARE(answer(lessons, "10:19:30"), u"teaching / Teach Anna / calm / Anna / Ben / 10:20:00"_s);
        QCOMPARE(answer(lessons, "10:20:00"), u"teaching / Teach Anna / calm / Anna / - / 10:29:00"_s);
    }

    void backToBackLessonsGoFromWrapUpStraightToStartNow()
    {
        const std::vector lessons{anna(), sampleLesson(u"Ben"_s, at("10:30:00"), minutes(30))};
        QCOMPARE(answer(lessons, "10:29:59"),
                 u"wrapUp / Finish up Anna / attention / Anna / Ben / 10:30:00"_s);
        QCOMPARE(answer(lessons, "10:30:00"), u"startNow / START NOW / urgent / Ben / - / 10:30:05"_s);
        QCOMPARE(answer(lessons, "10:30:05"), u"teaching / Teach Ben / calm / Ben / - / 10:59:00"_s);
    }

    void aLessonThatEndsShortlyBeforeTheNextLeadsIntoPrepare()
    {
        const std::vector lessons{anna(), sampleLesson(u"Ben"_s, at("10:32:00"), minutes(30))};
        QCOMPARE(answer(lessons, "10:29:59"),
                 u"wrapUp / Finish up Anna / attention / Anna / Ben / 10:30:00"_s);
        QCOMPARE(answer(lessons, "10:30:00"),
                 u"prepare / 4 min before next lesson / attention / Ben / Ben / 10:31:00"_s);
    }

    void aLessonOfThirtySecondsIsWrappedUpFromStartToEnd()
    {
        const std::vector lessons{sampleLesson(u"Anna"_s, at("10:00:00"), Seconds{30})};
        for (Date now = at("10:00:00"); now < at("10:00:30"); now += Seconds{0.5}) {
            QCOMPARE(inWords(m_engine.action(lessons, now)),
                     u"wrapUp / Finish up Anna / attention / Anna / - / 10:00:30"_s);
        }
        QCOMPARE(answer(lessons, "10:00:30"), u"scheduled / No lessons remaining / calm / - / - / none"_s);
    }

    void lessonsOfNoOrNegativeLengthAreNeverInProgress()
    {
        const std::vector lessons{sampleLesson(u"Anna"_s, at("10:00:00"), Seconds{0}),
                                  sampleLesson(u"Ben"_s, at("10:00:00"), Seconds{-60})};
        QCOMPARE(answer(lessons, "10:00:00"), u"scheduled / No lessons remaining / calm / - / - / none"_s);
        QCOMPARE(answer(lessons, "09:59:30"),
                 u"joinPlatform / Join Zoom now / urgent / Anna / Anna / 09:59:40"_s);
    }

    void thePhasesFollowTheLessonsOwnProfile()
    {
        Lesson lesson = anna();
        lesson.profile.preparationLeadTime = minutes(10);
        lesson.profile.joinEarlyTime = Seconds{45};
        lesson.profile.finishUpLeadTime = minutes(5);
        QCOMPARE(answer({lesson}, "09:50:00"),
                 u"prepare / 4 min before next lesson / attention / Anna / Anna / 09:59:00"_s);
        QCOMPARE(answer({lesson}, "09:59:15"),
                 u"joinPlatform / Join Zoom now / urgent / Anna / Anna / 09:59:40"_s);
        QCOMPARE(answer({lesson}, "10:25:00"),
                 u"wrapUp / Finish up Anna / attention / Anna / - / 10:30:00"_s);
    }

    void noLessonsIsIdle()
    {
        QCOMPARE(answer({}, "10:00:00"), u"scheduled / No lessons remaining / calm / - / - / none"_s);
    }

    void theStudentIsFoundInAMessage()
    {
        for (const QString &name : {u"Anna"_s, u"王小明"_s, u"now now"_s, u"Anna (Zoom) now"_s}) {
            const Lesson lesson =
                sampleLesson(name, at("10:00:00"), minutes(30), TeachingPlatform::onlineLesson);
            for (const char *time : {"09:59:30", "10:10:00", "10:29:30"}) {
                QCOMPARE(LessonWorkflowEngine::studentIn(m_engine.action({lesson}, at(time)).message), name);
            }
            for (const char *time : {"09:00:00", "09:56:00", "09:59:00", "09:59:50", "10:00:01"}) {
                QVERIFY(!LessonWorkflowEngine::studentIn(m_engine.action({lesson}, at(time)).message));
            }
        }
        QVERIFY(!LessonWorkflowEngine::studentIn(u"Join Zoom now"_s));
        QVERIFY(!LessonWorkflowEngine::studentIn(u"Finish up current lesson"_s));
        QVERIFY(!LessonWorkflowEngine::studentIn(u"Join now"_s));
    }

    void withoutAGivenTimeTheSystemsTimeIsUsed()
    {
        const ManualClock clock(at("09:56:00"));
        QCOMPARE(inWords(m_engine.action({anna()})),
                 u"prepare / 4 min before next lesson / attention / Anna / Anna / 09:59:00"_s);
    }
};

QUILLET_TEST(LessonWorkflowEngineTest, runTest<LessonWorkflowEngineTest>);
#include "LessonWorkflowEngineTest.moc"
