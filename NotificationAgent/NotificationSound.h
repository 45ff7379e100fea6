// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

namespace corvane {

/// The desktop's own sound for notifications, for servers that play none.
class NotificationSound {
public:
    virtual ~NotificationSound() = default;

    /// Starts it; what cannot be played stays silent. Never blocks.
    virtual void play() = 0;
};

} // namespace corvane
