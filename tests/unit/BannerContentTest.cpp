// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/BannerContent.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <limits>

using namespace corvane;
using namespace corvane::bannerContent;
using namespace Qt::StringLiterals;

namespace {

constexpr Date bannerStart = dateSince1970(1'800'000'000);
constexpr AccentColor blue{0.26, 0.54, 0.94};
constexpr AccentColor green{0.28, 0.72, 0.42};
constexpr AccentColor red{0.94, 0.26, 0.24};

Lesson lessonOf(const QString &name, Date start = bannerStart,
                TeachingPlatform platform = TeachingPlatform::zoom)
{
    return {.id = QUuid::createUuid(),
            .studentName = name,
            .platform = platform,
            .startTime = start,
            .duration = Seconds{1500},
            .profile = PlatformProfile::defaults().at(platform)};
}

TeachingAction actionIn(LessonState state, std::optional<Lesson> about = lessonOf(u"Anna"_s),
                        std::optional<Lesson> next = std::nullopt)
{
    return {.state = state,
            .lesson = std::move(about),
            .nextLesson = std::move(next),
            .message = u"Teach Anna"_s,
            .priority = TeachingActionPriority::calm,
            .effectiveDate = bannerStart - Seconds{300},
            .nextTransitionDate = std::nullopt};
}

TeachingAction withPriority(TeachingAction action, TeachingActionPriority priority)
{
    action.priority = priority;
    return action;
}

TeachingAction withMessage(TeachingAction action, const QString &message)
{
    action.message = message;
    return action;
}

Date beforeStart(double seconds)
{
    return bannerStart - Seconds{seconds};
}

constexpr std::array plainStates{LessonState::scheduled, LessonState::teaching, LessonState::feedback,
                                 LessonState::completed};

} // namespace

class BannerContentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aJoinBannerCountsDownFrom30To20()
    {
        const TeachingAction join = actionIn(LessonState::joinPlatform);
        QCOMPARE(title(join, beforeStart(30)), u"30 SECONDS"_s);
        QCOMPARE(title(join, beforeStart(25)), u"25 SECONDS"_s);
        QCOMPARE(title(join, beforeStart(24.01)), u"25 SECONDS"_s);
        QCOMPARE(title(join, beforeStart(20)), u"20 SECONDS"_s);
    }

    void aJoinBannerNeverCountsBelow20()
    {
        const TeachingAction join = actionIn(LessonState::joinPlatform);
        QCOMPARE(title(join, beforeStart(19)), u"20 SECONDS"_s);
        QCOMPARE(title(join, beforeStart(12)), u"20 SECONDS"_s);
        QCOMPARE(title(join, beforeStart(1)), u"20 SECONDS"_s);
    }

    void theLastFractionOfASecondStillCounts()
    {
        const TeachingAction join = actionIn(LessonState::joinPlatform);
        QCOMPARE(title(join, beforeStart(0.4)), u"20 SECONDS"_s);
        QCOMPARE(informationLine(join, beforeStart(0.4)), u"Get ready to start"_s);
    }

    void atTheStartAJoinBannerSaysStartNow()
    {
        const TeachingAction join = actionIn(LessonState::joinPlatform);
        QCOMPARE(title(join, beforeStart(0)), u"START NOW"_s);
        QCOMPARE(informationLine(join, beforeStart(0)), u"Lesson begins now"_s);
        QCOMPARE(title(join, beforeStart(-60)), u"START NOW"_s);
        QCOMPARE(informationLine(join, beforeStart(-60)), u"Lesson begins now"_s);
    }

    void moreThan30SecondsBeforeAJoinBannerNamesThePlatform_data()
    {
        QTest::addColumn<int>("platform");
        QTest::addColumn<QString>("text");
        QTest::newRow("LingoAce") << int(TeachingPlatform::lingoAce) << u"JOIN LINGOACE NOW"_s;
        QTest::newRow("Teams") << int(TeachingPlatform::microsoftTeams) << u"JOIN MICROSOFT TEAMS NOW"_s;
        QTest::newRow("Zoom") << int(TeachingPlatform::zoom) << u"JOIN ZOOM NOW"_s;
        QTest::newRow("Meet") << int(TeachingPlatform::googleMeet) << u"JOIN GOOGLE MEET NOW"_s;
        QTest::newRow("any other") << int(TeachingPlatform::onlineLesson) << u"JOIN LESSON NOW"_s;
    }

    void moreThan30SecondsBeforeAJoinBannerNamesThePlatform()
    {
        QFETCH(int, platform);
        QFETCH(QString, text);
        const auto join = actionIn(LessonState::joinPlatform,
                                   lessonOf(u"Anna"_s, bannerStart, static_cast<TeachingPlatform>(platform)));
        QCOMPARE(title(join, beforeStart(30.5)), text);
        QCOMPARE(title(join, beforeStart(60)), text);
    }

    void aJoinTitleWithoutALessonNamesNoPlatform()
    {
        QCOMPARE(joinTitle(std::nullopt, 31), u"JOIN NOW"_s);
        QCOMPARE(joinTitle(std::nullopt, 30), u"30 SECONDS"_s);
        QCOMPARE(joinTitle(std::nullopt, 0), u"START NOW"_s);
    }

    void aJoinActionWithoutALessonCountsAsStarted()
    {
        const TeachingAction join = actionIn(LessonState::joinPlatform, std::nullopt);
        QCOMPARE(secondsUntilLessonStart(join, bannerStart), 0);
        QCOMPARE(title(join, bannerStart), u"START NOW"_s);
        QCOMPARE(informationLine(join, bannerStart), u"Lesson begins now"_s);
    }

    void aJoinActionWithOnlyANextLessonCountsToIt()
    {
        const TeachingAction join = actionIn(LessonState::joinPlatform, std::nullopt, lessonOf(u"Ben"_s));
        QCOMPARE(title(join, beforeStart(45)), u"JOIN ZOOM NOW"_s);
        QCOMPARE(title(join, beforeStart(25)), u"25 SECONDS"_s);
        QCOMPARE(studentLine(join), u"Ben"_s);
    }

    void secondsUntilTheStartAreRoundedUp()
    {
        const TeachingAction join = actionIn(LessonState::joinPlatform);
        QCOMPARE(secondsUntilLessonStart(join, beforeStart(12)), 12);
        QCOMPARE(secondsUntilLessonStart(join, beforeStart(11.001)), 12);
        QCOMPARE(secondsUntilLessonStart(join, beforeStart(0.4)), 1);
        QCOMPARE(secondsUntilLessonStart(join, beforeStart(-0.4)), 0);
        QCOMPARE(secondsUntilLessonStart(join, beforeStart(-1.5)), -1);
    }

    void secondsUntilAnUnusableStartDoNotOverflow()
    {
        const double infinity = std::numeric_limits<double>::infinity();
        const auto never = actionIn(LessonState::joinPlatform, lessonOf(u"Anna"_s, dateSince1970(infinity)));
        QVERIFY(secondsUntilLessonStart(never, bannerStart) > 1'000'000'000'000);
        const auto always =
            actionIn(LessonState::joinPlatform, lessonOf(u"Anna"_s, dateSince1970(-infinity)));
        QVERIFY(secondsUntilLessonStart(always, bannerStart) < 0);
        const auto unknown =
            actionIn(LessonState::joinPlatform,
                     lessonOf(u"Anna"_s, dateSince1970(std::numeric_limits<double>::quiet_NaN())));
        QCOMPARE(secondsUntilLessonStart(unknown, bannerStart), 0);
    }

    void secondsUntilAFarStartAreExact()
    {
        constexpr std::int64_t farthest = 9'007'199'254'740'992; // 2^53
        for (const std::int64_t seconds : {farthest, farthest - 1, -farthest, 1 - farthest}) {
            const auto far = actionIn(LessonState::joinPlatform,
                                      lessonOf(u"Anna"_s, dateSince1970(static_cast<double>(seconds))));
            QCOMPARE(secondsUntilLessonStart(far, dateSince1970(0)), seconds);
        }
        const auto farther = actionIn(LessonState::joinPlatform, lessonOf(u"Anna"_s, dateSince1970(1e300)));
        QCOMPARE(secondsUntilLessonStart(farther, dateSince1970(0)), farthest);
    }

    void aWrapUpGivesLongTimesInMinutes()
    {
        const TeachingAction wrapUp = actionIn(LessonState::wrapUp, lessonOf(u"Anna"_s),
                                               lessonOf(u"Ben"_s, bannerStart - Seconds{300 - 95}));
        QCOMPARE(informationLine(wrapUp, bannerStart), u"Starts in 2 minutes"_s);
    }

    void aWrapUpGivesShortTimesInSeconds()
    {
        const TeachingAction wrapUp = actionIn(LessonState::wrapUp, lessonOf(u"Anna"_s),
                                               lessonOf(u"Ben"_s, bannerStart - Seconds{300 - 60}));
        QCOMPARE(informationLine(wrapUp, bannerStart), u"Starts in 60 seconds"_s);
    }

    void aWrapUpDoesNotCountDown()
    {
        const TeachingAction wrapUp = actionIn(LessonState::wrapUp, lessonOf(u"Anna"_s),
                                               lessonOf(u"Ben"_s, bannerStart - Seconds{240}));
        QCOMPARE(informationLine(wrapUp, bannerStart), informationLine(wrapUp, bannerStart + Seconds{500}));
    }

    void aWrapUpNamesTheLessonThatEndsAndTheNext()
    {
        const TeachingAction wrapUp = actionIn(LessonState::wrapUp, lessonOf(u"Anna"_s), lessonOf(u"Ben"_s));
        QCOMPARE(title(wrapUp, bannerStart), u"FINISH UP ANNA"_s);
        QCOMPARE(studentLine(wrapUp), u"Next lesson is Ben"_s);
    }

    void aWrapUpWithoutANextLesson()
    {
        const TeachingAction wrapUp = actionIn(LessonState::wrapUp);
        QCOMPARE(studentLine(wrapUp), u"Next lesson not found"_s);
        QCOMPARE(informationLine(wrapUp, bannerStart), u"Prepare to transition"_s);
    }

    void aWrapUpWithoutALessonNamesTheNextOne()
    {
        QCOMPARE(title(actionIn(LessonState::wrapUp, std::nullopt, lessonOf(u"Ben"_s)), bannerStart),
                 u"FINISH UP BEN"_s);
    }

    void aWrapUpWithoutAnyLesson()
    {
        QCOMPARE(title(actionIn(LessonState::wrapUp, std::nullopt), bannerStart),
                 u"FINISH UP CURRENT LESSON"_s);
    }

    void namesAreCapitalisedInEveryScript()
    {
        const auto shout = [](const QString &name) {
            return title(actionIn(LessonState::wrapUp, lessonOf(name)), bannerStart);
        };
        QCOMPARE(shout(u"Zoë Müller-Weiß"_s), u"FINISH UP ZOË MÜLLER-WEISS"_s);
        QCOMPARE(shout(u"Мария"_s), u"FINISH UP МАРИЯ"_s);
        QCOMPARE(shout(u"王小明"_s), u"FINISH UP 王小明"_s);
        QCOMPARE(shout(u"ﬁona"_s), u"FINISH UP FIONA"_s);
        QCOMPARE(shout(u"𐐨"_s), u"FINISH UP 𐐀"_s);
    }

    void aPreparationNamesTheNextLesson()
    {
        const TeachingAction prepare = actionIn(LessonState::prepare);
        QCOMPARE(title(prepare, bannerStart), u"4 MIN BEFORE NEXT LESSON"_s);
        QCOMPARE(studentLine(prepare), u"Anna"_s);
        QCOMPARE(informationLine(prepare, bannerStart), u"Next lesson is Anna"_s);
    }

    void aPreparationWithoutALesson()
    {
        const TeachingAction prepare = actionIn(LessonState::prepare, std::nullopt);
        QCOMPARE(studentLine(prepare), u"Student not found"_s);
        QCOMPARE(informationLine(prepare, bannerStart), u"Next lesson is Student not found"_s);
    }

    void aOneMinuteWarningNamesTheStudent()
    {
        const TeachingAction warning = actionIn(LessonState::oneMinuteWarning);
        QCOMPARE(title(warning, bannerStart), u"1 MINUTE BEFORE NEXT LESSON"_s);
        QCOMPARE(studentLine(warning), u"Anna"_s);
        QCOMPARE(informationLine(warning, bannerStart), u"Open your lesson and be ready to start"_s);
    }

    void aStartSaysStartNow()
    {
        const TeachingAction start = actionIn(LessonState::startNow);
        QCOMPARE(title(start, bannerStart), u"START NOW"_s);
        QCOMPARE(studentLine(start), u"Anna"_s);
        QCOMPARE(informationLine(start, bannerStart), u"Lesson begins now"_s);
    }

    void theOtherStatesShowTheMessage()
    {
        for (const LessonState state : plainStates) {
            const TeachingAction plain = withMessage(actionIn(state), u"Teach Zoë"_s);
            QCOMPARE(title(plain, bannerStart), u"TEACH ZOË"_s);
            QCOMPARE(studentLine(plain), u"Anna"_s);
            QCOMPARE(informationLine(plain, bannerStart), u"Teach Zoë"_s);
        }
    }

    void withoutAnyLessonTheOtherStatesShowTheProgramsName()
    {
        for (const LessonState state : plainStates) {
            QCOMPARE(studentLine(actionIn(state, std::nullopt)), u"Quillet"_s);
        }
    }

    void anIdleActionNamesTheNextLesson()
    {
        const TeachingAction idle = TeachingAction::idle(bannerStart, lessonOf(u"Ben"_s));
        QCOMPARE(title(idle, bannerStart), u"NEXT: BEN"_s);
        QCOMPARE(studentLine(idle), u"Ben"_s);
        QCOMPARE(informationLine(idle, bannerStart), u"Next: Ben"_s);
    }

    void anUrgentActionIsRedWithAWarningTriangle()
    {
        for (const LessonState state : plainStates) {
            const TeachingAction urgent = withPriority(actionIn(state), TeachingActionPriority::urgent);
            QCOMPARE(symbolName(urgent), u"exclamationmark.triangle.fill"_s);
            QVERIFY(accentColor(urgent) == red);
        }
    }

    void theSameActionOfAnyOtherPriorityIsBlueWithABell()
    {
        for (const LessonState state : plainStates) {
            for (const auto priority : {TeachingActionPriority::calm, TeachingActionPriority::attention}) {
                const TeachingAction plain = withPriority(actionIn(state), priority);
                QCOMPARE(symbolName(plain), u"bell.fill"_s);
                QVERIFY(accentColor(plain) == blue);
            }
        }
    }

    void theChangeoverStatesKeepTheirLookAtEveryPriority()
    {
        for (const auto priority : {TeachingActionPriority::calm, TeachingActionPriority::attention,
                                    TeachingActionPriority::urgent}) {
            const auto of = [&](LessonState state) { return withPriority(actionIn(state), priority); };
            QCOMPARE(symbolName(of(LessonState::wrapUp)), u"checkmark.circle.fill"_s);
            QVERIFY(accentColor(of(LessonState::wrapUp)) == green);
            for (const auto state :
                 {LessonState::prepare, LessonState::oneMinuteWarning, LessonState::joinPlatform}) {
                QCOMPARE(symbolName(of(state)), u"arrow.right.circle.fill"_s);
                QVERIFY(accentColor(of(state)) == blue);
            }
            QCOMPARE(symbolName(of(LessonState::startNow)), u"exclamationmark.triangle.fill"_s);
            QVERIFY(accentColor(of(LessonState::startNow)) == red);
        }
    }

    void durationsInWords_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << 0.0 << u"0 seconds"_s;
        QTest::newRow("less than a second") << 0.99 << u"0 seconds"_s;
        QTest::newRow("one second") << 1.0 << u"1 second"_s;
        QTest::newRow("nearly two") << 1.99 << u"1 second"_s;
        QTest::newRow("two") << 2.0 << u"2 seconds"_s;
        QTest::newRow("45") << 45.0 << u"45 seconds"_s;
        QTest::newRow("the longest in seconds") << 89.99 << u"89 seconds"_s;
        QTest::newRow("the shortest in minutes") << 90.0 << u"2 minutes"_s;
        QTest::newRow("below two and a half") << 149.9 << u"2 minutes"_s;
        QTest::newRow("a half goes up") << 150.0 << u"3 minutes"_s;
        QTest::newRow("an hour") << 3600.0 << u"60 minutes"_s;
        QTest::newRow("just past") << -0.5 << u"0 seconds"_s;
        QTest::newRow("long past") << -500.0 << u"0 seconds"_s;
    }

    void durationsInWords()
    {
        QFETCH(double, seconds);
        QFETCH(QString, text);
        QCOMPARE(formattedDuration(Seconds{seconds}), text);
    }

    void endlessDurationsDoNotOverflow()
    {
        QVERIFY(formattedDuration(Seconds{1e300}).endsWith(u" minutes"_s));
        QCOMPARE(formattedDuration(Seconds{-1e300}), u"0 seconds"_s);
    }
};

QUILLET_TEST(BannerContentTest, runTest<BannerContentTest>);
#include "BannerContentTest.moc"
