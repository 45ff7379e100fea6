// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDeadlineTimer>
#include <QTimer>

#include <algorithm>
#include <coroutine>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace corvane {

/// A value that arrives later, once or never. Copies share it. Main thread only.
///
/// Waits for a service have a deadline, so that no coroutine outlives a service that never answers. Deadlines
/// run on real time, not on the program's clock, because services do too.
template <typename T>
class Pending {
    struct State;

public:
    /// Keeps the first value and resumes the waiters in the order of their arrival. Ignores later values.
    void resolve(T value) const
    {
        const std::shared_ptr<State> state = m_state;
        if (state->value) {
            return;
        }
        state->value = std::move(value);
        while (!state->waiters.empty()) {
            Waiter *waiter = state->waiters.front();
            waiter->leave();
            waiter->m_handle.resume();
        }
    }

    [[nodiscard]] bool isResolved() const { return m_state->value.has_value(); }
    /// Const, because the value is shared: co_return would move a variable away from later readers.
    [[nodiscard]] const T &value() const { return *m_state->value; }

    class Waiter {
    public:
        Waiter(std::shared_ptr<State> state, QDeadlineTimer deadline)
            : m_state(std::move(state))
            , m_deadline(deadline)
        {
        }
        ~Waiter() { leave(); }
        Waiter(const Waiter &) = delete;
        Waiter &operator=(const Waiter &) = delete;

        [[nodiscard]] bool await_ready() const { return m_state->value.has_value(); }
        void await_suspend(std::coroutine_handle<> handle)
        {
            m_handle = handle;
            m_state->waiters.push_back(this);
            if (!m_deadline.isForever()) {
                m_timer = new QTimer;
                m_timer->setSingleShot(true);
                m_timer->setTimerType(Qt::PreciseTimer);
                QObject::connect(m_timer, &QTimer::timeout, m_timer, [this] {
                    leave();
                    m_handle.resume();
                });
                m_timer->start(static_cast<int>(std::clamp<qint64>(m_deadline.remainingTime(), 0, 1000000)));
            }
        }
        [[nodiscard]] bool await_resume() const { return m_state->value.has_value(); }

    private:
        friend class Pending;
        void leave()
        {
            std::erase(m_state->waiters, this);
            if (m_timer != nullptr) {
                // The timer itself may be the caller.
                m_timer->stop();
                std::exchange(m_timer, nullptr)->deleteLater();
            }
        }

        std::shared_ptr<State> m_state;
        QDeadlineTimer m_deadline;
        QTimer *m_timer = nullptr;
        std::coroutine_handle<> m_handle;
    };

    /// Resumes only with the value, so await_resume() has nothing to report.
    class UnboundedWaiter : public Waiter {
    public:
        using Waiter::Waiter;
        void await_resume() const {}
    };

    /// The result of until() and untilResolved().
    template <typename Awaiter>
    class Wait {
    public:
        Wait(Pending pending, QDeadlineTimer deadline) : m_pending(std::move(pending)), m_deadline(deadline)
        {
        }
        [[nodiscard]] Awaiter operator co_await() const { return Awaiter(m_pending.m_state, m_deadline); }

    private:
        Pending m_pending;
        QDeadlineTimer m_deadline;
    };

    /// Awaiting it tells whether the value arrived before the deadline.
    [[nodiscard]] Wait<Waiter> until(QDeadlineTimer deadline) const { return {*this, deadline}; }
    /// For a value that is certain to arrive.
    [[nodiscard]] Wait<UnboundedWaiter> untilResolved() const
    {
        return {*this, QDeadlineTimer(QDeadlineTimer::Forever)};
    }

private:
    struct State {
        std::optional<T> value;
        std::vector<Waiter *> waiters;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace corvane
