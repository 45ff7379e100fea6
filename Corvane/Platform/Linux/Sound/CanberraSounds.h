// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SystemSounds.h"
#include "Corvane/Utilities/Clock.h"

#include <QObject>
#include <QTimer>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace corvane {

/// The sounds of the desktop's sound themes, played through libcanberra. Main thread only.
///
/// libcanberra answers within milliseconds while the sound server is well, and blocks its caller for half a
/// minute when the server hangs. So its calls are made one at a time on a thread of their own, and each is
/// given a second: what has not started by then counts as not played, and is cut off should it start later.
/// While a call is stuck, further ones are answered "not played" at once instead of waiting behind it.
class CanberraSounds final : public QObject, public SystemSounds {
    Q_OBJECT

public:
    /// How long a call may take before it counts as not played.
    static constexpr Seconds timeout{1.0};

    /// Starts the thread, which sleeps until the first sound; the sound server is not spoken to before.
    /// `plainBell` is rung when the desktop's bell sound cannot be played; the empty one stands for the
    /// window system's bell.
    explicit CanberraSounds(std::function<void()> plainBell = {}, QObject *parent = nullptr);

    /// Answers "not played" to what still waits. A stuck call is left to itself: it is not waited for.
    ~CanberraSounds() override;

    QCoro::Task<bool> play(QString name) override;
    void beep() override;

private:
    struct Channel;
    struct Request;
    struct Reply;
    enum class Theme { own, desktop };

    QCoro::Task<bool> start(QByteArray event, Theme theme);
    void handOverNext();
    void handleReply();
    void dropOverdue();
    void armDeadline();

    std::function<void()> m_plainBell;
    std::shared_ptr<Channel> m_channel;
    QSocketNotifier *m_answers = nullptr;
    /// Asked for and not yet answered, oldest first.
    std::deque<std::shared_ptr<Request>> m_requests;
    /// The request that the thread is at, which may have been answered as overdue; 0 when it is idle.
    std::uint32_t m_underWay = 0;
    std::uint32_t m_lastId = 0;
    /// Set once the call under way is overdue, until it comes back.
    bool m_isStuck = false;
    /// Set by the destructor: from then on nothing is played.
    bool m_isEnding = false;
    /// A timer and no wait(): it is stopped when the answer comes, so that nothing wakes the program up for
    /// it.
    QTimer m_deadline;
};

} // namespace corvane
