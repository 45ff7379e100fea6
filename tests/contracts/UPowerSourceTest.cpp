// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/UPowerSource.h"

#include "tests/adapters/MockService.h"
#include "tests/contracts/PowerSourceContract.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Uses a mock of UPower on a private system bus.
class UPowerSourceTest final : public PowerSourceContract {
    Q_OBJECT

protected:
    const PowerSource &source() override { return *m_source; }
    void setOnBattery(bool isOnBattery) override { set(isOnBattery); }

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>(QStringList{}, PrivateBus::Kind::system);
        QDBusConnection::connectToBus(m_bus->address(), u"control"_s);
        startUPower();
        set(false);
        m_source =
            std::make_unique<UPowerSource>(QDBusConnection::connectToBus(m_bus->address(), u"source"_s));
    }

    void cleanup()
    {
        m_source.reset();
        QDBusConnection::disconnectFromBus(u"source"_s);
        QDBusConnection::disconnectFromBus(u"control"_s);
        m_upower.reset();
        m_bus.reset();
    }

    void theInitialStateIsRead()
    {
        set(true);
        m_source = std::make_unique<UPowerSource>(QDBusConnection(u"source"_s));
        QTRY_VERIFY(m_source->isOnBattery());
    }

    void withoutUPowerItIsNotOnBattery()
    {
        set(true);
        QTRY_VERIFY(m_source->isOnBattery());
        m_upower.reset();
        QTRY_VERIFY(!m_source->isOnBattery());
        startUPower();
        set(true);
        QTRY_VERIFY(m_source->isOnBattery());
    }

    void withoutABusItIsNotOnBattery()
    {
        const UPowerSource source(QDBusConnection(u"none"_s));
        QVERIFY(!source.isOnBattery());
    }

private:
    static QDBusConnection control() { return QDBusConnection(u"control"_s); }

    void startUPower()
    {
        m_upower =
            std::make_unique<MockService>(*m_bus, u"--system"_s, QStringList{u"--template"_s, u"upower"_s});
        QTRY_VERIFY_WITH_TIMEOUT(
            control().interface()->isServiceRegistered(u"org.freedesktop.UPower"_s).value(), 20000);
    }

    static void set(bool isOnBattery)
    {
        auto call = QDBusMessage::createMethodCall(u"org.freedesktop.UPower"_s, u"/org/freedesktop/UPower"_s,
                                                   u"org.freedesktop.DBus.Mock"_s, u"UpdateProperties"_s);
        call << u"org.freedesktop.UPower"_s << QVariantMap{{u"OnBattery"_s, isOnBattery}};
        const QDBusMessage answer = control().call(call);
        QVERIFY2(answer.type() == QDBusMessage::ReplyMessage, qPrintable(answer.errorMessage()));
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<MockService> m_upower;
    std::unique_ptr<UPowerSource> m_source;
};

QUILLET_TEST(UPowerSourceTest, runTest<UPowerSourceTest>);
#include "UPowerSourceTest.moc"
