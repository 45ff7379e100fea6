// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/CombinedLessonScheduleStore.h"

#include "Corvane/Services/StaticLessonScheduleStore.h"
#include "Corvane/Utilities/Spawn.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/ScriptedScheduleStore.h"
#include "tests/support/TemporarySettings.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

class CombinedLessonScheduleStoreTest : public QObject {
    Q_OBJECT

    ManualClock m_clock{at("12:00:00")};
    TemporarySettings m_temporary;
    FakeLoginItem m_loginItem;
    AppSettings m_settings{m_temporary.store(), m_temporary.store(), m_loginItem};
    SystemDateProvider m_dateProvider;
    ScriptedScheduleStore m_calendarStore;
    CombinedLessonScheduleStore m_store{m_calendarStore, m_settings, m_dateProvider,
                                        DayCalendar(QTimeZone("Europe/Berlin"))};

    static ManualLessonEntry entry(const QString &student, Date start)
    {
        return {.id = QUuid::createUuid(),
                .studentName = student,
                .platform = TeachingPlatform::googleMeet,
                .startTime = start,
                .durationMinutes = 40};
    }

    [[nodiscard]] LessonScheduleResult load() { return QCoro::waitFor(m_store.lessonsForToday()); }

    /// Names and platforms, as "Anna Zoom, Ben Google Meet", or the error.
    [[nodiscard]] QString loaded()
    {
        const LessonScheduleResult result = load();
        if (!result) {
            return u"error: "_s + localizedDescription(result.error());
        }
        QStringList names;
        for (const Lesson &lesson : *result) {
            names.append(lesson.studentName + u' ' + rawValue(lesson.platform));
        }
        return names.join(u", "_s);
    }

private Q_SLOTS:
    void init()
    {
        m_calendarStore.answer = std::vector<Lesson>();
        m_settings.setManualLessons({});
        m_clock.setWallClock(at("12:00:00"));
    }

    void noLessonsAtAllIsAnEmptyListAndNoError() { QCOMPARE(loaded(), QString()); }

    void aCalendarLessonWinsOverAManualOneWithItsNameAndStart()
    {
        m_calendarStore.answer = std::vector{sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))};
        m_settings.setManualLessons({entry(u"Anna"_s, at("10:00:00"))});
        QCOMPARE(loaded(), u"Anna Zoom"_s);
    }

    void startsThatDifferByAFractionOfASecondAreTwoLessons()
    {
        m_calendarStore.answer = std::vector{sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))};
        m_settings.setManualLessons({entry(u"Anna"_s, at("10:00:00") + Seconds{0.0001})});
        QCOMPARE(loaded(), u"Anna Zoom, Anna Google Meet"_s);
    }

    void namesThatDifferInLetterCaseAreTwoLessons()
    {
        m_calendarStore.answer = std::vector{sampleLesson(u"anna"_s, at("10:00:00"), minutes(25))};
        m_settings.setManualLessons({entry(u"Anna"_s, at("10:00:00"))});
        QCOMPARE(loaded(), u"Anna Google Meet, anna Zoom"_s);
    }

    void manualLessonsOfOtherDaysAreLeftOut()
    {
        // The store's zone is an hour ahead of UTC: its day lasts from 23:00 to 23:00 UTC.
        m_settings.setManualLessons({entry(u"Yesterday"_s, at("10:00:00") - minutes(1440)),
                                     entry(u"LateYesterday"_s, at("00:00:00") - minutes(61)),
                                     entry(u"Midnight"_s, at("00:00:00") - minutes(60)),
                                     entry(u"Late"_s, at("22:59:59")), entry(u"Tomorrow"_s, at("23:00:00"))});
        QCOMPARE(loaded(), u"Midnight Google Meet, Late Google Meet"_s);
    }

    void todayMovesWithTheClock()
    {
        m_settings.setManualLessons({entry(u"Tomorrow"_s, at("23:00:00"))});
        m_clock.setWallClock(at("23:00:00"));
        QCOMPARE(loaded(), u"Tomorrow Google Meet"_s);
    }

    void withoutCalendarAccessTheSortedManualLessonsAreReturned()
    {
        m_calendarStore.answer = std::unexpected(LessonScheduleError(CalendarAccessError::denied));
        m_settings.setManualLessons({entry(u"Ben"_s, at("11:00:00")), entry(u"Anna"_s, at("10:00:00"))});
        QCOMPARE(loaded(), u"Anna Google Meet, Ben Google Meet"_s);
    }

    void withoutCalendarAccessAndManualLessonsTheErrorIsPassedOn()
    {
        m_calendarStore.answer = std::unexpected(LessonScheduleError(CalendarAccessError::denied));
        const LessonScheduleResult result = load();
        QVERIFY(!result);
        QVERIFY(result.error() == LessonScheduleError(CalendarAccessError::denied));
        m_calendarStore.answer = std::unexpected(LessonScheduleError(Failure{u"timed out"_s}));
        QCOMPARE(loaded(), u"error: timed out"_s);
    }

    void withoutCalendarAccessManualLessonsOfOtherDaysDoNotHideTheError()
    {
        m_calendarStore.answer = std::unexpected(LessonScheduleError(CalendarAccessError::denied));
        m_settings.setManualLessons({entry(u"Yesterday"_s, at("10:00:00") - minutes(1440)),
                                     entry(u"Tomorrow"_s, at("10:00:00") + minutes(1440))});
        const LessonScheduleResult result = load();
        QVERIFY(!result);
        QVERIFY(result.error() == LessonScheduleError(CalendarAccessError::denied));
    }

    void theStaticStoreReturnsItsListUnchanged()
    {
        const std::vector lessons{sampleLesson(u"Ben"_s, at("10:00:00") + minutes(2880), minutes(25)),
                                  sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25)),
                                  sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))};
        StaticLessonScheduleStore store(lessons);
        for (int load = 0; load < 2; ++load) {
            const LessonScheduleResult result = QCoro::waitFor(store.lessonsForToday());
            QVERIFY(result.has_value());
            QVERIFY(*result == lessons);
        }
    }

    void simultaneousLessonsKeepTheirOrderThroughEveryReload()
    {
        std::vector lessons{sampleLesson(u"Cleo"_s, at("10:00:00"), minutes(25)),
                            sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25)),
                            sampleLesson(u"Ben"_s, at("10:00:00"), minutes(25), TeachingPlatform::lingoAce)};
        std::ranges::sort(lessons, {}, &Lesson::id);
        do {
            m_calendarStore.answer = lessons;
            QCOMPARE(loaded(), u"Anna Zoom, Ben LingoAce, Cleo Zoom"_s);
        } while (std::ranges::next_permutation(lessons, {}, &Lesson::id).found);
    }

    void theFirstOfEqualLessonsIsKept()
    {
        const auto unique = CombinedLessonScheduleStore::uniqueAndSorted(
            {sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25), TeachingPlatform::zoom),
             sampleLesson(u"Anna"_s, at("10:00:00"), minutes(50), TeachingPlatform::lingoAce)});
        QCOMPARE(unique.size(), std::size_t{1});
        QCOMPARE(unique.front().platform, TeachingPlatform::zoom);
    }

    void overlappingLoadsEachUseTheSettingsOfTheirStart()
    {
        m_calendarStore.delay = Seconds{3};
        m_settings.setManualLessons({entry(u"Anna"_s, at("10:00:00"))});
        std::vector<std::size_t> counts;
        const auto note = [&](const LessonScheduleResult &result) { counts.push_back(result->size()); };
        spawn(m_store.lessonsForToday().then(note));
        m_clock.advance(Seconds{1});
        m_settings.setManualLessons({});
        spawn(m_store.lessonsForToday().then(note));
        m_clock.advance(Seconds{5});
        m_calendarStore.delay = Seconds{0};
        QCOMPARE(counts, (std::vector<std::size_t>{1, 0}));
    }
};

QUILLET_TEST(CombinedLessonScheduleStoreTest, runTest<CombinedLessonScheduleStoreTest>);
#include "CombinedLessonScheduleStoreTest.moc"
