// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QObject>

class QDBusMessage;

namespace corvane {

/// Reports that the machine has woken, as the session manager on the system bus announces it. Main thread
/// only.
class SleepWatcher final : public QObject {
    Q_OBJECT

public:
    /// Without a bus nothing is reported.
    explicit SleepWatcher(QDBusConnection systemBus, QObject *parent = nullptr);

Q_SIGNALS:
    void woke();

private Q_SLOTS:
    void prepareForSleep(const QDBusMessage &message);
};

} // namespace corvane
