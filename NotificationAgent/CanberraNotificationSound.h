// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/NotificationSound.h"

#include <atomic>
#include <memory>

namespace corvane {

/// Plays the sound through libcanberra. The library blocks its caller for half a minute if the sound server
/// hangs, so it runs on a thread that lives as long as the sound. While one sound plays or hangs, further
/// ones are skipped.
class CanberraNotificationSound final : public NotificationSound {
public:
    /// The event of the desktop's sound theme.
    static constexpr const char *eventName = "message-new-instant";

    void play() override;

private:
    /// Shared with the thread, which may outlive this object.
    std::shared_ptr<std::atomic<bool>> m_isPlaying = std::make_shared<std::atomic<bool>>(false);
};

} // namespace corvane
