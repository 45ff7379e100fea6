// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/ProgramWatch.h"

#include "tests/agent/FakeSessionProgram.h"
#include "tests/agent/FakeWallClock.h"
#include "tests/support/TestProgram.h"

#include <QSignalSpy>
#include <QTest>

#include <chrono>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 watchedNoon = 1'800'000'000;
constexpr qint64 evening = watchedNoon + 21'600;
const SessionDisplay display{u":7"_s, {}, u"/home/anna/.Xauthority"_s};

constexpr std::chrono::milliseconds settlingTime{20};
constexpr int longer = 100; // milliseconds

} // namespace

class ProgramWatchTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_clock = std::make_unique<FakeWallClock>(watchedNoon);
        m_program = std::make_unique<FakeSessionProgram>();
        m_lines.clear();
        m_watch = std::make_unique<ProgramWatch>(
            *m_clock, *m_program, [this](const QString &line) { m_lines.append(line); }, settlingTime);
    }

    void aCrashedProgramIsRestartedOnItsDisplay()
    {
        greetAs(u":1.1"_s);
        m_program->leave();
        QTRY_COMPARE(m_program->started, std::vector{display});
        QVERIFY(m_watch->isWatching());
    }

    void aProgramThatSaidGoodbyeIsNotRestarted()
    {
        greetAs(u":1.1"_s);
        QVERIFY(m_watch->takeLeave(u":1.1"_s));
        QVERIFY(!m_watch->isWatching());
        m_program->leave();
        QTest::qWait(longer);
        QVERIFY(m_program->started.empty());
    }

    void aProgramThatNeverGreetedIsNotRestarted()
    {
        m_program->runningAs = u":1.1"_s;
        m_program->leave();
        QTest::qWait(longer);
        QVERIFY(m_program->started.empty());
    }

    void afterTheLastLessonItIsNotRestarted()
    {
        greetAs(u":1.1"_s);
        m_clock->set(evening);
        QVERIFY(!m_watch->isWatching());
        m_program->leave();
        QTest::qWait(longer);
        QVERIFY(m_program->started.empty());
    }

    void aGreetingWithNoLessonsLeftEndsTheWatch()
    {
        greetAs(u":1.1"_s);
        QVERIFY(m_watch->greet(u":1.1"_s, 0, {}));
        QVERIFY(!m_watch->isWatching());
    }

    void onlyTheProgramItselfIsAccepted()
    {
        m_program->runningAs = u":1.1"_s;
        QVERIFY(!m_watch->greet(u":1.2"_s, evening, display));
        QVERIFY(!m_watch->isWatching());
        QVERIFY(m_watch->greet(u":1.1"_s, evening, display));
        QVERIFY(!m_watch->takeLeave(u":1.2"_s));
        QVERIFY(m_watch->isWatching());
        m_program->runningAs.clear();
        QVERIFY(!m_watch->greet({}, evening, display));
        QVERIFY(!m_watch->takeLeave({}));
        QVERIFY(m_watch->isWatching());
    }

    void whatItDoesIsLogged()
    {
        greetAs(u":1.1"_s);
        m_program->leave();
        QTRY_COMPARE(m_program->started.size(), std::size_t{1});
        QCOMPARE(m_lines, QStringList{u"Quillet is brought back lessons_until=1800021600"_s});
        Q_EMIT m_program->startFailed(u"no such program"_s);
        QCOMPARE(m_lines.last(), u"Quillet did not start reason=\"no such program\""_s);
    }

    void eachChangeIsReportedAsActivity()
    {
        const QSignalSpy activity(m_watch.get(), &ProgramWatch::activityOccurred);
        greetAs(u":1.1"_s);
        QCOMPARE(activity.size(), 1);
        QVERIFY(m_watch->takeLeave(u":1.1"_s));
        QCOMPARE(activity.size(), 2);
        greetAs(u":1.1"_s);
        m_program->hasDisplay = false;
        m_program->leave();
        QCOMPARE(activity.size(), 4);
    }

    void aMissingDisplayMeansThatTheSessionHasEnded()
    {
        greetAs(u":1.1"_s);
        m_program->hasDisplay = false;
        m_program->leave();
        QVERIFY(!m_watch->isWatching());
        // A new display is perhaps the login screen's.
        m_program->hasDisplay = true;
        QTest::qWait(longer);
        QVERIFY(m_program->started.empty());
        QVERIFY(m_lines.last().contains(u"the session's display is gone"_s));
    }

    void aDisplayThatDisappearsAfterTheProgramIsNoticed()
    {
        greetAs(u":1.1"_s);
        m_program->leave();
        m_program->hasDisplay = false;
        QTRY_VERIFY(!m_watch->isWatching());
        QVERIFY(m_program->started.empty());
    }

    void aProgramStartedMeanwhileIsNotStartedAgain()
    {
        greetAs(u":1.1"_s);
        m_program->leave();
        m_program->runningAs = u":1.2"_s;
        QTest::qWait(longer);
        QVERIFY(m_program->started.empty());
        QVERIFY(m_watch->isWatching());
    }

    void itIsRestartedAtMostThreeTimesInTenMinutes()
    {
        greetAs(u":1.1"_s);
        for (std::size_t crash = 1; crash <= 3; ++crash) {
            m_clock->set(m_clock->now() + 100);
            m_program->leave();
            QTRY_COMPARE(m_program->started.size(), crash);
            // The restarted program counts even if it crashes before its greeting.
            m_program->runningAs = u":1.%1"_s.arg(crash + 1);
        }
        m_program->leave();
        QTRY_VERIFY(!m_watch->isWatching());
        QCOMPARE(m_program->started.size(), std::size_t{3});
        QVERIFY(m_lines.last().contains(u"3 times within 600 seconds"_s));
    }

    void tenMinutesAfterTheFirstRestartItIsRestartedAgain()
    {
        greetAs(u":1.1"_s);
        for (std::size_t crash = 1; crash <= 4; ++crash) {
            m_program->leave();
            QTRY_COMPARE(m_program->started.size(), crash);
            m_clock->set(m_clock->now() + 200);
        }
    }

    void restartsInTheFutureOfAClockSetBackDoNotCount()
    {
        greetAs(u":1.1"_s);
        for (std::size_t crash = 1; crash <= 3; ++crash) {
            m_program->leave();
            QTRY_COMPARE(m_program->started.size(), crash);
        }
        m_clock->set(watchedNoon - 1);
        m_program->leave();
        QTRY_COMPARE(m_program->started.size(), std::size_t{4});
    }

    void aStartThatFailsCountsAsACrash()
    {
        greetAs(u":1.1"_s);
        m_program->leave();
        for (std::size_t start = 1; start <= 3; ++start) {
            QTRY_COMPARE(m_program->started.size(), start);
            Q_EMIT m_program->startFailed(u"no such program"_s);
        }
        QTRY_VERIFY(!m_watch->isWatching());
        QCOMPARE(m_program->started.size(), std::size_t{3});
    }

    void theEndOfTheLastLessonIsReportedAsActivity()
    {
        m_program->runningAs = u":1.1"_s;
        QVERIFY(m_watch->greet(u":1.1"_s, watchedNoon + 1, display));
        const QSignalSpy activity(m_watch.get(), &ProgramWatch::activityOccurred);
        m_clock->set(watchedNoon + 1);
        QTRY_COMPARE(activity.size(), 1);
        QVERIFY(!m_watch->isWatching());
    }

private:
    void greetAs(const QString &name)
    {
        m_program->runningAs = name;
        QVERIFY(m_watch->greet(name, evening, display));
    }

    std::unique_ptr<FakeWallClock> m_clock;
    std::unique_ptr<FakeSessionProgram> m_program;
    std::unique_ptr<ProgramWatch> m_watch;
    QStringList m_lines;
};

QUILLET_TEST(ProgramWatchTest, runTest<ProgramWatchTest>);
#include "ProgramWatchTest.moc"
