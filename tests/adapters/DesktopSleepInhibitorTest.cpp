// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/DesktopSleepInhibitor.h"

#include "tests/adapters/InhibitingService.h"
#include "tests/contracts/SleepInhibitorContract.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <array>
#include <map>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

using Kind = InhibitingService::Kind;

/// Runs the port's contract on the portal, and tests which of several services is asked and what happens to a
/// request when services start and end.
class DesktopSleepInhibitorTest final : public SleepInhibitorContract {
    Q_OBJECT

protected:
    SleepInhibitor &inhibitor() override { return *m_inhibitor; }

    int holds() override
    {
        int all = 0;
        for (const auto &[kind, service] : m_services) {
            all += service->holds();
        }
        return all;
    }

private Q_SLOTS:
    void init()
    {
        m_logger = std::make_unique<DebugLogService>(m_folder.path());
        m_bus = std::make_unique<PrivateBus>();
        start(Kind::portal);
        makeInhibitor();
    }

    void cleanup()
    {
        m_inhibitor.reset();
        QDBusConnection::disconnectFromBus(u"inhibitor"_s);
        m_services.clear();
        m_bus.reset();
    }

    void oneServiceIsAskedToInhibitOnlyAutomaticSleep_data()
    {
        QTest::addColumn<Kind>("first");
        QTest::addColumn<QVariantList>("wish");
        const QString reason = u"A lesson is under way or begins soon"_s;
        QTest::newRow("portal") << Kind::portal << QVariantList{QString(), 4U};
        QTest::newRow("session manager")
            << Kind::sessionManager << QVariantList{u"com.ordwinsoftware.Quillet"_s, 0U, reason, 4U};
        QTest::newRow("power manager") << Kind::powerManager << QVariantList{u"Quillet"_s, reason};
        QTest::newRow("logind") << Kind::logind << QVariantList{u"idle"_s, u"Quillet"_s, reason, u"block"_s};
    }

    void oneServiceIsAskedToInhibitOnlyAutomaticSleep()
    {
        QFETCH(Kind, first);
        QFETCH(QVariantList, wish);
        m_services.clear();
        for (const Kind kind : allKinds) {
            if (kind >= first) {
                start(kind);
            }
        }
        m_inhibitor->keepAwake();
        QTRY_COMPARE(holdsOf(first), 1);
        QCOMPARE(holds(), 1);
        QCOMPARE(m_services.at(first)->wishes.constFirst().first(wish.size()), wish);
        m_inhibitor->letSleep();
        QTRY_COMPARE(holds(), 0);
        m_inhibitor->keepAwake();
        QTRY_COMPARE(holdsOf(first), 1);
        m_inhibitor.reset();
        QTRY_COMPARE(holds(), 0);
    }

    void aServiceThatRefusesIsSkipped()
    {
        for (const Kind kind : allKinds) {
            start(kind);
            m_services.at(kind)->refuses = kind != Kind::logind;
        }
        makeInhibitor();
        m_inhibitor->keepAwake();
        QTRY_COMPARE(holdsOf(Kind::logind), 1);
        QCOMPARE(holds(), 1);
        for (const Kind kind : allKinds) {
            QCOMPARE(m_services.at(kind)->wishes.size(), 1);
        }
    }

    void aServiceThatRestartsIsAskedAgain_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::newRow("portal") << Kind::portal;
        QTest::newRow("session manager") << Kind::sessionManager;
        QTest::newRow("power manager") << Kind::powerManager;
        QTest::newRow("logind") << Kind::logind;
    }

    void aServiceThatRestartsIsAskedAgain()
    {
        QFETCH(Kind, kind);
        m_services.clear();
        start(kind);
        m_inhibitor->keepAwake();
        QTRY_COMPARE(holds(), 1);
        m_services.clear();
        start(kind);
        QTRY_COMPARE(holds(), 1);
        m_inhibitor->letSleep();
        QTRY_COMPARE(holds(), 0);
    }

    void theNextServiceStandsInUntilTheFirstIsBack_data()
    {
        QTest::addColumn<Kind>("next");
        QTest::newRow("session manager") << Kind::sessionManager;
        QTest::newRow("power manager") << Kind::powerManager;
        QTest::newRow("logind") << Kind::logind;
    }

    void theNextServiceStandsInUntilTheFirstIsBack()
    {
        QFETCH(Kind, next);
        start(next);
        m_inhibitor->keepAwake();
        QTRY_COMPARE(holdsOf(Kind::portal), 1);
        m_services.erase(Kind::portal);
        QTRY_COMPARE(holdsOf(next), 1);
        start(Kind::portal);
        QTRY_COMPARE(holdsOf(Kind::portal), 1);
        QTRY_COMPARE(holds(), 1);
        // The restart of a service later in the order changes nothing.
        startAndWaitForRequests(next);
        QCOMPARE(holds(), 1);
        QCOMPARE(m_services.at(next)->wishes.size(), 0);
    }

    void withoutAServiceTheFirstToStartIsAsked()
    {
        m_services.clear();
        m_inhibitor->keepAwake();
        QTRY_VERIFY(!m_logger->latestLines().isEmpty());
        QVERIFY(m_logger->latestLines().constLast().contains(u"no service accepts the request"_s));
        start(Kind::sessionManager);
        QTRY_COMPARE(holds(), 1);
    }

    void withoutARequestAServiceThatStartsIsNotAsked()
    {
        startAndWaitForRequests(Kind::sessionManager);
        QCOMPARE(m_services.at(Kind::sessionManager)->wishes.size(), 0);
    }

    void anInhibitionGrantedTooLateIsReleased_data() { aServiceThatRestartsIsAskedAgain_data(); }

    void anInhibitionGrantedTooLateIsReleased()
    {
        QFETCH(Kind, kind);
        m_services.clear();
        start(kind);
        InhibitingService &service = *m_services.at(kind);
        service.hangs = true;
        makeInhibitor();
        m_inhibitor->keepAwake();
        QTRY_COMPARE(service.wishes.size(), 1);
        m_inhibitor->letSleep();
        service.answerHeld();
        QTRY_COMPARE(holds(), 0);
        // It is also released if the inhibitor is gone by then.
        service.hangs = true;
        const auto before = service.wishes.size();
        m_inhibitor->keepAwake();
        QTRY_VERIFY(service.wishes.size() > before);
        m_inhibitor.reset();
        service.answerHeld();
        QTRY_COMPARE(holds(), 0);
    }

    void inhibitingAndReleasingAreLogged()
    {
        m_inhibitor->keepAwake();
        // Wait for the log line, since the service counts the inhibition before its answer arrives.
        QTRY_COMPARE(m_logger->latestLines().size(), 1);
        m_inhibitor->letSleep();
        const QStringList lines = m_logger->latestLines();
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines.at(0).endsWith(u"automatic sleep prevented through=org.freedesktop.portal.Desktop"_s));
        QVERIFY(lines.at(1).endsWith(u"automatic sleep allowed again"_s));
    }

    void withoutBusesNothingHappens()
    {
        DesktopSleepInhibitor inhibitor(QDBusConnection(u"none"_s), QDBusConnection(u"neither"_s), *m_logger);
        inhibitor.keepAwake();
        inhibitor.letSleep();
        QCOMPARE(holds(), 0);
    }

private:
    static constexpr std::array allKinds{Kind::portal, Kind::sessionManager, Kind::powerManager,
                                         Kind::logind};

    void start(Kind kind)
    {
        m_services.erase(kind);
        m_services.emplace(kind, std::make_unique<InhibitingService>(*m_bus, kind));
    }

    /// Starts the service and waits until the inhibitor has noticed it and its requests have arrived.
    void startAndWaitForRequests(Kind kind)
    {
        const QDBusConnection bus(u"inhibitor"_s);
        const QString name = InhibitingService::nameOf(kind);
        const QDBusServiceWatcher watcher(name, bus, QDBusServiceWatcher::WatchForRegistration);
        // Wait until the bus has taken the subscriptions.
        waitForAnAnswer(bus, u"org.freedesktop.DBus"_s);
        const QSignalSpy comings(&watcher, &QDBusServiceWatcher::serviceRegistered);
        start(kind);
        QTRY_VERIFY(!comings.isEmpty());
        // The inhibitor may be notified after the watcher; then it asks one service after another.
        for (int round = 0; round <= static_cast<int>(allKinds.size()); ++round) {
            waitForAnAnswer(bus, name);
        }
    }

    /// Waits until everything sent on `bus` to `service` before has arrived.
    static void waitForAnAnswer(const QDBusConnection &bus, const QString &service)
    {
        const QDBusPendingCallWatcher call(
            bus.asyncCall(QDBusMessage::createMethodCall(service, u"/"_s, service, u"Nothing"_s)));
        QTRY_VERIFY(call.isFinished());
    }

    [[nodiscard]] int holdsOf(Kind kind) { return m_services.at(kind)->holds(); }

    /// One bus serves as session and system bus, since the service names differ. A new inhibitor has no
    /// knowledge of earlier services.
    void makeInhibitor()
    {
        m_inhibitor.reset();
        // A connection of its own: an earlier one may still announce services that started before.
        QDBusConnection::disconnectFromBus(u"inhibitor"_s);
        const QDBusConnection bus = QDBusConnection::connectToBus(m_bus->address(), u"inhibitor"_s);
        m_inhibitor = std::make_unique<DesktopSleepInhibitor>(bus, bus, *m_logger);
    }

    QTemporaryDir m_folder;
    std::unique_ptr<DebugLogService> m_logger;
    std::unique_ptr<PrivateBus> m_bus;
    std::map<Kind, std::unique_ptr<InhibitingService>> m_services;
    std::unique_ptr<DesktopSleepInhibitor> m_inhibitor;
};

QUILLET_TEST(DesktopSleepInhibitorTest, runTest<DesktopSleepInhibitorTest>);
#include "DesktopSleepInhibitorTest.moc"
