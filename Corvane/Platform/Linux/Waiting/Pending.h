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

/// A value that comes later, once, or never. Copies stand for the same value. Main thread only.
///
/// A wait for a service has a deadline, so that no coroutine outlives a service that never answers. Deadlines
/// are kept by real time, not by the program's clock: they guard against services, which know no other.
template <typename T>
class Pending {
    struct State;

public:
    /// Keeps the first value and wakes those who wait, in the order in which they came.
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
    /// Constant, since it is shared: co_return would move a variable one away from those who come later.
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
                // It may be the one that is calling.
                m_timer->stop();
                std::exchange(m_timer, nullptr)->deleteLater();
            }
        }

        std::shared_ptr<State> m_state;
        QDeadlineTimer m_deadline;
        QTimer *m_timer = nullptr;
        std::coroutine_handle<> m_handle;
    };

    /// It resumes only with the value, so there is nothing to answer.
    class UnboundedWaiter : public Waiter {
    public:
        using Waiter::Waiter;
        void await_resume() const {}
    };

    /// What until() and untilResolved() give.
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

    /// To be awaited: answers whether the value came before the deadline.
    [[nodiscard]] Wait<Waiter> until(QDeadlineTimer deadline) const { return {*this, deadline}; }
    /// To be awaited where the value is sure to come.
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
