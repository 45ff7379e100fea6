// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <QString>

namespace corvane {

/// The named sounds of the system. Main thread only, and no call blocks it. Called by the sound player.
class SystemSounds {
public:
    virtual ~SystemSounds() = default;

    /// Looks the sound `name` up afresh, starts it, and answers whether playback started: false where there
    /// is no such sound, and where the sound server does not say within a second that it plays. Does not wait
    /// for the end of the sound; a second call does not cut the first sound off.
    virtual QCoro::Task<bool> play(QString name) = 0;

    /// The user's alert beep. Always available; never fails.
    virtual void beep() = 0;
};

} // namespace corvane
