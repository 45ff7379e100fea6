// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SoundPlaying.h"
#include "Corvane/Notifications/SystemSounds.h"
#include "Corvane/Utilities/DebugLogService.h"

namespace corvane {

/// Plays the system sound "Glass", or the alert beep if that fails, so that the teacher hears something
/// either way. Stateless; two calls in quick succession play twice.
class SystemSoundPlayer final : public SoundPlaying {
public:
    /// Both are borrowed.
    SystemSoundPlayer(DebugLogService &logger, SystemSounds &sounds) : m_logger(&logger), m_sounds(&sounds) {}

    void playNotificationSound() const override;

private:
    DebugLogService *m_logger;
    SystemSounds *m_sounds;
};

} // namespace corvane
