// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Sound/CanberraSounds.h"

#include <canberra.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <coroutine>
#include <future>
#include <semaphore>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace corvane {

namespace {

using SteadyTime = std::chrono::steady_clock::time_point;

// What the thread is asked to do; values only.
struct Order {
    std::uint32_t id = 0;
    QByteArray event;
    bool inOwnTheme = false;
    SteadyTime deadline;
};

// libcanberra's context. One is kept, for making one means connecting to the sound server; after any failure
// it is made anew, because it remembers a theme that it did not find and a server that went away.
class Context {
public:
    Context() = default;
    ~Context() { close(); }
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;

    [[nodiscard]] bool play(const Order &order)
    {
        if (m_context == nullptr && !open()) {
            return false;
        }
        ca_proplist *properties = nullptr;
        if (ca_proplist_create(&properties) != CA_SUCCESS) {
            return false;
        }
        ca_proplist_sets(properties, CA_PROP_EVENT_ID, order.event.constData());
        ca_proplist_sets(properties, CA_PROP_MEDIA_ROLE, "event");
        if (order.inOwnTheme) {
            ca_proplist_sets(properties, CA_PROP_CANBERRA_XDG_THEME_NAME, "quillet");
        }
        const int result = ca_context_play_full(m_context, order.id, properties, nullptr, nullptr);
        ca_proplist_destroy(properties);
        if (result != CA_SUCCESS) {
            close();
            return false;
        }
        if (std::chrono::steady_clock::now() > order.deadline) {
            // The caller has been told that it did not play, and has rung the bell instead.
            ca_context_cancel(m_context, order.id);
            return false;
        }
        return true;
    }

private:
    bool open()
    {
        if (ca_context_create(&m_context) != CA_SUCCESS) {
            m_context = nullptr;
            return false;
        }
        ca_context_change_props(m_context, CA_PROP_APPLICATION_NAME, "Quillet", CA_PROP_APPLICATION_ID,
                                "com.ordwinsoftware.Quillet", CA_PROP_APPLICATION_ICON_NAME,
                                "com.ordwinsoftware.Quillet", nullptr);
        return true;
    }

    void close()
    {
        if (m_context != nullptr) {
            ca_context_destroy(std::exchange(m_context, nullptr));
        }
    }

    ca_context *m_context = nullptr;
};

} // namespace

// What the main thread and the sound thread share. Only one order is under way at a time: `order` belongs to
// the main thread until `asked` is released, and to the sound thread until `answered` becomes readable. Each
// thread holds a share, so that a stuck one outlives the sounds without harm.
struct CanberraSounds::Channel {
    Order order;
    std::counting_semaphore<4> asked{0}; // at most an order and the end
    std::atomic<bool> ends{false};
    std::atomic<bool> hasPlayed{false};
    int answered = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    std::thread thread;
    std::future<void> ended;

    Channel() = default;
    ~Channel() { ::close(answered); }
    Channel(const Channel &) = delete;
    Channel &operator=(const Channel &) = delete;

    static void run(const std::shared_ptr<Channel> &channel)
    {
        Context context;
        for (;;) {
            channel->asked.acquire();
            if (channel->ends) {
                return;
            }
            channel->hasPlayed = context.play(channel->order);
            ::eventfd_write(channel->answered, 1);
        }
    }
};

struct CanberraSounds::Request {
    Order order;
    Seconds deadline{};
    std::coroutine_handle<> caller;
    bool hasPlayed = false;
};

// What a caller waits on. It holds nothing that needs destroying: GCC 12 destroys the members of such a
// temporary twice.
struct CanberraSounds::Reply {
    Request &request;

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> handle) { request.caller = handle; }
    [[nodiscard]] bool await_resume() const noexcept { return request.hasPlayed; }
};

CanberraSounds::CanberraSounds(std::function<void()> plainBell, QObject *parent)
    : QObject(parent)
    , m_plainBell(plainBell ? std::move(plainBell) : [] { QApplication::beep(); })
    , m_channel(std::make_shared<Channel>())
{
    m_answers = new QSocketNotifier(m_channel->answered, QSocketNotifier::Read, this);
    connect(m_answers, &QSocketNotifier::activated, this, &CanberraSounds::handleReply);
    m_deadline.setSingleShot(true);
    m_deadline.setTimerType(Qt::PreciseTimer);
    connect(&m_deadline, &QTimer::timeout, this, &CanberraSounds::dropOverdue);

    std::promise<void> ended;
    m_channel->ended = ended.get_future();
    try {
        m_channel->thread = std::thread([channel = m_channel, ended = std::move(ended)]() mutable {
            ::pthread_setname_np(::pthread_self(), "quillet-sound");
            Channel::run(channel);
            channel.reset();
            ended.set_value();
        });
    } catch (const std::system_error &) {
        // The machine gives no further thread: there is none to play with, and the plain bell is left.
        m_isStuck = true;
    }
}

CanberraSounds::~CanberraSounds()
{
    // An idle thread ends within a millisecond. One that does not is stuck in the sound server and goes with
    // the process.
    constexpr std::chrono::milliseconds courtesy{200};
    m_channel->ends = true;
    m_channel->asked.release();
    if (!m_isStuck && m_channel->ended.wait_for(courtesy) == std::future_status::ready) {
        m_channel->thread.join();
    } else if (m_channel->thread.joinable()) {
        m_channel->thread.detach();
    }
    // Whoever is told that nothing plays may ask for a beep, which nobody would ring any more.
    m_isEnding = true;
    for (const auto &request : std::exchange(m_requests, {})) {
        request->caller.resume();
    }
}

QCoro::Task<bool> CanberraSounds::play(QString name)
{
    return start(name.toUtf8(), Theme::own);
}

void CanberraSounds::beep()
{
    if (m_isEnding) {
        return;
    }
    QCoro::connect(start("bell", Theme::desktop), this, [this](bool hasPlayed) {
        if (!hasPlayed) {
            m_plainBell();
        }
    });
}

QCoro::Task<bool> CanberraSounds::start(QByteArray event, Theme theme)
{
    if (m_isStuck || m_isEnding) {
        co_return false;
    }
    auto request = std::make_shared<Request>();
    request->order = {++m_lastId, std::move(event), theme == Theme::own,
                      std::chrono::steady_clock::now() +
                          std::chrono::duration_cast<std::chrono::steady_clock::duration>(timeout)};
    request->deadline = uptime() + timeout;
    m_requests.push_back(request);
    handOverNext();
    armDeadline();
    // From here on the object may be gone; the request stays with this frame.
    co_return co_await Reply{*request};
}

void CanberraSounds::handOverNext()
{
    if (m_underWay != 0 || m_requests.empty()) {
        return;
    }
    m_channel->order = m_requests.front()->order;
    m_underWay = m_channel->order.id;
    m_channel->asked.release();
}

void CanberraSounds::handleReply()
{
    eventfd_t count = 0;
    if (::eventfd_read(m_channel->answered, &count) != 0) {
        return;
    }
    const std::uint32_t id = std::exchange(m_underWay, 0);
    m_isStuck = false;
    std::shared_ptr<Request> answered;
    if (!m_requests.empty() && m_requests.front()->order.id == id) {
        answered = m_requests.front();
        answered->hasPlayed = m_channel->hasPlayed;
        m_requests.pop_front();
    }
    handOverNext();
    armDeadline();
    if (answered) {
        answered->caller.resume();
    }
}

void CanberraSounds::dropOverdue()
{
    std::vector<std::shared_ptr<Request>> overdue;
    const Seconds now = uptime();
    while (!m_requests.empty() && m_requests.front()->deadline <= now) {
        m_isStuck = m_isStuck || m_requests.front()->order.id == m_underWay;
        overdue.push_back(m_requests.front());
        m_requests.pop_front();
    }
    armDeadline();
    for (const auto &request : overdue) {
        request->caller.resume();
    }
}

void CanberraSounds::armDeadline()
{
    if (m_requests.empty()) {
        m_deadline.stop();
        return;
    }
    const double remaining = std::max((m_requests.front()->deadline - uptime()).count(), 0.0);
    m_deadline.start(static_cast<int>(std::ceil(remaining * 1000.0)));
}

} // namespace corvane
