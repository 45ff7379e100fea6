// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/PrivateBus.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QList>
#include <QSet>
#include <QString>
#include <QVariantList>

#include <utility>

namespace corvane {

/// A fake of a desktop service that inhibits sleep. It records the requests and counts the inhibitions held.
class InhibitingService final : public QDBusVirtualObject {
    Q_OBJECT

public:
    enum class Kind { portal, sessionManager, powerManager, logind };

    InhibitingService(const PrivateBus &bus, Kind kind)
        : m_kind(kind)
        , m_bus(QDBusConnection::connectToBus(bus.address(), connectionName()))
    {
        m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        m_bus.registerService(name());
    }
    ~InhibitingService() override
    {
        for (const int pipe : m_pipes) {
            ::close(pipe);
        }
        QDBusConnection::disconnectFromBus(connectionName());
    }
    InhibitingService(const InhibitingService &) = delete;
    InhibitingService &operator=(const InhibitingService &) = delete;

    /// When set, it refuses: like a portal whose desktop cannot inhibit, or a service without the interface.
    bool refuses = false;
    /// When set, it hangs: requests wait for answerHeld().
    bool hangs = false;

    /// The arguments of each request, in order.
    QList<QVariantList> wishes;

    [[nodiscard]] int holds() const
    {
        int open = static_cast<int>(m_held.size());
        for (const int pipe : m_pipes) {
            pollfd end{.fd = pipe, .events = 0, .revents = 0};
            open += ::poll(&end, 1, 0) == 1 && (end.revents & POLLHUP) != 0 ? 0 : 1;
        }
        return open;
    }

    void answerHeld()
    {
        hangs = false;
        for (const QDBusMessage &wish : std::exchange(m_waiting, {})) {
            answer(wish);
        }
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        const QString member = message.member();
        if (member == QLatin1String("Inhibit") && message.interface() == interface()) {
            wishes.append(message.arguments());
            if (hangs) {
                message.setDelayedReply(true);
                m_waiting.append(message);
            } else {
                answer(message);
            }
            return true;
        }
        if (member == QLatin1String("Close")) {
            return m_held.remove(message.path());
        }
        if (member.compare(QLatin1String("Uninhibit"), Qt::CaseInsensitive) == 0) {
            return m_held.remove(message.arguments().value(0).toString());
        }
        return false;
    }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }

    [[nodiscard]] static QString nameOf(Kind kind)
    {
        switch (kind) {
        case Kind::portal:
            return QStringLiteral("org.freedesktop.portal.Desktop");
        case Kind::sessionManager:
            return QStringLiteral("org.gnome.SessionManager");
        case Kind::powerManager:
            return QStringLiteral("org.freedesktop.PowerManagement");
        case Kind::logind:
            return QStringLiteral("org.freedesktop.login1");
        }
        Q_UNREACHABLE();
    }

private:
    [[nodiscard]] QString name() const { return nameOf(m_kind); }
    [[nodiscard]] QString connectionName() const { return QStringLiteral("service ") + name(); }

    [[nodiscard]] QString interface() const
    {
        switch (m_kind) {
        case Kind::portal:
            return QStringLiteral("org.freedesktop.portal.Inhibit");
        case Kind::sessionManager:
            return name();
        case Kind::powerManager:
            return QStringLiteral("org.freedesktop.PowerManagement.Inhibit");
        case Kind::logind:
            return QStringLiteral("org.freedesktop.login1.Manager");
        }
        Q_UNREACHABLE();
    }

    void answer(const QDBusMessage &wish)
    {
        if (refuses && m_kind != Kind::portal) {
            m_bus.send(wish.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("not here")));
            return;
        }
        const QString number = QString::number(++m_last);
        switch (m_kind) {
        case Kind::portal: {
            const QString path = QStringLiteral("/org/freedesktop/portal/desktop/request/1_2/") + number;
            m_held.insert(path);
            m_bus.send(wish.createReply(QVariant::fromValue(QDBusObjectPath(path))));
            if (refuses) {
                m_held.remove(path);
            }
            auto response = QDBusMessage::createTargetedSignal(
                wish.service(), path, QStringLiteral("org.freedesktop.portal.Request"),
                QStringLiteral("Response"));
            m_bus.send(response << (refuses ? 2U : 0U) << QVariantMap());
            return;
        }
        case Kind::sessionManager:
        case Kind::powerManager:
            m_held.insert(number);
            m_bus.send(wish.createReply(m_last));
            return;
        case Kind::logind: {
            int ends[2];
            if (::pipe2(ends, O_CLOEXEC) == 0) {
                m_pipes.append(ends[0]);
                m_bus.send(wish.createReply(QVariant::fromValue(QDBusUnixFileDescriptor(ends[1]))));
                ::close(ends[1]);
            }
            return;
        }
        }
    }

    Kind m_kind;
    QDBusConnection m_bus;
    uint m_last = 0;
    QSet<QString> m_held;
    QList<int> m_pipes; ///< the read ends of logind's locks
    QList<QDBusMessage> m_waiting;
};

} // namespace corvane
