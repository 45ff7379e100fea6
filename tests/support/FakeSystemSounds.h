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

/// Sounds that a test provides by name and that nobody hears. Each call is recorded; a call from another
/// thread than the main one, or one without a name, ends the test.
class FakeSystemSounds final : public SystemSounds {
public:
    FakeSystemSounds() = default;
    ~FakeSystemSounds() override { release(); }
    FakeSystemSounds(const FakeSystemSounds &) = delete;
    FakeSystemSounds &operator=(const FakeSystemSounds &) = delete;

    /// The names that are there and start when played.
    QStringList available{QStringLiteral("Glass")};

    /// The names asked for, in order, whatever was answered.
    QStringList played;

    /// How many times the alert beep was asked for.
    int beeps = 0;

    /// From now on an answer waits for release(), as with a sound server that is slow.
    void hold() { m_holds = true; }

    /// Answers what waits, in order, and from now on at once. `answer` stands in the place of what
    /// `available` says.
    void release(std::optional<bool> answer = std::nullopt)
    {
        m_holds = false;
        m_heldAnswer = answer;
        for (const auto handle : std::exchange(m_waiting, {})) {
            handle.resume();
        }
        m_heldAnswer.reset();
    }

    /// How many calls wait for their answer.
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
