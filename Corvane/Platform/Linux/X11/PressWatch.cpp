// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/PressWatch.h"

#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <QGuiApplication>
#include <QPointer>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

namespace corvane::x11 {

namespace {

// What surrounds a window without a frame belongs to another program: the tray around an icon in it.
bool hasFrame(const QWindow &window)
{
    return !window.flags().testFlag(Qt::FramelessWindowHint);
}

bool isPointerOnOwnWindow()
{
    const std::vector<std::uint32_t> under = windowsAtPointer();
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::ranges::any_of(windows, [&under](const QWindow *window) {
        if (under.empty() || window->handle() == nullptr || !window->isVisible()) {
            return false;
        }
        const auto id = static_cast<std::uint32_t>(window->winId());
        return std::ranges::find(under, id) != under.end() ||
               (hasFrame(*window) && topLevelOf(id) == under.front());
    });
}

bool isWheelButton(std::uint32_t button)
{
    constexpr std::uint32_t first = 4;
    constexpr std::uint32_t last = 7;
    return button >= first && button <= last;
}

} // namespace

PressWatch::PressWatch(std::function<void()> pressed) : m_pressed(std::move(pressed))
{
    if (connection() == nullptr) {
        return;
    }
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(connection(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return;
    }
    m_extension = extension->major_opcode;
    // The toolkit has already negotiated the extension's version.
    m_isServed = select(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

PressWatch::~PressWatch()
{
    if (m_extension != 0 && QCoreApplication::instance() != nullptr) {
        QCoreApplication::instance()->removeNativeEventFilter(this);
        select(0);
    }
}

// The server sends raw events to every program that selects them on the root window, also while another
// program has grabbed the pointer. The toolkit selects its events for all devices, this class for all master
// devices, so that neither selection replaces the other.
bool PressWatch::select(std::uint32_t events)
{
    struct {
        xcb_input_event_mask_t header{.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1};
        std::uint32_t events = 0;
    } mask{.events = events};
    const auto asked = xcb_input_xi_select_events_checked(connection(), rootWindow(), 1, &mask.header);
    xcb_generic_error_t *error = xcb_request_check(connection(), asked);
    std::free(error);
    return error == nullptr;
}

bool PressWatch::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto *event = static_cast<const xcb_ge_generic_event_t *>(message);
    constexpr std::uint8_t typeMask = 0x7f;
    if ((event->response_type & typeMask) != XCB_GE_GENERIC || event->extension != m_extension ||
        event->event_type != XCB_INPUT_RAW_BUTTON_PRESS ||
        isWheelButton(static_cast<const xcb_input_raw_button_press_event_t *>(message)->detail) ||
        isPointerOnOwnWindow()) {
        return false;
    }
    QMetaObject::invokeMethod(
        qApp,
        [watch = QPointer(this)] {
            if (watch) {
                const std::function<void()> pressed = watch->m_pressed;
                pressed();
            }
        },
        Qt::QueuedConnection);
    return false;
}

} // namespace corvane::x11
