// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SystemSounds.h"
#include "Corvane/Platform/Linux/Waiting/WorkerPool.h"
#include "Corvane/Utilities/Clock.h"

#include <QObject>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace corvane {

/// The sounds of the desktop's sound themes, played through libcanberra. Main thread only.
///
/// libcanberra answers within milliseconds while the sound server is well, and blocks its caller for half a
/// minute when the server hangs. So its calls are made one at a time on a thread of their own, and each is
/// given a second from when it was asked: what has not started by then counts as not played, and is cut off
/// should it start later. While a call is stuck, further ones are answered "not played" at once instead of
/// waiting behind it.
class CanberraSounds final : public QObject, public SystemSounds {
    Q_OBJECT

public:
    /// How long a call may take before it counts as not played.
    static constexpr Seconds timeout{1.0};

    /// The sound server is not spoken to before the first sound. `plainBell` is rung when the desktop's bell
    /// sound cannot be played; the empty one stands for the window system's bell.
    explicit CanberraSounds(std::function<void()> plainBell = {}, Seconds limit = timeout,
                            QObject *parent = nullptr);

    /// Answers "not played" to what still waits. A stuck call is left to itself: it is not waited for.
    ~CanberraSounds() override;

    QCoro::Task<bool> play(QString name) override;
    void beep() override;

private:
    class Context;
    struct Call;
    enum class Theme { own, desktop };

    QCoro::Task<bool> start(QByteArray event, Theme theme);
    [[nodiscard]] bool isStuck();

    std::function<void()> m_plainBell;
    std::chrono::milliseconds m_limit;
    /// Used by the one thread alone, and outlives it.
    std::shared_ptr<Context> m_context;
    WorkerPool m_thread{1, std::chrono::milliseconds(200)};
    /// Those that have not come back when last looked, oldest first.
    std::vector<std::shared_ptr<Call>> m_calls;
    std::uint32_t m_lastId = 0;
    /// Set by the destructor: from then on nothing is played.
    bool m_isEnding = false;
};

} // namespace corvane
