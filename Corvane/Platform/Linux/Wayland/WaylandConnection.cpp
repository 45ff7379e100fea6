// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/WaylandConnection.h"

#include <linux/input-event-codes.h>
#include <poll.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>
#include <xdg-output-unstable-v1-client-protocol.h>

#include <QDeadlineTimer>
#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <optional>
#include <utility>

namespace corvane {

namespace {

QPointF point(wl_fixed_t x, wl_fixed_t y)
{
    return {wl_fixed_to_double(x), wl_fixed_to_double(y)};
}

std::optional<Qt::MouseButton> mouseButton(std::uint32_t code)
{
    switch (code) {
    case BTN_LEFT:
        return Qt::LeftButton;
    case BTN_RIGHT:
        return Qt::RightButton;
    case BTN_MIDDLE:
        return Qt::MiddleButton;
    default:
        return std::nullopt;
    }
}

WaylandPointerTarget *targetOf(wl_surface *surface)
{
    // Null if the surface was destroyed while the event was on its way.
    return surface != nullptr ? static_cast<WaylandPointerTarget *>(wl_surface_get_user_data(surface))
                              : nullptr;
}

} // namespace

/// Callbacks for the compositor's events.
struct WaylandConnection::Listeners {
    static WaylandConnection &self(void *data) { return *static_cast<WaylandConnection *>(data); }

    static constexpr wl_registry_listener registry{
        .global = [](void *data, wl_registry *, std::uint32_t number, const char *interface,
                     std::uint32_t version) { self(data).addGlobal(number, interface, version); },
        .global_remove = [](void *data, wl_registry *,
                            std::uint32_t number) { self(data).removeGlobal(number); },
    };

    static WaylandOutput *find(void *data, const void *object)
    {
        const auto found = std::ranges::find_if(self(data).m_outputs, [object](const WaylandOutput &output) {
            return output.proxy.get() == object || output.extent.get() == object;
        });
        return found != self(data).m_outputs.end() ? &*found : nullptr;
    }

    static constexpr wl_output_listener output{
        .geometry = [](void *, wl_output *, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                       std::int32_t, const char *, const char *, std::int32_t) {},
        .mode = [](void *, wl_output *, std::uint32_t, std::int32_t, std::int32_t, std::int32_t) {},
        .done = [](void *data, wl_output *) { Q_EMIT self(data).outputsChanged(); },
        .scale =
            [](void *data, wl_output *object, std::int32_t scale) {
                if (WaylandOutput *output = find(data, object)) {
                    output->scale = std::max(scale, 1);
                }
            },
        .name = [](void *, wl_output *, const char *) {},
        .description = [](void *, wl_output *, const char *) {},
    };

    static constexpr zxdg_output_v1_listener extent{
        .logical_position =
            [](void *data, zxdg_output_v1 *object, std::int32_t x, std::int32_t y) {
                if (WaylandOutput *output = find(data, object)) {
                    output->area.moveTopLeft(QPoint(x, y));
                }
            },
        .logical_size =
            [](void *data, zxdg_output_v1 *object, std::int32_t width, std::int32_t height) {
                if (WaylandOutput *output = find(data, object)) {
                    output->area.setSize(QSize(width, height));
                }
            },
        .done = [](void *data, zxdg_output_v1 *) { Q_EMIT self(data).outputsChanged(); },
        .name =
            [](void *data, zxdg_output_v1 *object, const char *name) {
                if (WaylandOutput *output = find(data, object)) {
                    output->name = QString::fromUtf8(name);
                }
            },
        .description = [](void *, zxdg_output_v1 *, const char *) {},
    };

    // Frame and similar events come only with newer seat versions than the bound one, and newer libraries
    // have further members: those not named here stay null.
    static constexpr wl_pointer_listener pointer = [] {
        wl_pointer_listener listener{};
        listener.enter = [](void *data, wl_pointer *, std::uint32_t serial, wl_surface *surface, wl_fixed_t x,
                            wl_fixed_t y) {
            WaylandConnection &connection = self(data);
            connection.m_cursor.show(serial, connection.m_pointer.get(), connection.m_compositor.get(),
                                     connection.m_sharedMemory.get());
            connection.m_target = targetOf(surface);
            if (connection.m_target != nullptr) {
                connection.m_target->pointerEntered(point(x, y));
            }
        };
        listener.leave = [](void *data, wl_pointer *, std::uint32_t, wl_surface *) {
            if (WaylandPointerTarget *target = std::exchange(self(data).m_target, nullptr)) {
                target->pointerLeft();
            }
        };
        listener.motion = [](void *data, wl_pointer *, std::uint32_t, wl_fixed_t x, wl_fixed_t y) {
            if (WaylandPointerTarget *target = self(data).m_target) {
                target->pointerMoved(point(x, y));
            }
        };
        listener.button = [](void *data, wl_pointer *, std::uint32_t, std::uint32_t, std::uint32_t code,
                             std::uint32_t state) {
            WaylandPointerTarget *target = self(data).m_target;
            const auto button = mouseButton(code);
            if (target == nullptr || !button) {
                return;
            }
            if (state == WL_POINTER_BUTTON_STATE_PRESSED) {
                target->pointerPressed(*button);
            } else {
                target->pointerReleased(*button);
            }
        };
        listener.axis = [](void *, wl_pointer *, std::uint32_t, std::uint32_t, wl_fixed_t) {};
        return listener;
    }();

    static constexpr wl_seat_listener seat{
        .capabilities =
            [](void *data, wl_seat *object, std::uint32_t capabilities) {
                WaylandConnection &connection = self(data);
                if ((capabilities & WL_SEAT_CAPABILITY_POINTER) == 0) {
                    connection.m_pointer.reset();
                } else if (connection.m_pointer == nullptr) {
                    connection.m_pointer.reset(wl_seat_get_pointer(object));
                    wl_pointer_add_listener(connection.m_pointer.get(), &pointer, data);
                    connection.flush();
                }
            },
        .name = [](void *, wl_seat *, const char *) {},
    };

    static constexpr wl_callback_listener answer{
        .done = [](void *data, wl_callback *, std::uint32_t) { *static_cast<bool *>(data) = true; },
    };
};

WaylandConnection::WaylandConnection() = default;

WaylandConnection::~WaylandConnection()
{
    // Deleted directly rather than with deleteLater(): there may be no event loop any more.
    m_readable.reset();
    m_writable.reset();
    close();
}

bool WaylandConnection::open()
{
    if (isOpen()) {
        return true;
    }
    m_display = wl_display_connect(nullptr);
    if (m_display == nullptr) {
        return false;
    }
    m_registry.reset(wl_display_get_registry(m_display));
    wl_registry_add_listener(m_registry.get(), &Listeners::registry, this);
    // The first round trip lists the globals, the second brings their properties.
    if (!waitForAnswer() || !waitForAnswer()) {
        close();
        return false;
    }
    const int file = wl_display_get_fd(m_display);
    m_readable = std::make_unique<QSocketNotifier>(file, QSocketNotifier::Read);
    connect(m_readable.get(), &QSocketNotifier::activated, this, &WaylandConnection::readEvents);
    m_writable = std::make_unique<QSocketNotifier>(file, QSocketNotifier::Write);
    m_writable->setEnabled(false);
    connect(m_writable.get(), &QSocketNotifier::activated, this, &WaylandConnection::flush);
    flush();
    return true;
}

bool WaylandConnection::waitForAnswer()
{
    constexpr std::chrono::seconds timeout{1};
    bool isAnswered = false;
    const std::unique_ptr<wl_callback, void (*)(wl_callback *)> callback(wl_display_sync(m_display),
                                                                         wl_callback_destroy);
    wl_callback_add_listener(callback.get(), &Listeners::answer, &isAnswered);
    return waitUntil([&isAnswered] { return isAnswered; }, QDeadlineTimer(timeout, Qt::PreciseTimer));
}

bool WaylandConnection::waitUntil(const std::function<bool()> &isDone, QDeadlineTimer deadline)
{
    while (isOpen() && !isDone()) {
        while (wl_display_prepare_read(m_display) != 0) {
            if (wl_display_dispatch_pending(m_display) < 0) {
                return false;
            }
        }
        if (isDone()) {
            wl_display_cancel_read(m_display);
            break;
        }
        wl_display_flush(m_display);
        pollfd file{.fd = wl_display_get_fd(m_display), .events = POLLIN, .revents = 0};
        const int ready = poll(&file, 1, static_cast<int>(deadline.remainingTime()));
        if (ready <= 0) {
            const bool isInterrupted = ready < 0 && errno == EINTR;
            wl_display_cancel_read(m_display);
            if (isInterrupted) {
                continue;
            }
            return false;
        }
        if (wl_display_read_events(m_display) < 0 || wl_display_dispatch_pending(m_display) < 0) {
            return false;
        }
    }
    return isOpen();
}

bool WaylandConnection::dispatch()
{
    while (wl_display_prepare_read(m_display) != 0) {
        if (wl_display_dispatch_pending(m_display) < 0) {
            return false;
        }
    }
    return wl_display_read_events(m_display) >= 0 && wl_display_dispatch_pending(m_display) >= 0;
}

void WaylandConnection::readEvents()
{
    if (!dispatch()) {
        Q_EMIT lost();
        close();
        return;
    }
    flush();
}

void WaylandConnection::flush()
{
    if (!isOpen() || m_writable == nullptr) {
        return;
    }
    // Any other error is reported again by the next read.
    const bool isFull = wl_display_flush(m_display) < 0 && errno == EAGAIN;
    m_writable->setEnabled(isFull);
}

void WaylandConnection::close()
{
    // Deleted later, because close() may be called from a signal of one of them.
    for (std::unique_ptr<QSocketNotifier> *notifier : {&m_readable, &m_writable}) {
        if (*notifier) {
            (*notifier)->setEnabled(false);
            notifier->release()->deleteLater();
        }
    }
    m_target = nullptr;
    m_cursor.reset();
    m_pointer.reset();
    m_seat.reset();
    m_outputs.clear();
    m_outputManager.reset();
    m_layerShell.reset();
    m_sharedMemory.reset();
    m_compositor.reset();
    m_registry.reset();
    if (m_display != nullptr) {
        wl_display_disconnect(m_display);
        m_display = nullptr;
    }
}

bool WaylandConnection::offersOverlays() const
{
    return m_compositor && m_sharedMemory && m_layerShell && m_outputManager;
}

const WaylandOutput *WaylandConnection::outputAt(QPointF point) const
{
    const auto found = std::ranges::find_if(m_outputs, [point](const WaylandOutput &output) {
        const QRectF area(output.area);
        return point.x() >= area.left() && point.x() < area.right() && point.y() >= area.top() &&
               point.y() < area.bottom();
    });
    return found != m_outputs.end() ? &*found : nullptr;
}

double WaylandConnection::zeroLine() const
{
    return m_outputs.empty() ? 0 : QRectF(m_outputs.front().area).bottom();
}

WaylandRef<wl_surface> WaylandConnection::makeSurface(WaylandPointerTarget &target)
{
    WaylandRef<wl_surface> surface(wl_compositor_create_surface(m_compositor.get()));
    wl_surface_set_user_data(surface.get(), &target);
    return surface;
}

void WaylandConnection::removeTarget(WaylandPointerTarget &target)
{
    if (m_target == &target) {
        m_target = nullptr;
    }
}

void WaylandConnection::addGlobal(std::uint32_t number, const char *interface, std::uint32_t version)
{
    const auto bind = [&]<typename Object>(WaylandRef<Object> &object, const wl_interface &type,
                                           std::uint32_t newest) {
        if (object == nullptr && qstrcmp(interface, type.name) == 0) {
            object.reset(static_cast<Object *>(
                wl_registry_bind(m_registry.get(), number, &type, std::min(version, newest))));
            return true;
        }
        return false;
    };
    bind(m_compositor, wl_compositor_interface, 4);
    bind(m_sharedMemory, wl_shm_interface, 1);
    bind(m_layerShell, zwlr_layer_shell_v1_interface, 4);
    if (bind(m_seat, wl_seat_interface, 3)) {
        wl_seat_add_listener(m_seat.get(), &Listeners::seat, this);
    }
    if (bind(m_outputManager, zxdg_output_manager_v1_interface, 3)) {
        std::ranges::for_each(m_outputs, [this](WaylandOutput &output) { requestExtent(output); });
    }
    WaylandRef<wl_output> output;
    if (bind(output, wl_output_interface, 4)) {
        wl_output_add_listener(output.get(), &Listeners::output, this);
        WaylandOutput &added = m_outputs.emplace_back();
        added.number = number;
        added.proxy = std::move(output);
        requestExtent(added);
    }
    flush();
}

void WaylandConnection::requestExtent(WaylandOutput &output)
{
    if (m_outputManager != nullptr) {
        output.extent.reset(zxdg_output_manager_v1_get_xdg_output(m_outputManager.get(), output.proxy.get()));
        zxdg_output_v1_add_listener(output.extent.get(), &Listeners::extent, this);
    }
}

void WaylandConnection::removeGlobal(std::uint32_t number)
{
    const auto isIt = [number](const WaylandOutput &output) { return output.number == number; };
    if (m_outputs.remove_if(isIt) > 0) {
        Q_EMIT outputsChanged();
    }
}

} // namespace corvane
