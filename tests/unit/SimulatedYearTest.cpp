// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/MenuBarViewModel.h"

#include "Corvane/Services/WorkflowTransitionScheduler.h"
#include "Corvane/Utilities/DayCalendar.h"
#include "Corvane/Utilities/Spawn.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TemporarySettings.h"
#include "tests/support/TestProgram.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <map>
#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// How much the process may grow, in KiB; leaking one action per tick would take gigabytes. The sanitizer
// keeps freed memory for a while, up to 256 MiB and what it notes about it, and is so slow that a month must
// do.
#ifdef __SANITIZE_ADDRESS__
constexpr int days = 30;
constexpr qint64 maximumGrowth = 400 * 1024;
#else
constexpr int days = 365;
constexpr qint64 maximumGrowth = 2048;
#endif

constexpr int lessonsADay = 10;

/// Ten lessons on the clock's day, one every half hour from nine. Each load makes them anew, with new
/// identifiers, as a calendar does.
class TeachingYear final : public LessonScheduleProviding {
public:
    QCoro::Task<LessonScheduleResult> lessonsForToday() override
    {
        const Date midnight = DayCalendar(QTimeZone::utc()).startOfDay(currentDate());
        std::vector<Lesson> lessons;
        lessons.reserve(lessonsADay);
        for (int index = 0; index < lessonsADay; ++index) {
            lessons.push_back(sampleLesson(u"Student %1"_s.arg(index), midnight + minutes(540 + 30 * index),
                                           minutes(25),
                                           allTeachingPlatforms[static_cast<std::size_t>(index) % 5]));
        }
        co_return lessons;
    }
};

/// Counts each alert by phase and lesson, and keeps the greatest lateness.
class CountingPresenter final : public TeachingNotificationPresenting {
public:
    std::map<QString, int> counts;
    Seconds latest{};

    void present(const TeachingAction &action) override
    {
        const Lesson &lesson = *action.lesson;
        ++counts[rawValue(action.state) + u'|' + lesson.studentName + u'|' +
                 descriptionText(lesson.startTime)];
        latest = std::max(latest, currentDate() - begin(action.state, lesson));
    }

private:
    static Date begin(LessonState state, const Lesson &lesson)
    {
        switch (state) {
        case LessonState::prepare:
            return lesson.startTime - lesson.profile.preparationLeadTime;
        case LessonState::oneMinuteWarning:
            return lesson.startTime - Seconds{60};
        case LessonState::joinPlatform:
            return lesson.startTime - lesson.profile.joinEarlyTime;
        case LessonState::startNow:
            return lesson.startTime - Seconds{20};
        case LessonState::wrapUp:
            return lesson.endTime() - lesson.profile.finishUpLeadTime;
        case LessonState::scheduled:
        case LessonState::teaching:
        case LessonState::feedback:
        case LessonState::completed:
            break;
        }
        qFatal("an alert for a state that raises none");
    }
};

/// Keeps pending requests, as an agent does; forgets those that it has shown.
class CountingCenter final : public UserNotificationCenter {
public:
    std::map<QString, Date> pending;
    int shown = 0;

    QCoro::Task<std::expected<bool, Failure>> requestAuthorization() override { co_return true; }

    QCoro::Task<std::expected<QStringList, Failure>> pendingNotificationRequests() override
    {
        showDue();
        QStringList identifiers;
        for (const auto &[identifier, fireDate] : pending) {
            identifiers.append(identifier);
        }
        co_return identifiers;
    }

    QCoro::Task<std::expected<void, Failure>>
    removePendingNotificationRequests(QStringList identifiers) override
    {
        for (const QString &identifier : identifiers) {
            pending.erase(identifier);
        }
        co_return {};
    }

    QCoro::Task<std::expected<void, Failure>> add(NotificationRequest request) override
    {
        pending[request.identifier] = request.fireDate;
        co_return {};
    }

    void showDue()
    {
        const Date now = currentDate();
        shown += static_cast<int>(
            std::erase_if(pending, [now](const auto &entry) { return entry.second <= now; }));
    }
};

qint64 residentKibibytes()
{
    QFile status(u"/proc/self/status"_s);
    if (status.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith("VmRSS:")) {
                return line.simplified().split(' ').at(1).toLongLong();
            }
        }
    }
    qFatal("the process's memory cannot be read");
}

} // namespace

class SimulatedYearTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachChangeoverOfAYearIsAnnouncedExactlyOnceAndMemoryStaysFlat()
    {
        const Date firstDay = at("00:00:00");
        ManualClock clock(firstDay + minutes(530));
        const QTemporaryDir library;
        TemporarySettings temporary;
        FakeLoginItem loginItem;
        AppSettings settings(temporary.store(), temporary.store(), loginItem);
        // An unwritable log keeps its latest eighty lines in memory, instead of half a million lines on disk.
        DebugLogService logger(u"/dev/null"_s);
        TeachingYear store;
        CountingPresenter presenter;
        WorkflowTransitionScheduler scheduler;
        CountingCenter center;
        SystemNotificationScheduler backups(center, logger, u"quillet.backup."_s);
        const SystemDateProvider dateProvider;
        MenuBarViewModel model({.scheduleStore = store,
                                .workflowEngine = LessonWorkflowEngine(dateProvider),
                                .notificationPresenter = presenter,
                                .scheduler = scheduler,
                                .systemNotificationScheduler = backups,
                                .dateProvider = dateProvider,
                                .debugLogger = logger,
                                .settings = settings});
        spawn(model.start());

        qint64 afterTheFirstDays = 0;
        std::size_t kept = 0;
        for (int day = 0; day < days; ++day) {
            const Date midnight = firstDay + minutes(1440.0 * day);
            // Second by second through the teaching hours; at night the machine sleeps.
            clock.setWallClock(midnight + minutes(530));
            clock.advanceTo(midnight + minutes(540 + 30 * lessonsADay + 5));
            QCOMPARE(model.lessons().size(), std::size_t{lessonsADay});

            // Lessons are five minutes apart, so each has four alerts before its start and one before its
            // end; the two on Teams have no one-minute warning.
            std::size_t due = 0;
            for (const Lesson &lesson : model.lessons()) {
                due += lesson.platform == TeachingPlatform::microsoftTeams ? 4 : 5;
            }
            QCOMPARE(presenter.counts.size(), due);
            for (const auto &[alert, count] : presenter.counts) {
                QVERIFY2(count == 1, qPrintable(alert));
            }
            kept += presenter.counts.size();
            presenter.counts.clear();
            // The backups: five for each lesson, and none is left over.
            center.showDue();
            QCOMPARE(std::exchange(center.shown, 0), 5 * lessonsADay);
            QVERIFY(center.pending.empty());
            if (day == days / 10) {
                afterTheFirstDays = residentKibibytes();
            }
        }
        QCOMPARE(kept, static_cast<std::size_t>(days) * 48);
        QVERIFY2(presenter.latest <= Seconds{1}, qPrintable(QString::number(presenter.latest.count())));
        const qint64 grown = residentKibibytes() - afterTheFirstDays;
        qInfo("alerts=%zu latest=%.3fs grown=%lldKiB", kept, presenter.latest.count(), grown);
        QVERIFY2(grown < maximumGrowth, qPrintable(QString::number(grown)));
    }
};

QUILLET_TEST(SimulatedYearTest, runTest<SimulatedYearTest>);
#include "SimulatedYearTest.moc"
