// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

#include <QString>

namespace corvane {

/// The system's named sounds. Main thread only; no call blocks. Called by the sound player.
class SystemSounds {
public:
    virtual ~SystemSounds() = default;

    /// Looks up the sound `name` at each call, starts it and returns whether playback started: false if there
    /// is no such sound, or if the sound server does not confirm playback within a second. Does not wait for
    /// the end of the sound; a second call does not cut off the first sound.
    virtual QCoro::Task<bool> play(QString name) = 0;

    /// Plays the user's alert beep. Always available; never fails.
    virtual void beep() = 0;
};

} // namespace corvane
