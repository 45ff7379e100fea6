// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

/// The desktop's notification sound, for servers that play none.
class NotificationSound {
public:
    virtual ~NotificationSound() = default;

    /// Starts the sound; silent if it cannot be played. Never blocks.
    virtual void play() = 0;
};

} // namespace corvane
