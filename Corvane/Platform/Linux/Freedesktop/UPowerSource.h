// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/PowerSource.h"

#include <QDBusConnection>

class QDBusMessage;

namespace corvane {

/// The machine's power source, as UPower on the system bus reports it. Never starts UPower. Main thread only.
class UPowerSource final : public PowerSource {
    Q_OBJECT

public:
    /// Without a bus nothing is reported.
    explicit UPowerSource(QDBusConnection systemBus, QObject *parent = nullptr);

    [[nodiscard]] bool isOnBattery() const override { return m_isOnBattery; }

private:
    void handleAnswer(const QDBusMessage &answer);

    QDBusConnection m_bus;
    bool m_isOnBattery = false;
    int m_latestQuestion = 0; ///< counts questions; answers to earlier ones are ignored

private Q_SLOTS:
    /// Asks again.
    void update();
};

} // namespace corvane
