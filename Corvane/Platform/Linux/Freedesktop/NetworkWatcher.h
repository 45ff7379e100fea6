// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <optional>

class QDBusMessage;

namespace corvane {

/// Tells when a usable network is back. NetworkManager on the system bus is asked, and where it does not
/// answer the desktop's portal on the session bus: at the start, and whenever one of them says that something
/// changed, came up or left. What was known before stands while nobody answers. Neither is ever started.
/// Main thread only.
class NetworkWatcher final : public QObject {
    Q_OBJECT

public:
    /// A bus that is not there is a bus without services.
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
    std::optional<bool> m_isUsable; ///< none until somebody has answered
    int m_question = 0;             ///< an answer to an earlier one is out of date

private Q_SLOTS:
    /// Asks anew.
    void update();
};

} // namespace corvane
