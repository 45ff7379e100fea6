// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/NotificationSound.h"

#include <atomic>
#include <memory>

namespace corvane {

/// The sound through libcanberra. That library blocks its caller for half a minute when the sound server
/// hangs, so it is called on a thread that lives as long as the sound; while one plays, or is stuck, a
/// further one is left out.
class CanberraNotificationSound final : public NotificationSound {
public:
    /// The event of the desktop's sound theme.
    static constexpr const char *eventName = "message-new-instant";

    void play() override;

private:
    /// Shared with the thread, which may outlive this.
    std::shared_ptr<std::atomic<bool>> m_isPlaying = std::make_shared<std::atomic<bool>>(false);
};

} // namespace corvane
