// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <optional>

class QDBusMessage;

namespace corvane {

/// Reports when a usable network is back. Asks NetworkManager on the system bus or, if it does not answer,
/// the desktop's portal on the session bus: at the start, and whenever one of them reports a change, appears
/// or leaves. While neither answers, the last known state stands. Starts neither. Main thread only.
class NetworkWatcher final : public QObject {
    Q_OBJECT

public:
    /// A bus without a connection has no services.
    NetworkWatcher(QDBusConnection systemBus, QDBusConnection sessionBus, QObject *parent = nullptr);

Q_SIGNALS:
    void cameBack();

private:
    void watch(QDBusConnection &bus, const QString &service);
    void ask(const QDBusConnection &bus, const QDBusMessage &question,
             std::function<std::optional<bool>(const QDBusMessage &)> isUsable,
             std::function<void()> otherwise);
    void askManager();
    void askPortal();
    void setUsable(bool isUsable);

    QDBusConnection m_systemBus;
    QDBusConnection m_sessionBus;
    std::optional<bool> m_isUsable; ///< none until there has been an answer
    int m_latestQuestion = 0;       ///< counts questions; answers to earlier ones are ignored

private Q_SLOTS:
    /// Asks again.
    void update();
};

} // namespace corvane
