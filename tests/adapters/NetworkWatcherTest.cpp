// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/NetworkWatcher.h"

#include "tests/adapters/SystemServices.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// NetworkManager's values.
constexpr uint asleep = 10;
constexpr uint disconnected = 20;
constexpr uint connectedSite = 60;
constexpr uint connectedGlobal = 70;
constexpr uint connectivityUnknown = 0;
constexpr uint connectivityNone = 1;
constexpr uint connectivityPortal = 2;
constexpr uint connectivityLimited = 3;
constexpr uint connectivityFull = 4;

} // namespace

class NetworkWatcherTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_services = std::make_unique<SystemServices>(); }

    void cleanup()
    {
        m_watcher.reset();
        m_services.reset();
    }

    void anInitialNetworkIsNotReported()
    {
        m_services->startNetworkManager(connectedGlobal);
        watch();
        setManager(connectedGlobal, connectivityFull);
        QCOMPARE(m_times->size(), 0);
    }

    void aNetworkMissingAtTheStartIsReportedWhenItComes()
    {
        m_services->startNetworkManager(disconnected);
        watch();
        setManager(connectedGlobal, connectivityFull);
        QCOMPARE(m_times->size(), 1);
    }

    void aBurstOfPropertiesIsOneChange()
    {
        m_services->startNetworkManager(asleep);
        watch();
        for (const uint state : {disconnected, uint{40}, uint{50}, connectedSite, connectedGlobal}) {
            m_services->setNetworkManager(state, connectivityNone);
        }
        for (const uint connectivity : {connectivityLimited, connectivityFull, connectivityUnknown}) {
            m_services->setNetworkManager(connectedGlobal, connectivity);
        }
        m_services->settle();
        QCOMPARE(m_times->size(), 1);
    }

    void aNetworkWithoutInternetAccessIsNotUsable_data()
    {
        QTest::addColumn<uint>("state");
        QTest::addColumn<uint>("connectivity");
        QTest::newRow("captive portal") << connectedSite << connectivityPortal;
        QTest::newRow("captive portal, reported as global") << connectedGlobal << connectivityPortal;
        QTest::newRow("limited") << connectedSite << connectivityLimited;
        QTest::newRow("none") << connectedGlobal << connectivityNone;
        QTest::newRow("local") << 50U << connectivityFull;
    }

    void aNetworkWithoutInternetAccessIsNotUsable()
    {
        QFETCH(uint, state);
        QFETCH(uint, connectivity);
        m_services->startNetworkManager(disconnected);
        watch();
        setManager(state, connectivity);
        QCOMPARE(m_times->size(), 0);
        setManager(connectedGlobal, connectivityFull);
        QCOMPARE(m_times->size(), 1);
    }

    void aConnectionOfUnknownConnectivityIsUsable()
    {
        m_services->startNetworkManager(disconnected);
        watch();
        setManager(connectedGlobal, connectivityUnknown);
        QCOMPARE(m_times->size(), 1);
    }

    void withoutNetworkManagerThePortalIsUsed()
    {
        m_services->startPortal(true);
        watch();
        setPortal(false);
        QCOMPARE(m_times->size(), 0);
        setPortal(true);
        QCOMPARE(m_times->size(), 1);
        setPortal(true);
        QCOMPARE(m_times->size(), 1);
    }

    void withoutASystemBusThePortalIsUsed()
    {
        m_services->startPortal(false);
        watch(QDBusConnection(u"none"_s), m_services->sessionBus());
        setPortal(true);
        QCOMPARE(m_times->size(), 1);
    }

    void networkManagerOverridesThePortal()
    {
        m_services->startPortal(false);
        m_services->startNetworkManager(connectedGlobal);
        watch();
        setPortal(true);
        setPortal(false);
        setManager(connectedGlobal, connectivityFull);
        QCOMPARE(m_times->size(), 0);
    }

    void servicesThatStartLaterAreAsked()
    {
        watch();
        m_services->startPortal(false);
        m_services->settle();
        setPortal(true);
        QCOMPARE(m_times->size(), 1);
        m_services->startNetworkManager(disconnected);
        m_services->settle();
        setManager(connectedGlobal, connectivityFull);
        QCOMPARE(m_times->size(), 2);
    }

    void aRestartOfNetworkManagerIsNotReported()
    {
        m_services->startNetworkManager(connectedGlobal);
        watch();
        m_services->networkManager.reset();
        m_services->startNetworkManager(connectedGlobal);
        m_services->settle();
        QCOMPARE(m_times->size(), 0);
    }

    void aNetworkThatCameDuringARestartIsReported()
    {
        m_services->startNetworkManager(disconnected);
        watch();
        m_services->networkManager.reset();
        m_services->startNetworkManager(connectedGlobal);
        QTRY_COMPARE(m_times->size(), 1);
    }

    void thePortalReplacesANetworkManagerThatHangs()
    {
        m_services->startNetworkManager(connectedGlobal);
        m_services->startPortal(false);
        m_services->networkManager->suspend();
        QElapsedTimer timer;
        timer.start();
        make(m_services->systemBus(), m_services->sessionBus());
        QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
        // The portal is asked once NetworkManager's time limit has passed.
        QTRY_VERIFY_WITH_TIMEOUT(m_services->questionsToPortal() > 0, 10'000);
        m_services->settle();
        m_services->networkManager->resume();
        setManager(connectedGlobal, connectivityFull);
        QTRY_COMPARE(m_times->size(), 1);
    }

    void theLossOfTheBusesIsNotReported()
    {
        m_services->startNetworkManager(connectedGlobal);
        watch();
        m_services->systemDaemon.stop();
        QTRY_VERIFY(!m_services->systemBus().isConnected());
        m_services->sessionDaemon.stop();
        QTRY_VERIFY(!m_services->sessionBus().isConnected());
        QCOMPARE(m_times->size(), 0);
    }

    void withoutServicesNothingIsReported()
    {
        watch();
        QCOMPARE(m_times->size(), 0);
    }

private:
    void make(const QDBusConnection &systemBus, const QDBusConnection &sessionBus)
    {
        m_watcher = std::make_unique<NetworkWatcher>(systemBus, sessionBus);
        m_times = std::make_unique<QSignalSpy>(m_watcher.get(), &NetworkWatcher::cameBack);
    }

    void watch(const QDBusConnection &systemBus, const QDBusConnection &sessionBus)
    {
        make(systemBus, sessionBus);
        m_services->settle();
    }

    void watch() { watch(m_services->systemBus(), m_services->sessionBus()); }

    void setManager(uint state, uint connectivity)
    {
        m_services->setNetworkManager(state, connectivity);
        m_services->settle();
    }

    void setPortal(bool isAvailable)
    {
        m_services->setPortal(isAvailable);
        m_services->settle();
    }

    std::unique_ptr<SystemServices> m_services;
    std::unique_ptr<NetworkWatcher> m_watcher;
    std::unique_ptr<QSignalSpy> m_times;
};

QUILLET_TEST(NetworkWatcherTest, runTest<NetworkWatcherTest>);
#include "NetworkWatcherTest.moc"
