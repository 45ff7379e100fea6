// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/DesktopNotifications.h"

#include "tests/agent/RecordingServer.h"
#include "tests/contracts/DirectNotificationsContract.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QTextDocumentFragment>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Unless a test says otherwise, the notification server supports markup in the body.
class DesktopNotificationsTest final : public DirectNotificationsContract {
    Q_OBJECT

protected:
    DirectNotifications &notifications() override { return *m_notifications; }
    void takeServerAway() override { m_server->leave(); }

    QStringList read() override
    {
        QStringList read;
        for (const auto &shown : m_server->shown) {
            read.append(shown.summary + u": "_s + QTextDocumentFragment::fromHtml(shown.body).toPlainText());
        }
        return read;
    }

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        start({u"body-markup"_s});
        m_notifications = std::make_unique<DesktopNotifications>(
            QDBusConnection::connectToBus(m_bus->address(), u"notifications"_s), std::chrono::seconds{1});
    }

    void cleanup()
    {
        m_notifications.reset();
        m_server.reset();
        QDBusConnection::disconnectFromBus(u"notifications"_s);
        m_bus.reset();
    }

    void aNotificationIsSilentAndDoesNotStay()
    {
        QVERIFY(QCoro::waitFor(m_notifications->showQuietly(u"One"_s, u"Two"_s)));
        const RecordingServer::Shown shown = m_server->shown.at(0);
        QCOMPARE(shown.hints.value(u"suppress-sound"_s), QVariant(true));
        QCOMPARE(shown.hints.value(u"urgency"_s).toInt(), 1);
        QCOMPARE(shown.application, u"Quillet"_s);
        QCOMPARE(shown.icon, u"com.ordwinsoftware.Quillet"_s);
    }

    void aServerWithoutMarkupGetsPlainText()
    {
        start({});
        QVERIFY(QCoro::waitFor(m_notifications->showQuietly(u"One"_s, u"2 < 3"_s)));
        QCOMPARE(m_server->shown.at(0).body, u"2 < 3"_s);
    }

    void aServerThatRefusesOrHangsIsReported()
    {
        m_server->behaviour = RecordingServer::Behaviour::refuses;
        QVERIFY(!QCoro::waitFor(m_notifications->showQuietly(u"One"_s, u"Two"_s)));
        QElapsedTimer timer;
        timer.start();
        m_server->behaviour = RecordingServer::Behaviour::saysNothing;
        QVERIFY(!QCoro::waitFor(m_notifications->showQuietly(u"One"_s, u"Two"_s)));
        m_server->isAsleep = true;
        QVERIFY(!QCoro::waitFor(m_notifications->showQuietly(u"One"_s, u"Two"_s)));
        QVERIFY2(timer.elapsed() < 10'000, qPrintable(QString::number(timer.elapsed())));
    }

    void withoutABusNothingIsShown()
    {
        DesktopNotifications notifications(QDBusConnection(u"none"_s));
        QVERIFY(!QCoro::waitFor(notifications.showQuietly(u"One"_s, u"Two"_s)));
    }

private:
    void start(const QStringList &capabilities)
    {
        m_server.reset();
        m_server = std::make_unique<RecordingServer>(m_bus->address(), capabilities);
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<RecordingServer> m_server;
    std::unique_ptr<DesktopNotifications> m_notifications;
};

QUILLET_TEST(DesktopNotificationsTest, runTest<DesktopNotificationsTest>);
#include "DesktopNotificationsTest.moc"
