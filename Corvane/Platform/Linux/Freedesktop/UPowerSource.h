// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/PowerSource.h"

#include <QDBusConnection>

class QDBusMessage;

namespace corvane {

/// The machine's power as UPower on the system bus tells of it. UPower is never started. Main thread only.
class UPowerSource final : public PowerSource {
    Q_OBJECT

public:
    /// On a bus that is not there nothing is told.
    explicit UPowerSource(QDBusConnection systemBus, QObject *parent = nullptr);

    [[nodiscard]] bool isOnBattery() const override { return m_isOnBattery; }

private:
    void handleAnswer(const QDBusMessage &answer);

    QDBusConnection m_bus;
    bool m_isOnBattery = false;
    int m_question = 0; ///< an answer to an earlier one is out of date

private Q_SLOTS:
    /// Asks anew.
    void update();
};

} // namespace corvane
