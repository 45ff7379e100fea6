// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/LinuxSystemWatcher.h"

#include "tests/adapters/FakeWallClockAlarm.h"
#include "tests/adapters/SystemServices.h"
#include "tests/contracts/SystemWatcherContract.h"
#include "tests/support/TestProgram.h"

#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Mocks of the session manager and NetworkManager, a temporary time zone file, and a fake clock, so that no
/// test sets the machine's clock.
class LinuxSystemWatcherContractTest final : public SystemWatcherContract {
    Q_OBJECT

protected:
    void sleepAndWake() override
    {
        m_services->prepareForSleep(true);
        m_services->prepareForSleep(false);
    }

    void setNetworkUsable(bool isUsable) override
    {
        m_services->setNetworkManager(isUsable ? 70 : 20, isUsable ? 4 : 1);
        m_services->settle();
    }

    void setClockBy(Seconds change) override { m_alarm->set(change); }

    void setZone(const QByteArray &zone) override
    {
        const QString link = m_folder->filePath(u"localtime"_s);
        const QString newLink = link + u".new"_s;
        QFile::link(u"/usr/share/zoneinfo/"_s + QString::fromLatin1(zone), newLink);
        QCOMPARE(std::rename(QFile::encodeName(newLink).constData(), QFile::encodeName(link).constData()), 0);
    }

private Q_SLOTS:
    void init()
    {
        qunsetenv("TZ");
        m_folder = std::make_unique<QTemporaryDir>();
        setZone("Europe/Berlin");
        qputenv("TZ", ":" + QFile::encodeName(m_folder->filePath(u"localtime"_s)));
        m_services = std::make_unique<SystemServices>();
        m_services->startSessionManager();
        m_services->startNetworkManager(70);
        auto alarm = std::make_unique<FakeWallClockAlarm>();
        m_alarm = alarm.get();
        m_watcher =
            std::make_unique<LinuxSystemWatcher>(m_services->systemBus(), m_services->sessionBus(),
                                                 m_folder->filePath(u"localtime"_s), std::move(alarm));
        watch(*m_watcher);
        m_services->settle();
    }

    void cleanup()
    {
        m_watcher.reset();
        m_services.reset();
        qputenv("TZ", "UTC");
    }

    void clockAndZoneChangesAreReportedWithoutBuses()
    {
        auto alarm = std::make_unique<FakeWallClockAlarm>();
        m_alarm = alarm.get();
        const LinuxSystemWatcher watcher(QDBusConnection(u"none"_s), QDBusConnection(u"neither"_s),
                                         m_folder->filePath(u"localtime"_s), std::move(alarm));
        watch(watcher);
        setClockBy(Seconds{60});
        setZone("America/Havana");
        QTRY_COMPARE(told(), (QList<qsizetype>{0, 0, 1, 1}));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SystemServices> m_services;
    FakeWallClockAlarm *m_alarm = nullptr;
    std::unique_ptr<LinuxSystemWatcher> m_watcher;
};

QUILLET_TEST(LinuxSystemWatcherContractTest, runTest<LinuxSystemWatcherContractTest>);
#include "LinuxSystemWatcherContractTest.moc"
