// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/AgentNotificationRoom.h"
#include "tests/adapters/RecordingAgent.h"
#include "tests/support/EventLoopWatch.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QTest>

#include <chrono>
#include <csignal>
#include <limits>
#include <memory>
#include <vector>

using namespace corvane;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// Requests on their way to the agent, to one that hangs or dies, too.
class AgentNotificationCenterTest final : public QObject, private AgentNotificationRoom {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void withoutASessionBusEachCallFailsAtOnce()
    {
        m_center = std::make_unique<AgentNotificationCenter>(QDBusConnection(u"none"_s));
        const auto granted = QCoro::waitFor(m_center->requestAuthorization());
        QVERIFY(!granted.has_value());
        QCOMPARE(granted.error().localizedDescription, u"there is no session bus"_s);
        QVERIFY(!QCoro::waitFor(m_center->pendingNotificationRequests()).has_value());
        QVERIFY(!QCoro::waitFor(m_center->removePendingNotificationRequests({u"a"_s})).has_value());
        QVERIFY(!QCoro::waitFor(m_center->add(request(u"a"_s))).has_value());
    }

    void aCompleteRequestReachesTheAgent()
    {
        startAgent();
        QVERIFY(QCoro::waitFor(center().add(request(u"quillet.backup.join.1.王"_s))).has_value());
        QCOMPARE(m_agent->pending.size(), std::size_t{1});
        const RecordingAgent::Added expected{.identifier = u"quillet.backup.join.1.王"_s,
                                             .title = u"Quillet: join now"_s,
                                             .body = u"Join 王 <b>now</b>."_s,
                                             .categoryIdentifier = u"quillet.lesson"_s,
                                             .fireDate = 4000000000,
                                             .expirationDate = 4000000031};
        QVERIFY(m_agent->pending.front() == expected);
    }

    void aQuietRequestReachesTheAgentAsQuiet()
    {
        startAgent();
        NotificationRequest quiet = request(u"quillet.calendar-gap.1"_s);
        quiet.isQuiet = true;
        QVERIFY(QCoro::waitFor(center().add(quiet)).has_value());
        QVERIFY(QCoro::waitFor(center().add(request(u"quillet.backup.join.1.王"_s))).has_value());
        QCOMPARE(m_agent->pending.size(), std::size_t{2});
        QVERIFY(m_agent->pending.front().isQuiet);
        QVERIFY(!m_agent->pending.back().isQuiet);
    }

    void withAnOldAgentNoRequestIsLost()
    {
        startAgent();
        m_agent->lacksNewerMethods = true;
        NotificationRequest quiet = request(u"quillet.calendar-gap.1"_s);
        quiet.isQuiet = true;
        QVERIFY(QCoro::waitFor(center().add(quiet)).has_value());
        QVERIFY(QCoro::waitFor(center().add(request(u"quillet.backup.join.1.王"_s))).has_value());
        const auto pending = QCoro::waitFor(center().pendingNotificationRequests());
        QCOMPARE(*pending, (QStringList{u"quillet.calendar-gap.1"_s, u"quillet.backup.join.1.王"_s}));
    }

    void aRequestWhoseSecondHasBegunIsNotSent()
    {
        startAgent();
        // Within its second the date is still ahead by a fraction, but the agent may already have shown the
        // notification.
        for (const double ahead : {-0.5, 0.0}) {
            NotificationRequest begun = request(u"a"_s);
            begun.fireDate = dateSince1970(std::floor(secondsSince1970(currentDate())) + 0.999 + ahead);
            QVERIFY(QCoro::waitFor(center().add(begun)).has_value());
        }
        NotificationRequest early = request(u"a"_s);
        early.fireDate = dateSince1970(-0.5);
        QVERIFY(QCoro::waitFor(center().add(early)).has_value());
        QVERIFY(m_agent->calls.isEmpty());
    }

    void identifiersStayDistinctDespiteInvalidCharacters()
    {
        startAgent();
        NotificationRequest null = request(u"a"_s + QChar(QChar::Null) + u'b');
        null.title = u"Anna"_s + QChar(QChar::Null) + u"Bell"_s;
        QVERIFY(QCoro::waitFor(center().add(null)).has_value());
        QVERIFY(QCoro::waitFor(center().add(request(u"a"_s + QChar(QChar::Null) + u'c'))).has_value());
        QVERIFY(QCoro::waitFor(center().add(request(u"x"_s.repeated(298) + u"🎓🎓🎓"_s))).has_value());
        QCOMPARE(m_agent->pending.size(), 3);
        QCOMPARE(m_agent->pending.front().title, u"Anna\uFFFDBell"_s);
        QVERIFY(m_agent->pending[0].identifier != m_agent->pending[1].identifier);
        QVERIFY(m_agent->pending[2].identifier.isValidUtf16());
    }

    void textsContainNoControlCharacters()
    {
        startAgent();
        NotificationRequest hostile = request(u"a\nb\u202E"_s);
        hostile.title = u"Quillet\x1b[31m"_s;
        hostile.body = u"Anna\n\u0085\u202Estarts"_s;
        QVERIFY(QCoro::waitFor(center().add(hostile)).has_value());
        QCOMPARE(m_agent->pending.front().identifier, hostile.identifier);
        QCOMPARE(m_agent->pending.front().title, u"Quillet [31m"_s);
        QCOMPARE(m_agent->pending.front().body, u"Anna  starts"_s);
    }

    void aDateOutsideTheAgentsRangeIsRefused()
    {
        startAgent();
        NotificationRequest endless = request(u"a"_s);
        endless.expirationDate = dateSince1970(std::numeric_limits<double>::infinity());
        QVERIFY(!QCoro::waitFor(center().add(endless)).has_value());
        endless = request(u"a"_s);
        endless.fireDate = dateSince1970(std::numeric_limits<double>::quiet_NaN());
        QVERIFY(!QCoro::waitFor(center().add(endless)).has_value());
        QVERIFY(m_agent->calls.isEmpty());
    }

    void pendingRequestsAreListedAndRemoved()
    {
        startAgent();
        QVERIFY(QCoro::waitFor(center().add(request(u"a"_s))).has_value());
        QVERIFY(QCoro::waitFor(center().add(request(u"b"_s))).has_value());
        const auto pending = QCoro::waitFor(center().pendingNotificationRequests());
        QVERIFY(pending.has_value());
        QCOMPARE(*pending, (QStringList{u"a"_s, u"b"_s}));
        QVERIFY(QCoro::waitFor(center().removePendingNotificationRequests({u"a"_s, u"b"_s})).has_value());
        QVERIFY(m_agent->pending.empty());
        QCOMPARE(m_agent->calls, (QStringList{u"Add a"_s, u"Add b"_s, u"PendingRequests"_s,
                                              u"RemovePendingRequests a, b"_s}));
    }

    void concurrentCallsArriveInOrder()
    {
        startAgent();
        std::vector<QCoro::Task<std::expected<void, Failure>>> adds;
        adds.reserve(20);
        for (int number = 0; number < 20; ++number) {
            adds.push_back(center().add(request(QString::number(number))));
        }
        QStringList expected;
        for (int number = 0; number < 20; ++number) {
            QVERIFY(QCoro::waitFor(adds[static_cast<std::size_t>(number)]).has_value());
            expected.append(u"Add "_s + QString::number(number));
        }
        QCOMPARE(m_agent->calls, expected);
    }

    void aMissingAgentIsAFailure()
    {
        const auto added = QCoro::waitFor(center().add(request(u"a"_s)));
        QVERIFY(!added.has_value());
        QVERIFY2(added.error().localizedDescription.startsWith(u"the notification agent: "_s),
                 qPrintable(added.error().localizedDescription));
    }

    void anAgentsRefusalIsReportedInItsWords()
    {
        startAgent();
        m_agent->refusal = u"the disk is full"_s;
        const auto added = QCoro::waitFor(center().add(request(u"a"_s)));
        QVERIFY(!added.has_value());
        QCOMPARE(added.error().localizedDescription, u"the notification agent: the disk is full"_s);
        const auto pending = QCoro::waitFor(center().pendingNotificationRequests());
        QVERIFY(!pending.has_value());
        QCOMPARE(pending.error().localizedDescription, u"the notification agent: the disk is full"_s);
    }

    void anAgentThatHangsTimesOutAndBlocksNothing()
    {
        startAgent();
        startServer(NotificationServer::Kind::answers);
        m_agent->hangs = true;
        EventLoopWatch watch;
        QElapsedTimer timer;
        timer.start();
        AgentNotificationCenter &hurried = center({.bus = 5s, .server = 5s, .agent = 1500ms});
        QVERIFY(!QCoro::waitFor(run(hurried)).has_value());
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY2(watch.longestGap() < EventLoopWatch::blockedThreshold,
                 qPrintable(QString::number(watch.longestGap())));
        m_agent->hangs = false;
        QVERIFY(QCoro::waitFor(run(hurried)).has_value());
    }

    void aBusThatHangsTimesOutAndBlocksNothing()
    {
        startAgent();
        AgentNotificationCenter &hurried = center({.bus = 1500ms, .server = 1500ms, .agent = 1500ms});
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGSTOP);
        EventLoopWatch watch;
        QElapsedTimer timer;
        timer.start();
        const auto ended = QCoro::waitFor(run(hurried));
        const auto elapsed = timer.elapsed();
        const double gap = watch.longestGap();
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGCONT);
        QVERIFY(!ended.has_value());
        QVERIFY2(elapsed < 10000, qPrintable(QString::number(elapsed)));
        QVERIFY2(gap < EventLoopWatch::blockedThreshold, qPrintable(QString::number(gap)));
        // Once the bus continues, calls succeed again.
        QTRY_VERIFY_WITH_TIMEOUT(QCoro::waitFor(hurried.add(request(u"later"_s))).has_value(), 10000);
    }

    void theEndOfTheBusEndsPendingCalls()
    {
        startAgent();
        m_agent->hangs = true;
        auto added = center().add(request(u"a"_s));
        QTRY_COMPARE(m_agent->calls.size(), 1);
        QElapsedTimer timer;
        timer.start();
        m_bus->stop();
        QVERIFY(!QCoro::waitFor(added).has_value());
        QVERIFY(!QCoro::waitFor(center().requestAuthorization()).has_value());
        QVERIFY(!QCoro::waitFor(center().pendingNotificationRequests()).has_value());
        QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
    }

    void anAgentThatStartsLaterIsFound()
    {
        QVERIFY(!QCoro::waitFor(center().add(request(u"a"_s))).has_value());
        startAgent();
        QVERIFY(QCoro::waitFor(center().add(request(u"a"_s))).has_value());
        m_agent.reset();
        startAgent();
        QVERIFY(QCoro::waitFor(center().add(request(u"b"_s))).has_value());
        QCOMPARE(m_agent->calls, QStringList{u"Add b"_s});
    }

    void callsOutliveTheirCentre()
    {
        startAgent();
        auto added = center().add(request(u"a"_s));
        m_center.reset();
        QVERIFY(QCoro::waitFor(added).has_value());
        QCOMPARE(m_agent->pending.size(), std::size_t{1});
    }

private:
    // The requests of one run of the backup scheduler, in order.
    static QCoro::Task<std::expected<void, Failure>> run(UserNotificationCenter &center)
    {
        const auto granted = co_await center.requestAuthorization();
        if (!granted) {
            co_return std::unexpected(granted.error());
        }
        const auto pending = co_await center.pendingNotificationRequests();
        if (!pending) {
            co_return std::unexpected(pending.error());
        }
        co_return co_await center.add(request(u"one"_s));
    }
};

QUILLET_TEST(AgentNotificationCenterTest, runTest<AgentNotificationCenterTest>);

#include "AgentNotificationCenterTest.moc"
