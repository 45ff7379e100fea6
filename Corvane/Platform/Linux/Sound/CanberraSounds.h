// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SystemSounds.h"
#include "Corvane/Platform/Linux/Waiting/WorkerPool.h"
#include "Corvane/Utilities/Clock.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace corvane {

/// Plays sounds of the desktop's sound themes through libcanberra. Main thread only.
///
/// libcanberra answers within milliseconds while the sound server works, and blocks its caller for half a
/// minute when the server hangs. So all calls are made one at a time on a thread of their own. A sound that
/// has not started within the time limit counts as not played, and is cancelled if it starts later. While a
/// call is stuck, further ones are answered "not played" at once instead of queueing behind it.
class CanberraSounds final : public QObject, public SystemSounds {
    Q_OBJECT

public:
    /// The time limit of a call, from the request on.
    static constexpr Seconds timeout{1.0};

    /// How long after a sound the connection to the sound server is kept, at least.
    static constexpr Seconds rest{5.0};

    /// Does not contact the sound server before the first sound. `plainBell` is called when the desktop's
    /// bell sound cannot be played; by default it rings the window system's bell.
    explicit CanberraSounds(std::function<void()> plainBell = {}, Seconds limit = timeout,
                            QObject *parent = nullptr);

    /// Answers "not played" to pending calls. Does not wait for a stuck call.
    ~CanberraSounds() override;

    QCoro::Task<bool> play(QString name) override;
    void beep() override;

private:
    class Context;
    struct Call;
    enum class Theme { own, desktop };

    QCoro::Task<bool> start(QByteArray event, Theme theme);
    static QCoro::Task<void> close(QPointer<CanberraSounds> self);
    [[nodiscard]] bool isStuck();

    std::function<void()> m_plainBell;
    std::chrono::milliseconds m_limit;
    /// Used by the worker thread only; the calls on that thread keep it alive.
    std::shared_ptr<Context> m_context;
    WorkerPool m_thread{1, std::chrono::milliseconds(200)};
    /// Calls that had not returned when last checked, oldest first.
    std::vector<std::shared_ptr<Call>> m_calls;
    QTimer m_rest;
    std::uint32_t m_lastId = 0;
    /// Set by the destructor: nothing is played any more.
    bool m_isEnding = false;
};

} // namespace corvane
