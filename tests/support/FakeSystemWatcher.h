// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/SystemWatcher.h"
#include "Corvane/Utilities/Clock.h"

#include <QByteArray>

#include <chrono>
#include <utility>

namespace corvane {

/// A machine whose system events a test triggers. It fulfils the port's contract.
class FakeSystemWatcher final : public SystemWatcher {
    Q_OBJECT

public:
    using SystemWatcher::SystemWatcher;

    void sleepAndWake() { Q_EMIT woke(); }

    void setNetworkUsable(bool isUsable)
    {
        if (!std::exchange(m_isNetworkUsable, isUsable) && isUsable) {
            Q_EMIT networkCameBack();
        }
    }

    void setClockBy(Seconds change)
    {
        if (std::chrono::abs(change) > Seconds{0.1}) {
            Q_EMIT clockWasSet();
        }
    }

    void setZone(const QByteArray &zone)
    {
        if (std::exchange(m_zone, zone) != zone) {
            Q_EMIT timeZoneChanged();
        }
    }

private:
    bool m_isNetworkUsable = true;
    QByteArray m_zone = "Europe/Berlin";
};

} // namespace corvane
