// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/PortalAppearance.h"

#include "tests/contracts/DesktopAppearanceContract.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <QMap>

#include <functional>
#include <memory>
#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr auto portalService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto portalPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto portalInterface = "org.freedesktop.portal.Settings"_L1;
constexpr auto group = "org.freedesktop.appearance"_L1;
constexpr auto gnome = "org.gnome.desktop.interface"_L1;

/// A colour as the portal sends it.
struct Triple {
    double red = -1;
    double green = -1;
    double blue = -1;
};

QDBusArgument &operator<<(QDBusArgument &argument, const Triple &triple)
{
    argument.beginStructure();
    argument << triple.red << triple.green << triple.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Triple &triple)
{
    argument.beginStructure();
    argument >> triple.red >> triple.green >> triple.blue;
    argument.endStructure();
    return argument;
}

/// A settings portal on its own bus connection.
class MockPortal final : public QDBusVirtualObject {
public:
    explicit MockPortal(QDBusConnection bus) : m_bus(std::move(bus))
    {
        m_bus.registerVirtualObject(portalPath, this);
    }
    ~MockPortal() override { m_bus.unregisterObject(portalPath); }

    void appear() { QVERIFY(m_bus.registerService(portalService)); }

    void set(const QString &group, const QString &key, const QVariant &value)
    {
        m_values[{group, key}] = value;
        auto signal = QDBusMessage::createSignal(portalPath, portalInterface, u"SettingChanged"_s);
        signal.setArguments({group, key, QVariant::fromValue(QDBusVariant(value))});
        m_bus.send(signal);
    }

    /// Sets a function that is called once, on the first question, which is still answered with the value
    /// from before the call.
    void beforeFirstAnswer(std::function<void()> happens) { m_happens = std::move(happens); }

    /// The number of questions so far.
    [[nodiscard]] int questions() const { return m_questions; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.interface() != portalInterface || message.member() != "Read"_L1) {
            return false;
        }
        ++m_questions;
        const auto values = m_values;
        if (const auto happens = std::exchange(m_happens, nullptr)) {
            happens();
        }
        const auto value =
            values.constFind({message.arguments().at(0).toString(), message.arguments().at(1).toString()});
        if (value == values.constEnd()) {
            return connection.send(message.createErrorReply(u"org.freedesktop.portal.Error.NotFound"_s,
                                                            u"Requested setting not found"_s));
        }
        // Portals wrap the answer to this call in two variants.
        const QDBusVariant inner(*value);
        return connection.send(
            message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
    }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }

private:
    QDBusConnection m_bus;
    int m_questions = 0;
    std::function<void()> m_happens;
    QMap<std::pair<QString, QString>, QVariant> m_values;
};

} // namespace

Q_DECLARE_METATYPE(Triple)

class PortalAppearanceContractTest final : public DesktopAppearanceContract {
    Q_OBJECT

protected:
    DesktopAppearance &desktop() override { return *m_appearance; }

    void say(const Appearance &appearance) override
    {
        const uint scheme = appearance.scheme == Scheme::dark    ? 1
                            : appearance.scheme == Scheme::light ? 2
                                                                 : 0;
        m_portal->set(group, u"color-scheme"_s, scheme);
        Triple accent;
        if (appearance.accent) {
            accent = {appearance.accent->red, appearance.accent->green, appearance.accent->blue};
        }
        m_portal->set(group, u"accent-color"_s, QVariant::fromValue(accent));
        m_portal->set(group, u"reduced-motion"_s, appearance.reducesMotion ? 1U : 0U);
    }

private Q_SLOTS:
    void initTestCase() { qDBusRegisterMetaType<Triple>(); }

    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        m_portal = std::make_unique<MockPortal>(QDBusConnection::connectToBus(m_bus->address(), u"portal"_s));
        m_portal->appear();
        makeAppearance();
        QTRY_COMPARE_WITH_TIMEOUT(m_portal->questions(), 4, timeout); // a running portal is asked at once
    }

    void cleanup()
    {
        m_appearance.reset();
        m_portal.reset();
        QDBusConnection::disconnectFromBus(u"portal"_s);
        QDBusConnection::disconnectFromBus(u"program"_s);
        m_bus.reset();
    }

    /// Runs in a program of its own, because tests before it register types with the toolkit.
    void theFirstAppearanceOfAProgramHearsChanges()
    {
        m_portal->set(group, u"color-scheme"_s, 1U);
        QTRY_COMPARE_WITH_TIMEOUT(desktop().appearance().scheme, Scheme::dark, timeout);
    }

    void thePortalsSettingsAreReadAtTheStart()
    {
        m_appearance.reset();
        say({.scheme = Scheme::dark, .accent = Appearance::Accent{1, 0, 0}, .reducesMotion = true});
        makeAppearance();
        QTRY_COMPARE_WITH_TIMEOUT(desktop().appearance(),
                                  (Appearance{.scheme = Scheme::dark,
                                              .accent = Appearance::Accent{1, 0, 0},
                                              .reducesMotion = true}),
                                  timeout);
    }

    void aChangeDuringTheFirstReadOverridesItsAnswer()
    {
        m_appearance.reset();
        say({.scheme = Scheme::light});
        m_portal->beforeFirstAnswer([this] { say({.scheme = Scheme::dark}); });
        makeAppearance();
        QTRY_COMPARE_WITH_TIMEOUT(desktop().appearance().scheme, Scheme::dark, timeout);
        const int asked = m_portal->questions();
        QVERIFY(asked > 0);
        m_portal->set(gnome, u"enable-animations"_s, false); // arrives after all answers
        QTRY_VERIFY_WITH_TIMEOUT(desktop().appearance().reducesMotion, timeout);
        QCOMPARE(desktop().appearance().scheme, Scheme::dark);
    }

    void aPortalThatStartsLaterIsRead()
    {
        m_appearance.reset();
        QDBusConnection(u"portal"_s).unregisterService(portalService);
        m_portal->set(group, u"color-scheme"_s, 1U); // nobody listens yet
        makeAppearance();
        m_portal->appear();
        QTRY_COMPARE_WITH_TIMEOUT(desktop().appearance().scheme, Scheme::dark, timeout);
    }

    void gnomesSwitchForAnimationsIsObeyed()
    {
        m_portal->set(gnome, u"enable-animations"_s, false);
        QTRY_VERIFY_WITH_TIMEOUT(desktop().appearance().reducesMotion, timeout);
        m_portal->set(gnome, u"enable-animations"_s, true);
        QTRY_VERIFY_WITH_TIMEOUT(!desktop().appearance().reducesMotion, timeout);
    }

    void invalidValuesAreIgnored()
    {
        m_portal->set(group, u"accent-color"_s, u"red"_s);
        m_portal->set(group, u"accent-color"_s, QVariant::fromValue(Triple{2, 0, 0}));
        m_portal->set(group, u"color-scheme"_s, 77U);
        m_portal->set(group, u"contrast"_s, 1U);
        m_portal->set(gnome, u"enable-animations"_s, false);
        QTRY_VERIFY_WITH_TIMEOUT(desktop().appearance().reducesMotion, timeout); // all messages have arrived
        QCOMPARE(desktop().appearance(), (Appearance{.reducesMotion = true}));
    }

private:
    void makeAppearance()
    {
        m_appearance =
            std::make_unique<PortalAppearance>(QDBusConnection::connectToBus(m_bus->address(), u"program"_s));
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<MockPortal> m_portal;
    std::unique_ptr<PortalAppearance> m_appearance;
};

QUILLET_TEST(PortalAppearanceContractTest, runTest<PortalAppearanceContractTest>);

#include "PortalAppearanceContractTest.moc"
