// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

namespace corvane {

/// Reports events of the machine that a running program must know about. Created by the application's entry
/// point; main thread only. Driven by the system's signals; never polls.
///
/// Each signal is emitted once per change, from the event loop, and not for the state at construction. If the
/// system does not report a change, its signal is never emitted, so clients must not rely on it.
class SystemWatcher : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// The machine has woken from sleep. The network is rarely back by then.
    void woke();

    /// A usable network is back. One that requires a login first, or leads nowhere, is not usable.
    void networkCameBack();

    /// The wall clock was set, forward or back, by more than a tenth of a second. Gradual adjustment does not
    /// count, and neither does a clock that continues after sleep.
    void clockWasSet();

    /// The machine's time zone has changed. Never emitted if the environment sets the program's time zone.
    void timeZoneChanged();
};

} // namespace corvane
