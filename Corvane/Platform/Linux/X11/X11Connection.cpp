// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include "Corvane/Platform/Linux/X11/XcbRef.h"

#include <xcb/xcb.h>

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace corvane::x11 {

namespace {

// Interns the atom: the server creates it if it does not exist yet.
xcb_atom_t madeAtom(const char *name)
{
    const auto asked = xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection(), asked, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

constexpr std::uint8_t bitsOfNumber = 32;
constexpr std::uint8_t bitsOfText = 8;

} // namespace

xcb_connection_t *connection()
{
    const auto *x11 =
        qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 != nullptr ? x11->connection() : nullptr;
}

std::uint32_t rootWindow()
{
    xcb_connection_t *server = connection();
    return server != nullptr ? xcb_setup_roots_iterator(xcb_get_setup(server)).data->root : 0;
}

std::uint32_t atom(const char *name)
{
    xcb_connection_t *server = connection();
    if (server == nullptr) {
        return 0;
    }
    const auto asked = xcb_intern_atom(server, 1, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, asked, nullptr));
    return reply ? reply->atom : 0;
}

std::uint32_t selectionOwner(const char *name)
{
    const std::uint32_t selection = atom(name);
    if (selection == 0) {
        return 0;
    }
    const auto asked = xcb_get_selection_owner(connection(), selection);
    const Owned<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection(), asked, nullptr));
    return reply ? reply->owner : 0;
}

bool isComposited()
{
    // Each screen has a selection that its compositing manager owns; Qt uses the first screen.
    return selectionOwner("_NET_WM_CM_S0") != 0;
}

std::vector<std::uint32_t> property(std::uint32_t window, const char *name)
{
    const std::uint32_t nameAtom = atom(name);
    if (nameAtom == 0) {
        return {};
    }
    constexpr std::uint32_t most = 4096;
    const auto asked =
        xcb_get_property(connection(), 0, window, nameAtom, XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection(), asked, nullptr));
    if (!reply || reply->format != bitsOfNumber) {
        return {};
    }
    const auto *values = static_cast<const std::uint32_t *>(xcb_get_property_value(reply.get()));
    return {values,
            values + xcb_get_property_value_length(reply.get()) / static_cast<int>(sizeof(std::uint32_t))};
}

std::optional<PixelSize> rootSize()
{
    if (connection() == nullptr) {
        return std::nullopt;
    }
    const auto asked = xcb_get_geometry(connection(), rootWindow());
    const Owned<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(connection(), asked, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    return PixelSize{reply->width, reply->height};
}

std::optional<PixelPoint> pointer()
{
    if (connection() == nullptr) {
        return std::nullopt;
    }
    const auto asked = xcb_query_pointer(connection(), rootWindow());
    const Owned<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(connection(), asked, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    return PixelPoint{reply->root_x, reply->root_y};
}

std::vector<std::uint32_t> windowsAtPointer()
{
    std::vector<std::uint32_t> windows;
    std::uint32_t window = rootWindow();
    while (window != XCB_NONE) {
        const auto asked = xcb_query_pointer(connection(), window);
        const Owned<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(connection(), asked, nullptr));
        window = reply ? reply->child : XCB_NONE;
        if (window != XCB_NONE) {
            windows.push_back(window);
        }
    }
    return windows;
}

std::uint32_t topLevelOf(std::uint32_t window)
{
    for (;;) {
        const auto asked = xcb_query_tree(connection(), window);
        const Owned<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(connection(), asked, nullptr));
        if (!reply || reply->parent == XCB_NONE || reply->parent == reply->root) {
            return window;
        }
        window = reply->parent;
    }
}

std::optional<std::uint32_t> serverTime()
{
    if (connection() == nullptr) {
        return std::nullopt;
    }
    // The server reports its time only in events. They are read on a separate connection, because the
    // toolkit reads all events of Qt's.
    const OwnConnection server(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(server.get()) != 0) {
        return std::nullopt;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server.get())).data->root;
    const xcb_window_t window = xcb_generate_id(server.get());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(server.get(), XCB_COPY_FROM_PARENT, window, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_change_property(server.get(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                        bitsOfText, 0, nullptr);
    xcb_flush(server.get());
    constexpr std::uint8_t typeMask = 0x7f;
    while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(server.get())}) {
        if ((event->response_type & typeMask) == XCB_PROPERTY_NOTIFY) {
            return reinterpret_cast<const xcb_property_notify_event_t *>(event.get())->time;
        }
    }
    return std::nullopt;
}

void setNumber(std::uint32_t window, const char *name, std::uint32_t value)
{
    if (xcb_connection_t *server = connection()) {
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, madeAtom(name), XCB_ATOM_CARDINAL,
                            bitsOfNumber, 1, &value);
    }
}

void setText(std::uint32_t window, const char *name, std::string_view utf8)
{
    if (xcb_connection_t *server = connection()) {
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, window, madeAtom(name), madeAtom("UTF8_STRING"),
                            bitsOfText, static_cast<std::uint32_t>(utf8.size()), utf8.data());
    }
}

void appendAtoms(std::uint32_t window, const char *name, std::initializer_list<const char *> names)
{
    xcb_connection_t *server = connection();
    if (server == nullptr) {
        return;
    }
    std::vector<xcb_atom_t> atoms;
    for (const char *each : names) {
        atoms.push_back(madeAtom(each));
    }
    xcb_change_property(server, XCB_PROP_MODE_APPEND, window, madeAtom(name), XCB_ATOM_ATOM, bitsOfNumber,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

void activate(std::uint32_t window, std::uint32_t time)
{
    xcb_connection_t *server = connection();
    if (server == nullptr) {
        return;
    }
    constexpr std::uint32_t fromApplication = 1;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = bitsOfNumber;
    message.window = window;
    message.type = madeAtom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = fromApplication;
    message.data.data32[1] = time;
    xcb_send_event(server, 0, rootWindow(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(server);
}

void endStartup(std::string_view identifier)
{
    xcb_connection_t *server = connection();
    if (server == nullptr) {
        return;
    }
    std::string text = "remove: ID=\"";
    for (const char c : identifier) {
        if (c == '"' || c == '\\') {
            text += '\\';
        }
        text += c;
    }
    text += '"';
    // The text is sent in 20-byte messages from one window; a zero byte ends it.
    const xcb_window_t sender = xcb_generate_id(server);
    xcb_create_window(server, XCB_COPY_FROM_PARENT, sender, rootWindow(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = bitsOfText;
    message.window = sender;
    message.type = madeAtom("_NET_STARTUP_INFO_BEGIN");
    constexpr std::size_t pieceSize = 20;
    for (std::size_t at = 0; at <= text.size(); at += pieceSize) {
        std::array<char, pieceSize> piece{};
        std::copy_n(text.begin() + static_cast<std::ptrdiff_t>(at), std::min(pieceSize, text.size() - at),
                    piece.begin());
        std::memcpy(message.data.data8, piece.data(), pieceSize);
        xcb_send_event(server, 0, rootWindow(), XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&message));
        message.type = madeAtom("_NET_STARTUP_INFO");
    }
    xcb_destroy_window(server, sender);
    xcb_flush(server);
}

} // namespace corvane::x11
