// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include <gio/gio.h>

#include "Corvane/Platform/Linux/Freedesktop/AgentNotificationCenter.h"

#include "Corvane/Platform/Linux/Freedesktop/GnomeNotificationSwitch.h"
#include "tests/adapters/RecordingAgent.h"
#include "tests/support/EventLoopWatch.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <limits>
#include <memory>
#include <optional>

using namespace corvane;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// A notification server that does nothing but answer, fail or hang.
class NotificationServer final : public QDBusVirtualObject {
public:
    enum class Kind { answers, knowsNothing, hangs };

    NotificationServer(QDBusConnection bus, Kind kind) : m_bus(std::move(bus)), m_kind(kind)
    {
        if (!m_bus.registerVirtualObject(u"/org/freedesktop/Notifications"_s, this) ||
            !m_bus.registerService(u"org.freedesktop.Notifications"_s)) {
            qFatal("the notification server cannot take its place on the bus");
        }
    }
    ~NotificationServer() override { m_bus.unregisterObject(u"/org/freedesktop/Notifications"_s); }

    int asked = 0;

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        ++asked;
        switch (m_kind) {
        case Kind::answers:
            return connection.send(
                message.createReply(QVariantList{u"server"_s, u"test"_s, u"1"_s, u"1.2"_s}));
        case Kind::knowsNothing:
            return false;
        case Kind::hangs:
            return true;
        }
        Q_UNREACHABLE();
    }

private:
    QDBusConnection m_bus;
    Kind m_kind;
};

void setGnomeSwitch(bool isOn)
{
    GSettings *settings =
        g_settings_new_with_path("org.gnome.desktop.notifications.application",
                                 "/org/gnome/desktop/notifications/application/com-ordwinsoftware-quillet/");
    QVERIFY(g_settings_set_boolean(settings, "enable", isOn ? TRUE : FALSE));
    g_object_unref(settings);
}

NotificationRequest request(const QString &identifier)
{
    return {.identifier = identifier,
            .title = u"Quillet: join now"_s,
            .body = u"Join 王 <b>now</b>."_s,
            .categoryIdentifier = u"quillet.lesson"_s,
            .fireDate = dateSince1970(4000000000.75),
            .expirationDate = dateSince1970(4000000030.25)};
}

// The requests of one run of the backup scheduler, in order.
QCoro::Task<std::expected<void, Failure>> run(UserNotificationCenter &center)
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

} // namespace

class AgentNotificationCenterTest final : public QObject {
    Q_OBJECT

public:
    bool hasSchemas = true;

private Q_SLOTS:
    void init() { m_bus = std::make_unique<PrivateBus>(); }

    void cleanup()
    {
        m_center.reset();
        m_server.reset();
        m_agent.reset();
        for (; m_connections > 0; --m_connections) {
            QDBusConnection::disconnectFromBus(QString::number(m_connections));
        }
        m_bus.reset();
        if (hasSchemas) {
            setGnomeSwitch(true);
        }
    }

    void aServerThatAnswersGrants()
    {
        startServer(NotificationServer::Kind::answers);
        QCOMPARE(authorization(), std::optional(true));
        QCOMPARE(m_server->asked, 1);
    }

    void aServerThatAnswersWithAnErrorGrants()
    {
        startServer(NotificationServer::Kind::knowsNothing);
        QCOMPARE(authorization(), std::optional(true));
    }

    void aServerThatHangsGrantsAfterATimeLimit()
    {
        startServer(NotificationServer::Kind::hangs);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(authorization({.bus = 5s, .server = 300ms, .agent = 5s}), std::optional(true));
        QVERIFY2(timer.elapsed() >= 250 && timer.elapsed() < 10000,
                 qPrintable(QString::number(timer.elapsed())));
    }

    void withoutAServerNothingIsGranted() { QCOMPARE(authorization(), std::optional(false)); }

    void aServerThatCanBeStartedGrants()
    {
        const QTemporaryDir services;
        installService(services, u"/usr/bin/python3 -m dbusmock --session --template notification_daemon"_s);
        m_bus = std::make_unique<PrivateBus>(QStringList{services.path()});
        QCOMPARE(authorization({.bus = 5s, .server = 25s, .agent = 5s}), std::optional(true));
        QVERIFY(connection().interface()->isServiceRegistered(u"org.freedesktop.Notifications"_s));
    }

    void aServerThatCannotBeStartedGrantsNothing()
    {
        const QTemporaryDir services;
        for (const QString &command : {u"/bin/false"_s, u"/nonexistent/server"_s}) {
            installService(services, command);
            m_center.reset();
            m_bus = std::make_unique<PrivateBus>(QStringList{services.path()});
            QCOMPARE(authorization(), std::optional(false));
        }
    }

    void theDesktopsSwitchRevokesThePermission()
    {
        startServer(NotificationServer::Kind::answers);
        setGnomeSwitch(false);
        QCOMPARE(authorization(), std::optional(false));
        QCOMPARE(m_server->asked, 0);
        setGnomeSwitch(true);
        QCOMPARE(authorization(), std::optional(true));
    }

    void eachProgramHasItsOwnSwitch()
    {
        setGnomeSwitch(false);
        QVERIFY(gnomeAllowsNotifications(u"org.example.Other"_s));
        QVERIFY(!gnomeAllowsNotifications(u"com.ordwinsoftware.Quillet"_s));
        // As in the desktop's settings: lower case, and a dash for each run of other characters.
        QVERIFY(!gnomeAllowsNotifications(u"COM._.ordwinsoftware--Quillet"_s));
    }

    void withoutTheDesktopsSchemasThereIsNoSwitch()
    {
        startServer(NotificationServer::Kind::answers);
        QVERIFY(gnomeAllowsNotifications(u"com.ordwinsoftware.Quillet"_s));
        QCOMPARE(authorization(), std::optional(true));
    }

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
        m_agent->isOfBefore = true;
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
    QDBusConnection connection()
    {
        return QDBusConnection::connectToBus(m_bus->address(), QString::number(++m_connections));
    }

    void startAgent() { m_agent = std::make_unique<RecordingAgent>(connection()); }

    void startServer(NotificationServer::Kind kind)
    {
        m_server = std::make_unique<NotificationServer>(connection(), kind);
    }

    /// The centre under test, created by the first call.
    AgentNotificationCenter &
    center(AgentNotificationCenter::Timeouts timeouts = AgentNotificationCenter::defaultTimeouts)
    {
        if (!m_center) {
            m_center = std::make_unique<AgentNotificationCenter>(connection(), timeouts);
        }
        return *m_center;
    }

    std::optional<bool>
    authorization(AgentNotificationCenter::Timeouts timeouts = AgentNotificationCenter::defaultTimeouts)
    {
        const auto granted = QCoro::waitFor(center(timeouts).requestAuthorization());
        return granted ? std::optional(*granted) : std::nullopt;
    }

    static void installService(const QTemporaryDir &folder, const QString &command)
    {
        QFile file(folder.filePath(u"org.freedesktop.Notifications.service"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(
            (u"[D-BUS Service]\nName=org.freedesktop.Notifications\nExec="_s + command + u'\n').toUtf8());
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<RecordingAgent> m_agent;
    std::unique_ptr<NotificationServer> m_server;
    std::unique_ptr<AgentNotificationCenter> m_center;
    int m_connections = 0;
};

// "--without-schemas" runs the one test for a machine without the desktop's schemas, in its own process,
// since installed schemas are read only once per process.
static int runAgentNotificationCenter(int argc, char *argv[])
{
    AgentNotificationCenterTest test;
    if (takeOption("--without-schemas", argc, argv)) {
        qputenv("XDG_DATA_DIRS", "/nonexistent");
        test.hasSchemas = false;
        QCoreApplication application(argc, argv);
        return QTest::qExec(&test,
                            {QString::fromLocal8Bit(argv[0]), u"withoutTheDesktopsSchemasThereIsNoSwitch"_s});
    }
    QCoreApplication application(argc, argv);
    return QTest::qExec(&test, argc, argv);
}

QUILLET_TEST(AgentNotificationCenterTest, runAgentNotificationCenter);

#include "AgentNotificationCenterTest.moc"
