// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/PortalAppearance.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr auto service = "org.freedesktop.portal.Desktop"_L1;
constexpr auto path = "/org/freedesktop/portal/desktop"_L1;
constexpr auto interface = "org.freedesktop.portal.Settings"_L1;
constexpr int timeout = 5000; // milliseconds

constexpr auto appearanceGroup = "org.freedesktop.appearance"_L1;
constexpr auto schemeKey = "color-scheme"_L1;
constexpr auto accentKey = "accent-color"_L1;
constexpr auto motionKey = "reduced-motion"_L1;
constexpr auto gnomeGroup = "org.gnome.desktop.interface"_L1;
constexpr auto gnomeMotionKey = "enable-animations"_L1;

/// The plain value: an answer is wrapped once or, by older portals, twice.
QVariant unwrapped(QVariant value)
{
    for (int layer = 0; layer < 2 && value.canConvert<QDBusVariant>(); ++layer) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

Appearance::Scheme scheme(const QVariant &value)
{
    switch (value.toUInt()) {
    case 1:
        return Appearance::Scheme::dark;
    case 2:
        return Appearance::Scheme::light;
    default:
        return Appearance::Scheme::unsaid;
    }
}

/// The accent; none if a component is outside 0 to 1, which means that no accent is set.
std::optional<Appearance::Accent> accent(const QVariant &value)
{
    if (!value.canConvert<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != u"(ddd)"_s) {
        return std::nullopt;
    }
    Appearance::Accent accent;
    argument.beginStructure();
    argument >> accent.red >> accent.green >> accent.blue;
    argument.endStructure();
    for (const double share : {accent.red, accent.green, accent.blue}) {
        if (!(share >= 0 && share <= 1)) {
            return std::nullopt;
        }
    }
    return accent;
}

} // namespace

PortalAppearance::PortalAppearance(const QDBusConnection &sessionBus, QObject *parent)
    : DesktopAppearance(parent)
    , m_bus(sessionBus)
    , m_watcher(service, sessionBus)
{
    // The toolkit does not connect a slot whose argument types have no name yet, and does not name this one.
    qRegisterMetaType<QDBusVariant>();
    m_bus.connect({}, path, interface, u"SettingChanged"_s, this,
                  SLOT(settingChanged(QString, QString, QDBusVariant)));
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &PortalAppearance::readAll);
    readAll();
}

void PortalAppearance::readAll()
{
    for (const auto &key : {schemeKey, accentKey, motionKey}) {
        read(appearanceGroup, key);
    }
    read(gnomeGroup, gnomeMotionKey);
}

void PortalAppearance::read(const QString &group, const QString &key)
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, u"Read"_s);
    call.setArguments({group, key});
    call.setAutoStartService(false);
    auto *answer = new QDBusPendingCallWatcher(m_bus.asyncCall(call, timeout), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this, group, key, answer, heard = m_heard.value(key)] {
                answer->deleteLater();
                const QDBusPendingReply<QDBusVariant> reply = *answer;
                // A portal that does not know the key answers with an error. A change signalled in the
                // meantime may be newer than the answer.
                if (reply.isValid() && m_heard.value(key) == heard) {
                    take(group, key, unwrapped(reply.value().variant()));
                }
            });
}

void PortalAppearance::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    ++m_heard[key];
    take(group, key, unwrapped(value.variant()));
}

void PortalAppearance::take(const QString &group, const QString &key, const QVariant &value)
{
    if (group == appearanceGroup && key == schemeKey) {
        m_read.scheme = scheme(value);
    } else if (group == appearanceGroup && key == accentKey) {
        m_read.accent = accent(value);
    } else if (group == appearanceGroup && key == motionKey) {
        m_portalReducesMotion = value.toUInt() == 1;
    } else if (group == gnomeGroup && key == gnomeMotionKey) {
        m_desktopReducesMotion = !value.toBool();
    } else {
        return;
    }
    publish();
}

void PortalAppearance::publish()
{
    Appearance appearance = m_read;
    appearance.reducesMotion =
        m_portalReducesMotion.value_or(false) || m_desktopReducesMotion.value_or(false);
    if (appearance != m_told) {
        m_told = appearance;
        Q_EMIT changed();
    }
}

} // namespace corvane
