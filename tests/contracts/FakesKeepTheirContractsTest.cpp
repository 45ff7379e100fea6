// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/contracts/DesktopAppearanceContract.h"
#include "tests/contracts/DirectNotificationsContract.h"
#include "tests/contracts/LoginItemContract.h"
#include "tests/contracts/PowerSourceContract.h"
#include "tests/contracts/SleepInhibitorContract.h"
#include "tests/contracts/StatusItemContract.h"
#include "tests/contracts/SystemSoundsContract.h"
#include "tests/contracts/SystemWatcherContract.h"
#include "tests/contracts/UserNotificationCenterContract.h"
#include "tests/contracts/WindowSystemContract.h"
#include "tests/support/FakeDesktopAppearance.h"
#include "tests/support/FakeDirectNotifications.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/FakePowerSource.h"
#include "tests/support/FakeSleepInhibitor.h"
#include "tests/support/FakeStatusItem.h"
#include "tests/support/FakeSystemSounds.h"
#include "tests/support/FakeSystemWatcher.h"
#include "tests/support/FakeUserNotificationCenter.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <memory>

using namespace corvane;

class FakeSystemSoundsTest final : public SystemSoundsContract {
    Q_OBJECT

protected:
    SystemSounds &sounds() override { return *m_sounds; }
    void holdAnswers() override { m_sounds->hold(); }

private Q_SLOTS:
    void init()
    {
        m_sounds = std::make_unique<FakeSystemSounds>();
        m_sounds->available.append(minute());
    }

    void aHeldAnswerArrivesOnRelease()
    {
        m_sounds->hold();
        auto task = m_sounds->play(QStringLiteral("Glass"));
        QVERIFY(!task.isReady());
        QCOMPARE(m_sounds->waitingCount(), std::size_t{1});
        m_sounds->release(false);
        QVERIFY(task.isReady());
        QVERIFY(!QCoro::waitFor(task));
    }

private:
    std::unique_ptr<FakeSystemSounds> m_sounds;
};

class FakeLoginItemTest final : public LoginItemContract {
    Q_OBJECT

protected:
    LoginItem &item() override { return m_item; }
    bool startsAtLogin() override { return m_item.isRegistered; }
    void makeRegisteringImpossible() override { m_item.failure = Failure{QStringLiteral("No room.")}; }

private Q_SLOTS:
    void init() { m_item = {}; }

private:
    FakeLoginItem m_item;
};

class FakeStatusItemTest final : public StatusItemContract {
    Q_OBJECT

protected:
    StatusItem &item() override { return *m_item; }
    QStringList published() override { return m_item->published; }
    QStringList toolTip() override
    {
        QStringList lines{m_item->published.value(m_item->published.size() - 1)};
        return m_item->notice.isEmpty() ? lines : lines << m_item->notice;
    }
    void click(const QString &token) override { m_item->click(Point{12, 34}, token); }
    std::optional<Point> placeOfClick() override { return Point{12, 34}; }
    void setHostThere(bool isThere) override { m_item->setShown(isThere); }
    void openMenu() override { m_item->openMenu(); }
    void chooseLine(int index) override { m_item->choose(static_cast<std::size_t>(index)); }

private Q_SLOTS:
    void init() { m_item = std::make_unique<FakeStatusItem>(); }

private:
    std::unique_ptr<FakeStatusItem> m_item;
};

class FakeSystemWatcherTest final : public SystemWatcherContract {
    Q_OBJECT

protected:
    void sleepAndWake() override { m_watcher->sleepAndWake(); }
    void setNetworkUsable(bool isUsable) override { m_watcher->setNetworkUsable(isUsable); }
    void setClockBy(Seconds change) override { m_watcher->setClockBy(change); }
    void setZone(const QByteArray &zone) override { m_watcher->setZone(zone); }

private Q_SLOTS:
    void init()
    {
        m_watcher = std::make_unique<FakeSystemWatcher>();
        watch(*m_watcher);
    }

private:
    std::unique_ptr<FakeSystemWatcher> m_watcher;
};

class FakeDirectNotificationsTest final : public DirectNotificationsContract {
    Q_OBJECT

protected:
    DirectNotifications &notifications() override { return m_notifications; }
    void takeServerAway() override { m_notifications.isThere = false; }
    QStringList read() override { return m_notifications.shown; }

private Q_SLOTS:
    void init() { m_notifications = {}; }

private:
    FakeDirectNotifications m_notifications;
};

class FakeSleepInhibitorTest final : public SleepInhibitorContract {
    Q_OBJECT

protected:
    SleepInhibitor &inhibitor() override { return m_inhibitor; }
    int holds() override { return m_inhibitor.isHeld ? 1 : 0; }

private Q_SLOTS:
    void init() { m_inhibitor = {}; }

private:
    FakeSleepInhibitor m_inhibitor;
};

class FakePowerSourceTest final : public PowerSourceContract {
    Q_OBJECT

protected:
    const PowerSource &source() override { return *m_source; }
    void setOnBattery(bool isOnBattery) override { m_source->setOnBattery(isOnBattery); }

private Q_SLOTS:
    void init() { m_source = std::make_unique<FakePowerSource>(); }

private:
    std::unique_ptr<FakePowerSource> m_source;
};

class FakeDesktopAppearanceTest final : public DesktopAppearanceContract {
    Q_OBJECT

protected:
    DesktopAppearance &desktop() override { return *m_desktop; }
    void say(const Appearance &appearance) override { m_desktop->set(appearance); }

private Q_SLOTS:
    void init() { m_desktop = std::make_unique<FakeDesktopAppearance>(); }

private:
    std::unique_ptr<FakeDesktopAppearance> m_desktop;
};

class FakeWindowSystemTest final : public WindowSystemContract {
    Q_OBJECT

protected:
    WindowSystem &windowSystem() override { return *m_windowSystem; }
    void setComposited(bool isComposited) override { m_windowSystem->composited = isComposited; }
    WindowId makeWindow() override { return ++m_lastWindow; }
    void show(WindowId) override {}
    void destroy(WindowId) override {}
    bool isInTaskBar(WindowId window) override { return !m_windowSystem->keptOut.contains(window); }
    bool hasFocus(WindowId window) override
    {
        return !m_windowSystem->broughtToFront.isEmpty() &&
               m_windowSystem->broughtToFront.constLast() == window;
    }
    void giveFocusToAnotherProgram() override { m_windowSystem->broughtToFront.clear(); }
    void pressElsewhere() override { m_windowSystem->pressElsewhere(); }
    void pressOn(WindowId) override {}

private Q_SLOTS:
    void init() { m_windowSystem = std::make_unique<FakeWindowSystem>(); }

private:
    std::unique_ptr<FakeWindowSystem> m_windowSystem;
    WindowId m_lastWindow = 0;
};

class FakeUserNotificationCenterTest final : public UserNotificationCenterContract {
    Q_OBJECT

protected:
    UserNotificationCenter &center() override { return *m_center; }
    void passUntil(Date moment) override { m_clock->advanceTo(moment); }
    void setGranted(bool isGranted) override { m_center->authorization = isGranted; }

private Q_SLOTS:
    void init()
    {
        m_clock = std::make_unique<ManualClock>(at("09:00:00"));
        m_center = std::make_unique<FakeUserNotificationCenter>();
    }

    void cleanup()
    {
        m_center.reset();
        m_clock.reset();
    }

    void aHeldCallIsExecutedOnRelease()
    {
        m_center->hold();
        auto task = m_center->pendingNotificationRequests();
        QVERIFY(!task.isReady());
        QCOMPARE(m_center->waitingCount(), std::size_t{1});
        m_center->releaseOne();
        QVERIFY(task.isReady());
    }

private:
    std::unique_ptr<ManualClock> m_clock;
    std::unique_ptr<FakeUserNotificationCenter> m_center;
};

QUILLET_TEST(FakeDesktopAppearanceTest, runTest<FakeDesktopAppearanceTest>);
QUILLET_TEST(FakeSystemSoundsTest, runTest<FakeSystemSoundsTest>);
QUILLET_TEST(FakeLoginItemTest, runTest<FakeLoginItemTest>);
QUILLET_TEST(FakeStatusItemTest, runTest<FakeStatusItemTest>);
QUILLET_TEST(FakeSystemWatcherTest, runTest<FakeSystemWatcherTest>);
QUILLET_TEST(FakeDirectNotificationsTest, runTest<FakeDirectNotificationsTest>);
QUILLET_TEST(FakeSleepInhibitorTest, runTest<FakeSleepInhibitorTest>);
QUILLET_TEST(FakePowerSourceTest, runTest<FakePowerSourceTest>);
QUILLET_TEST(FakeWindowSystemTest, runTest<FakeWindowSystemTest>);
QUILLET_TEST(FakeUserNotificationCenterTest, runTest<FakeUserNotificationCenterTest>);

#include "FakesKeepTheirContractsTest.moc"
