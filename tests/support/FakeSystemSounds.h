// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SystemSounds.h"

#include <QCoreApplication>
#include <QStringList>
#include <QThread>

#include <coroutine>
#include <optional>
#include <utility>
#include <vector>

namespace corvane {

/// Silent system sounds, which record each call; a test lists the available names. A call outside the main
/// thread or with an empty name ends the test program.
class FakeSystemSounds final : public SystemSounds {
public:
    FakeSystemSounds() = default;
    ~FakeSystemSounds() override { release(); }
    FakeSystemSounds(const FakeSystemSounds &) = delete;
    FakeSystemSounds &operator=(const FakeSystemSounds &) = delete;

    /// The names that can be played.
    QStringList available{QStringLiteral("Glass")};

    /// The names requested, in order, whether available or not.
    QStringList played;

    /// How often the alert beep was requested.
    int beeps = 0;

    /// From now on answers wait for release(), as with a slow sound server.
    void hold() { m_holds = true; }

    /// Answers the waiting calls in order; later calls are answered at once. `answer`, if set, is the answer
    /// to the waiting calls, regardless of `available`.
    void release(std::optional<bool> answer = std::nullopt)
    {
        m_holds = false;
        m_heldAnswer = answer;
        for (const auto handle : std::exchange(m_waiting, {})) {
            handle.resume();
        }
        m_heldAnswer.reset();
    }

    /// The number of calls that wait for an answer.
    [[nodiscard]] std::size_t waitingCount() const { return m_waiting.size(); }

    QCoro::Task<bool> play(QString name) override
    {
        checkThread();
        if (name.isEmpty()) {
            qFatal("a sound without a name was asked for");
        }
        played.append(name);
        co_await Hold{*this};
        co_return m_heldAnswer.value_or(available.contains(name));
    }

    void beep() override
    {
        checkThread();
        ++beeps;
    }

private:
    struct Hold {
        FakeSystemSounds &sounds;

        [[nodiscard]] bool await_ready() const noexcept { return !sounds.m_holds; }
        void await_suspend(std::coroutine_handle<> handle) { sounds.m_waiting.push_back(handle); }
        void await_resume() const noexcept {}
    };

    static void checkThread()
    {
        if (QCoreApplication::instance() &&
            QThread::currentThread() != QCoreApplication::instance()->thread()) {
            qFatal("the sounds were called from another thread than the main one");
        }
    }

    bool m_holds = false;
    std::optional<bool> m_heldAnswer;
    std::vector<std::coroutine_handle<>> m_waiting;
};

} // namespace corvane
