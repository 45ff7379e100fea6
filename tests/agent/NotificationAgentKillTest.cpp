// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestFile.h"
#include "tests/agent/AgentRoom.h"
#include "tests/agent/RecordingServer.h"
#include "tests/support/TestProgram.h"

#include <QDBusPendingCallWatcher>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QTest>

#include <deque>
#include <memory>
#include <random>
#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr int killTimeout = 20'000; // milliseconds

// benchmarks/agent-figures runs two hundred rounds.
int rounds()
{
    const int told = qEnvironmentVariableIntValue("QUILLET_ROUNDS");
    return told > 0 ? told : 20;
}

} // namespace

class NotificationAgentKillTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<AgentRoom>();
        m_random.seed(std::random_device{}());
    }
    void cleanup() { m_room.reset(); }

    void aKillAroundADeliveryNeverCausesASecondDelivery()
    {
        RecordingServer server(m_room->bus().address(), {u"body"_s, u"sound"_s});
        int once = 0;
        int afterwards = 0;
        int lost = 0;
        int undecided = 0;
        for (int round = 0; round < rounds(); ++round) {
            m_room->startAgent();
            const QString name = u"round %1"_s.arg(round);
            const qint64 now = AgentRoom::now();
            // In every fourth round the agent dies before the server has answered that it is there.
            server.isAsleep = round % 4 == 0;
            const int asked = server.asked;
            bool isKept = false;
            watch(u"Add"_s, {name, name, u"b"_s, u"c"_s, now, now + 600}, isKept);
            // The delivery comes after this answer.
            QDeadlineTimer deadline(killTimeout);
            while (!isKept && !deadline.hasExpired()) {
                QCoreApplication::processEvents(QEventLoop::AllEvents);
            }
            QVERIFY(isKept);
            if (server.isAsleep) {
                QTRY_VERIFY_WITH_TIMEOUT(server.asked > asked, killTimeout);
            }
            killAfterAWhile(8'000);
            QVERIFY(server.drain());
            const int before = server.shownWith(name);
            QVERIFY(isWhole());
            const int left = static_cast<int>(entriesInFile());
            if (std::exchange(server.isAsleep, false)) {
                ++undecided;
                QCOMPARE(left, 1);
            }
            m_room->startAgent();
            // The next agent delivers what was not handed over; then nothing is left.
            QTRY_VERIFY_WITH_TIMEOUT(server.shownWith(name) >= before + left, killTimeout);
            QTRY_VERIFY_WITH_TIMEOUT(m_room->pending().isEmpty(), killTimeout);
            m_room->killAgent();
            QTRY_VERIFY(!m_room->isNameOwned());
            QVERIFY(server.drain());
            const int count = server.shownWith(name);
            once += before;
            afterwards += count - before;
            lost += count == 0 ? 1 : 0; // killed after leaving the file, before reaching the server
        }
        int twice = 0;
        for (int round = 0; round < rounds(); ++round) {
            twice += server.shownWith(u"round %1"_s.arg(round)) > 1 ? 1 : 0;
        }
        qInfo() << rounds() << "kills around a delivery," << undecided
                << "of them before the server had answered: delivered before the kill" << once
                << "by the next agent" << afterwards << "twice" << twice
                << "lost between the file and the server" << lost;
        QCOMPARE(twice, 0);
        QVERIFY(once + afterwards > 0);
    }

    void aKillAroundAWriteTearsNothingAndLosesNoConfirmedChange()
    {
        int kept = 0;
        for (int round = 0; round < rounds(); ++round) {
            m_room->startAgent();
            const QStringList before = m_room->pending();
            const qint64 later = AgentRoom::now() + 10'000;
            std::deque<bool> answers(40);
            for (int i = 0; i < 40; ++i) {
                const QString name = u"round %1 request %2"_s.arg(round).arg(i);
                watch(u"Add"_s, {name, name, u"b"_s, u"c"_s, later, later + 600},
                      answers[static_cast<std::size_t>(i)]);
                if (i % 5 == 0) {
                    QCoreApplication::processEvents();
                }
            }
            bool isRemoved = false;
            watch(u"RemovePendingRequests"_s, {before}, isRemoved);
            killAfterAWhile(30'000);
            QVERIFY(isWhole());
            m_room->startAgent();
            const QStringList now = m_room->pending();
            for (int i = 0; i < 40; ++i) {
                if (answers[static_cast<std::size_t>(i)]) {
                    ++kept;
                    QVERIFY(now.contains(u"round %1 request %2"_s.arg(round).arg(i)));
                }
            }
            if (isRemoved) {
                for (const QString &identifier : before) {
                    QVERIFY(!now.contains(identifier));
                }
            }
            m_room->killAgent();
            QTRY_VERIFY(!m_room->isNameOwned());
        }
        qInfo() << rounds() << "kills around a write: promised and kept" << kept;
        QVERIFY(!m_room->log().contains(u"damaged"_s));
    }

private:
    // Calls the agent; sets `isAnswered` when it accepts. `isAnswered` must live until killAfterAWhile()
    // returns.
    void watch(const QString &method, const QVariantList &arguments, bool &isAnswered)
    {
        auto *watcher = new QDBusPendingCallWatcher(
            m_room->connection().asyncCall(m_room->message(method, arguments), killTimeout), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, &isAnswered] {
            isAnswered = !watcher->isError();
            watcher->deleteLater();
        });
        m_watchers.append(watcher);
    }

    // Kills the agent at a random moment within `maximumMicroseconds` from now.
    void killAfterAWhile(int maximumMicroseconds)
    {
        const qint64 moment = std::uniform_int_distribution<qint64>(0, maximumMicroseconds)(m_random) * 1000;
        QElapsedTimer timer;
        timer.start();
        while (timer.nsecsElapsed() < moment) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
        m_room->killAgent();
        // By now every call is answered, by the agent or by the bus.
        QTRY_VERIFY(!m_room->isNameOwned());
        for (const auto &watcher : std::exchange(m_watchers, {})) {
            QTRY_VERIFY(watcher.isNull());
        }
    }

    [[nodiscard]] bool isWhole() const
    {
        QFile file(m_room->queuePath());
        return !file.open(QIODevice::ReadOnly) || decodedRequests(file.readAll()).isWhole;
    }

    [[nodiscard]] std::size_t entriesInFile() const
    {
        QFile file(m_room->queuePath());
        return file.open(QIODevice::ReadOnly) ? decodedRequests(file.readAll()).requests.size() : 0;
    }

    std::unique_ptr<AgentRoom> m_room;
    std::mt19937 m_random;
    QList<QPointer<QDBusPendingCallWatcher>> m_watchers;
};

QUILLET_TEST(NotificationAgentKillTest, runTest<NotificationAgentKillTest>);
#include "NotificationAgentKillTest.moc"
