// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

/// Plays the sound of a banner.
class SoundPlaying {
public:
    virtual ~SoundPlaying() = default;

    /// Plays the alert sound and returns at once; never fails. Main thread only; called by the banner
    /// presenter.
    virtual void playNotificationSound() const = 0;
};

} // namespace corvane
