// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

namespace corvane {

/// Tells what happens to the machine that a running program must know of. Made by the application's entry;
/// main thread only. It is told by the system and asks nothing again and again.
///
/// Each signal comes once per change, from the event loop, and none for what was so when the watcher was
/// made. Where the system does not tell of a change, its signal never comes: nobody may rely on one.
class SystemWatcher : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// The machine has woken from sleep. The network is seldom back by then.
    void woke();

    /// There was no usable network, and now there is one. A network that asks for a login first, or that
    /// leads nowhere, is not usable.
    void networkCameBack();

    /// The wall clock was set, forward or back, by more than a tenth of a second. A clock that is merely
    /// slowed down or hurried to the right time is not set, and neither is one that goes on after a sleep.
    void clockWasSet();

    /// The machine's time zone has become another one. Never told where the environment gives the program a
    /// zone of its own.
    void timeZoneChanged();
};

} // namespace corvane
