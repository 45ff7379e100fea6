// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/ScheduleStatus.h"
#include "Corvane/Utilities/DateText.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <algorithm>
#include <random>

using namespace corvane;
using namespace corvane::scheduleStatus;
using namespace Qt::StringLiterals;

namespace {

Lesson lessonFrom(const char *start, double lengthInMinutes = 50, const QString &student = u"Anna"_s)
{
    return sampleLesson(student, at(start), minutes(lengthInMinutes));
}

std::vector<Lesson> fourLessons()
{
    return {lessonFrom("09:00:00"), lessonFrom("10:00:00"), lessonFrom("11:00:00"), lessonFrom("12:00:00")};
}

TeachingAction nothingToDo(Date now)
{
    return TeachingAction::idle(now, std::nullopt);
}

/// The schedule's rows, as "10:00 NEXT in 5m".
QStringList shown(const std::vector<Lesson> &lessons, Date now, bool showsAllLessons = false,
                  const std::optional<TeachingAction> &action = std::nullopt)
{
    const std::vector<Lesson> schedule = scheduleLessons(lessons, action.value_or(nothingToDo(now)));
    const std::optional<Lesson> next = nextLesson(schedule, now);
    QStringList rows;
    for (const Lesson &row : visibleLessons(schedule, now, showsAllLessons)) {
        const bool isNext = next && next->id == row.id;
        QStringList parts{timeOfDayText(row.startTime, QLocale::c()), badgeText(badge(row, now, isNext)),
                          statusText(row, now)};
        parts.removeAll(QString());
        rows << parts.join(u' ');
    }
    return rows;
}

std::vector<QUuid> ids(const std::vector<Lesson> &lessons)
{
    std::vector<QUuid> result;
    std::ranges::transform(lessons, std::back_inserter(result), &Lesson::id);
    return result;
}

} // namespace

class ScheduleStatusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutLessonsAndWithoutAnActionNothingIsShown()
    {
        QVERIFY(shown({}, at("10:20:00")).isEmpty());
        QVERIFY(shown({}, at("10:20:00"), true).isEmpty());
        QVERIFY(!nextLesson({}, at("10:20:00")));
    }

    void duringTheSecondOfFourLessonsItsNeighboursAreShown()
    {
        QCOMPARE(
            shown(fourLessons(), at("10:20:00")),
            (QStringList{u"09:00 Completed"_s, u"10:00 IN PROGRESS In progress"_s, u"11:00 NEXT in 40m"_s}));
        const Lesson running = lessonFrom("10:00:00");
        QCOMPARE(background(running, at("10:20:00"), false), Background::inProgress);
        QCOMPARE(background(lessonFrom("11:00:00"), at("10:20:00"), true), Background::next);
    }

    void betweenTwoLessonsTheNextTwoAreShown()
    {
        QCOMPARE(shown(fourLessons(), at("10:55:00")),
                 (QStringList{u"10:00 Completed"_s, u"11:00 NEXT in 5m"_s, u"12:00 in 1h 5m"_s}));
    }

    void afterTheLastLessonTheLastTwoAreShown()
    {
        QCOMPARE(shown(fourLessons(), at("13:00:00")),
                 (QStringList{u"11:00 Completed"_s, u"12:00 Completed"_s}));
    }

    void aLessonInFortyFiveSecondsSaysSo()
    {
        QCOMPARE(statusText(lessonFrom("10:00:00"), at("09:59:15")), u"in 45s"_s);
    }

    void allTodayShowsAllFour()
    {
        QCOMPARE(shown(fourLessons(), at("10:20:00"), true),
                 (QStringList{u"09:00 Completed"_s, u"10:00 IN PROGRESS In progress"_s,
                              u"11:00 NEXT in 40m"_s, u"12:00 in 1h 40m"_s}));
    }

    void beforeTheFirstLessonTheFirstTwoAreShown()
    {
        QCOMPARE(shown(fourLessons(), at("08:00:00")),
                 (QStringList{u"09:00 NEXT in 1h 0m"_s, u"10:00 in 2h 0m"_s}));
    }

    void beforeTheLastLessonOnlyThatOneFollows()
    {
        QCOMPARE(shown(fourLessons(), at("11:55:00")),
                 (QStringList{u"11:00 Completed"_s, u"12:00 NEXT in 5m"_s}));
    }

    void duringTheLastLessonNothingFollows()
    {
        QCOMPARE(shown(fourLessons(), at("12:10:00")),
                 (QStringList{u"11:00 Completed"_s, u"12:00 IN PROGRESS In progress"_s}));
    }

    void aLessonThatStartsNowIsInProgress()
    {
        QCOMPARE(shown({lessonFrom("10:00:00")}, at("10:00:00")),
                 QStringList{u"10:00 IN PROGRESS In progress"_s});
        QCOMPARE(shown({lessonFrom("10:00:00")}, at("09:59:59.999")), QStringList{u"10:00 NEXT in 0s"_s});
    }

    void aLessonThatEndsNowIsCompleted()
    {
        QCOMPARE(shown({lessonFrom("10:00:00", 50)}, at("10:50:00")), QStringList{u"10:00 Completed"_s});
        QCOMPARE(progress(lessonFrom("10:00:00", 50), at("10:49:59.999")), Progress::inProgress);
    }

    void aLessonOfNoLengthIsNeverInProgress()
    {
        const Lesson point = lessonFrom("10:00:00", 0);
        QCOMPARE(progress(point, at("09:59:59.999")), Progress::upcoming);
        QCOMPARE(progress(point, at("10:00:00")), Progress::completed);
        QCOMPARE(shown({point}, at("10:00:00")), QStringList{u"10:00 Completed"_s});
    }

    void ofOverlappingLessonsTheFirstInProgressIsShown()
    {
        const std::vector<Lesson> overlapping{lessonFrom("09:00:00", 180, u"Long"_s),
                                              lessonFrom("10:00:00", 25), lessonFrom("10:15:00", 25),
                                              lessonFrom("11:00:00", 25)};
        QCOMPARE(shown(overlapping, at("10:20:00")),
                 (QStringList{u"09:00 IN PROGRESS In progress"_s, u"11:00 NEXT in 40m"_s}));
        // The lesson of 10:15 is over, although it comes after one that is in progress.
        QCOMPARE(
            shown(overlapping, at("10:50:00")),
            (QStringList{u"10:15 Completed"_s, u"09:00 IN PROGRESS In progress"_s, u"11:00 NEXT in 10m"_s}));
    }

    void theListsTitle() { QCOMPARE(title(), u"Today’s schedule"_s); }

    void theDaysListIsSortedByStart()
    {
        std::vector<Lesson> lessons = fourLessons();
        const std::vector<QUuid> sorted = ids(lessons);
        std::ranges::reverse(lessons);
        QCOMPARE(ids(scheduleLessons(lessons, nothingToDo(at("09:00:00")))), sorted);
    }

    void simultaneousLessonsKeepTheOrderGiven()
    {
        std::vector<Lesson> lessons;
        lessons.reserve(50);
        for (int number = 0; number < 50; ++number) {
            lessons.push_back(
                lessonFrom(number % 2 == 0 ? "11:00:00" : "10:00:00", 25, u"Z%1"_s.arg(50 - number)));
        }
        const std::vector<Lesson> sorted = scheduleLessons(lessons, nothingToDo(at("09:00:00")));
        for (std::size_t index = 0; index < 25; ++index) {
            QCOMPARE(sorted[index].id, lessons[2 * index + 1].id);
            QCOMPARE(sorted[index + 25].id, lessons[2 * index].id);
        }
    }

    void withNoLessonsLoadedTheActionsLessonsAreShown()
    {
        const Date now = at("10:20:00");
        TeachingAction action = nothingToDo(now);
        action.lesson = lessonFrom("10:00:00");
        action.nextLesson = lessonFrom("11:00:00");
        QCOMPARE(shown({}, now, false, action),
                 (QStringList{u"10:00 IN PROGRESS In progress"_s, u"11:00 NEXT in 40m"_s}));
        QCOMPARE(shown({lessonFrom("08:00:00")}, now, false, action), QStringList{u"08:00 Completed"_s});
        action.nextLesson.reset();
        QCOMPARE(shown({}, now, false, action), QStringList{u"10:00 IN PROGRESS In progress"_s});
        action.nextLesson = lessonFrom("11:00:00");
        action.lesson.reset();
        QCOMPARE(shown({}, now, false, action), QStringList{u"11:00 NEXT in 40m"_s});
    }

    void aLessonNamedTwiceByTheActionIsShownOnce()
    {
        const Date now = at("09:57:00");
        TeachingAction action = nothingToDo(now);
        action.lesson = action.nextLesson = lessonFrom("10:00:00");
        QCOMPARE(shown({}, now, false, action), QStringList{u"10:00 NEXT in 3m"_s});
        action.nextLesson->id = QUuid::createUuid();
        QCOMPARE(shown({}, now, true, action).size(), 2);
    }

    void theCountdownIsTruncatedNotRounded_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("a blink") << 0.001 << u"in 0s"_s;
        QTest::newRow("under a second") << 0.999 << u"in 0s"_s;
        QTest::newRow("one second") << 1.0 << u"in 1s"_s;
        QTest::newRow("under a minute") << 59.999 << u"in 59s"_s;
        QTest::newRow("a minute") << 60.0 << u"in 1m"_s;
        QTest::newRow("under two minutes") << 119.9 << u"in 1m"_s;
        QTest::newRow("twelve minutes") << 720.0 << u"in 12m"_s;
        QTest::newRow("under an hour") << 3599.9 << u"in 59m"_s;
        QTest::newRow("an hour") << 3600.0 << u"in 1h 0m"_s;
        QTest::newRow("two hours and a bit") << 7500.0 << u"in 2h 5m"_s;
        QTest::newRow("a whole day") << 86399.0 << u"in 23h 59m"_s;
    }

    void theCountdownIsTruncatedNotRounded()
    {
        QFETCH(double, seconds);
        QFETCH(QString, text);
        // Near the epoch, where a double resolves such small differences.
        const Lesson soon = sampleLesson(u"Anna"_s, dateSince1970(seconds), minutes(25));
        QCOMPARE(statusText(soon, dateSince1970(0)), text);
    }

    void backgroundsHaveAnOrderOfPrecedence()
    {
        const Lesson row = lessonFrom("10:00:00");
        QCOMPARE(background(row, at("09:00:00"), true), Background::next);
        QCOMPARE(background(row, at("10:10:00"), true), Background::next);
        QCOMPARE(background(row, at("10:10:00"), false), Background::inProgress);
        QCOMPARE(background(row, at("11:10:00"), false), Background::completed);
        QCOMPARE(background(row, at("09:00:00"), false), Background::other);
        QCOMPARE(opacity(Background::next), 0.08);
        QCOMPARE(opacity(Background::inProgress), 0.12);
        QCOMPARE(opacity(Background::completed), 0.06);
        QCOMPARE(opacity(Background::other), 0.035);
    }

    void aBadgeSaysInProgressBeforeNext()
    {
        const Lesson row = lessonFrom("10:00:00");
        QCOMPARE(badge(row, at("10:10:00"), true), Badge::inProgress);
        QCOMPARE(badge(row, at("09:00:00"), true), Badge::next);
        QCOMPARE(badge(row, at("09:00:00"), false), Badge::none);
        QCOMPARE(badge(row, at("11:00:00"), false), Badge::none);
        QCOMPARE(badgeText(Badge::inProgress), u"IN PROGRESS"_s);
        QCOMPARE(badgeText(Badge::next), u"NEXT"_s);
        QVERIFY(isEmphasized(row, at("10:10:00"), false) && isEmphasized(row, at("09:00:00"), true));
        QVERIFY(!isEmphasized(row, at("09:00:00"), false) && !isEmphasized(row, at("11:00:00"), false));
    }

    void aRowIsReadAsOneSentence()
    {
        const Lesson row = lessonFrom("10:00:00");
        const QLocale locale = QLocale::c();
        QCOMPARE(rowText(row, at("09:55:00"), true, locale), u"10:00, Anna, Zoom, NEXT, in 5m"_s);
        QCOMPARE(rowText(row, at("09:55:00"), false, locale), u"10:00, Anna, Zoom, in 5m"_s);
        QCOMPARE(rowText(row, at("10:05:00"), false, locale), u"10:00, Anna, Zoom, In progress"_s);
        QCOMPARE(rowText(row, at("11:05:00"), false, locale), u"10:00, Anna, Zoom, Completed"_s);
    }

    /// Properties of any list: of one or many lessons, unsorted, overlapping, of no length, starting or
    /// ending at this very moment.
    void theListRulesHoldForAnyList()
    {
        std::mt19937 random(4711);
        const auto pick = [&random](int count) {
            return static_cast<int>(random() % static_cast<unsigned>(count));
        };
        for (int round = 0; round < 2000; ++round) {
            constexpr std::array sizes{1, 2, 3, 4, 10, 40, 300};
            const int size = sizes.at(static_cast<std::size_t>(pick(round % 50 == 0 ? 7 : 6)));
            const Date now = at("12:00:00");
            std::vector<Lesson> lessons;
            lessons.reserve(static_cast<std::size_t>(size));
            for (int index = 0; index < size; ++index) {
                // In steps of five minutes, so that starts and ends often coincide with each other and with
                // `now`.
                lessons.push_back(
                    sampleLesson(u"S"_s, now + minutes(5 * (pick(100) - 50)), minutes(5 * pick(12))));
            }
            const std::vector<Lesson> all = scheduleLessons(lessons, nothingToDo(now));
            QVERIFY(std::ranges::is_sorted(all, {}, &Lesson::startTime));
            QVERIFY(std::ranges::is_permutation(ids(all), ids(lessons)));
            QVERIFY(visibleLessons(all, now, true) == all);

            const std::vector<Lesson> compact = visibleLessons(all, now, false);
            QVERIFY(!compact.empty() && compact.size() <= 3);
            const auto count = [now](const std::vector<Lesson> &list, Progress wanted) {
                return std::ranges::count_if(list,
                                             [&](const Lesson &row) { return progress(row, now) == wanted; });
            };
            const bool isTeaching = count(all, Progress::inProgress) > 0;
            const bool isOver = !isTeaching && count(all, Progress::upcoming) == 0;
            QCOMPARE(count(compact, Progress::inProgress), isTeaching ? 1 : 0);
            QCOMPARE(count(compact, Progress::upcoming),
                     std::min<std::ptrdiff_t>(count(all, Progress::upcoming), isTeaching ? 1 : 2));
            QCOMPARE(count(compact, Progress::completed),
                     std::min<std::ptrdiff_t>(count(all, Progress::completed), isOver ? 2 : 1));

            // If there is a next lesson, the compact list shows it, and no upcoming lesson starts earlier.
            const std::optional<Lesson> next = nextLesson(all, now);
            QCOMPARE(next.has_value(), count(all, Progress::upcoming) > 0);
            QVERIFY(!next || std::ranges::find(compact, next->id, &Lesson::id) != compact.end());
            QVERIFY(!next || std::ranges::none_of(all, [&](const Lesson &row) {
                return row.isUpcoming(now) && row.startTime < next->startTime;
            }));
            for (const Lesson &row : compact) {
                QVERIFY(std::ranges::count(compact, row.id, &Lesson::id) == 1);
            }
        }
    }
};

QUILLET_TEST(ScheduleStatusTest, runTest<ScheduleStatusTest>);
#include "ScheduleStatusTest.moc"
