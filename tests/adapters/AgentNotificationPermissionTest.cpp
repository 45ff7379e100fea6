// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include <gio/gio.h>

#include "Corvane/Platform/Linux/Freedesktop/GnomeNotificationSwitch.h"
#include "tests/adapters/AgentNotificationRoom.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <optional>

using namespace corvane;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

void setGnomeSwitch(bool isOn)
{
    GSettings *settings =
        g_settings_new_with_path("org.gnome.desktop.notifications.application",
                                 "/org/gnome/desktop/notifications/application/com-ordwinsoftware-quillet/");
    QVERIFY(g_settings_set_boolean(settings, "enable", isOn ? TRUE : FALSE));
    g_object_unref(settings);
}

} // namespace

/// Whether notifications are allowed: by the server, and by the desktop's switch.
class AgentNotificationPermissionTest final : public QObject, private AgentNotificationRoom {
    Q_OBJECT

public:
    bool hasSchemas = true;

private Q_SLOTS:
    void init() { begin(); }

    void cleanup()
    {
        end();
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

private:
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
};

// "--without-schemas" runs the one test for a machine without the desktop's schemas, in its own process,
// since installed schemas are read only once per process.
static int runAgentNotificationPermission(int argc, char *argv[])
{
    AgentNotificationPermissionTest test;
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

QUILLET_TEST(AgentNotificationPermissionTest, runAgentNotificationPermission);

#include "AgentNotificationPermissionTest.moc"
