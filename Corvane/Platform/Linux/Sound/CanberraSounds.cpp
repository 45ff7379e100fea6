// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Sound/CanberraSounds.h"

#include "Corvane/Platform/Linux/Waiting/Pending.h"
#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/Spawn.h"

#include <canberra.h>

#include <QApplication>
#include <QDeadlineTimer>

#include <atomic>
#include <memory>
#include <utility>

namespace corvane {

struct CanberraSounds::Call {
    Call(std::uint32_t id, QByteArray event, Theme theme, std::chrono::milliseconds limit)
        : id(id)
        , event(std::move(event))
        , theme(theme)
        , deadline(limit, Qt::PreciseTimer)
    {
    }

    const std::uint32_t id;
    const QByteArray event;
    const Theme theme;
    const QDeadlineTimer deadline;
    /// Set by the worker once the sound has started in time, or by the main thread once it stops waiting;
    /// whichever comes second finds it set.
    std::atomic<bool> isDecided = false;
    /// Main thread only.
    Pending<std::shared_ptr<bool>> isBack;
};

namespace {

using SoundCount = std::shared_ptr<std::atomic<int>>;

/// A sound that has started and not yet ended.
class PlayingSound {
public:
    explicit PlayingSound(SoundCount count) : m_count(std::move(count)) { ++*m_count; }
    ~PlayingSound() { --*m_count; }
    PlayingSound(const PlayingSound &) = delete;
    PlayingSound &operator=(const PlayingSound &) = delete;

    /// On a thread of libcanberra, which calls it once for each sound that it accepted.
    static void end(ca_context *, std::uint32_t, int, void *sound)
    {
        delete static_cast<PlayingSound *>(sound);
    }

private:
    SoundCount m_count;
};

} // namespace

// Owns libcanberra's context, which is connected to the sound server. It is closed when there has been no
// sound for a while: it needs 300 KiB, and a server that restarts is noticed only by a sound that fails.
// After any failure it is made anew, because it remembers a theme that it did not find and a server that went
// away.
class CanberraSounds::Context {
public:
    Context() = default;
    ~Context() { close(); }
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;

    /// Whether the sound has started in time.
    bool play(Call &call)
    {
        if (call.isDecided || call.deadline.hasExpired()) {
            return false;
        }
        if (!hasStarted(call)) {
            close();
            return false;
        }
        if (call.deadline.hasExpired() || call.isDecided.exchange(true)) {
            // The caller has already been told that it did not play, and may have rung the bell instead.
            ca_context_cancel(m_context, call.id);
            return false;
        }
        return true;
    }

    /// Closes the context unless a sound is playing. Returns whether it is closed.
    bool closeIfSilent()
    {
        if (*m_count == 0) {
            close();
        }
        return m_context == nullptr;
    }

private:
    bool hasStarted(const Call &call)
    {
        if (m_context == nullptr && !open()) {
            return false;
        }
        ca_proplist *properties = nullptr;
        if (ca_proplist_create(&properties) != CA_SUCCESS) {
            return false;
        }
        ca_proplist_sets(properties, CA_PROP_EVENT_ID, call.event.constData());
        ca_proplist_sets(properties, CA_PROP_MEDIA_ROLE, "event");
        if (call.theme == Theme::own) {
            ca_proplist_sets(properties, CA_PROP_CANBERRA_XDG_THEME_NAME, "quillet");
        }
        auto sound = std::make_unique<PlayingSound>(m_count);
        const int result =
            ca_context_play_full(m_context, call.id, properties, &PlayingSound::end, sound.get());
        ca_proplist_destroy(properties);
        if (result != CA_SUCCESS) {
            return false;
        }
        [[maybe_unused]] const auto *owned = sound.release(); // by libcanberra until the sound ends
        return true;
    }

    bool open()
    {
        if (ca_context_create(&m_context) != CA_SUCCESS) {
            m_context = nullptr;
            return false;
        }
        ca_context_change_props(m_context, CA_PROP_APPLICATION_NAME, "Quillet", CA_PROP_APPLICATION_ID,
                                names::application.data(), CA_PROP_APPLICATION_ICON_NAME,
                                names::application.data(), nullptr);
        return true;
    }

    void close()
    {
        if (m_context != nullptr) {
            ca_context_destroy(std::exchange(m_context, nullptr));
        }
    }

    ca_context *m_context = nullptr;
    SoundCount m_count = std::make_shared<std::atomic<int>>(0);
};

CanberraSounds::CanberraSounds(std::function<void()> plainBell, Seconds limit, QObject *parent)
    : QObject(parent)
    , m_plainBell(plainBell ? std::move(plainBell) : [] { QApplication::beep(); })
    , m_limit(std::chrono::ceil<std::chrono::milliseconds>(limit))
    , m_context(std::make_shared<Context>())
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(std::chrono::ceil<std::chrono::milliseconds>(rest));
    connect(&m_rest, &QTimer::timeout, this, [this] { spawn(close(this)); });
}

CanberraSounds::~CanberraSounds()
{
    // A caller that is told "not played" may call beep(), which must not start a call any more.
    m_isEnding = true;
    for (const auto &call : std::exchange(m_calls, {})) {
        call->isBack.resolve(nullptr);
    }
}

QCoro::Task<bool> CanberraSounds::play(QString name)
{
    return start(name.toUtf8(), Theme::own);
}

void CanberraSounds::beep()
{
    QCoro::connect(start("bell", Theme::desktop), this, [this](bool hasPlayed) {
        if (!hasPlayed && !m_isEnding) {
            m_plainBell();
        }
    });
}

QCoro::Task<bool> CanberraSounds::start(QByteArray event, Theme theme)
{
    if (m_isEnding || isStuck()) {
        co_return false;
    }
    m_rest.start();
    const auto call = std::make_shared<Call>(++m_lastId, std::move(event), theme, m_limit);
    call->isBack =
        startOnPool(m_thread.threads(), [context = m_context, call] { return context->play(*call); });
    m_calls.push_back(call);
    [[maybe_unused]] const bool isBack = co_await call->isBack.until(call->deadline);
    // From here on the object may be gone.
    co_return call->isDecided.exchange(true);
}

QCoro::Task<void> CanberraSounds::close(QPointer<CanberraSounds> self)
{
    const auto closing = startOnPool(self->m_thread.threads(),
                                     [context = self->m_context] { return context->closeIfSilent(); });
    co_await closing.untilResolved();
    if (!*closing.value() && self != nullptr) {
        self->m_rest.start();
    }
}

/// Whether a call is still running after its deadline.
bool CanberraSounds::isStuck()
{
    std::erase_if(m_calls, [](const auto &call) { return call->isBack.isResolved(); });
    return !m_calls.empty() && m_calls.front()->deadline.hasExpired();
}

} // namespace corvane
