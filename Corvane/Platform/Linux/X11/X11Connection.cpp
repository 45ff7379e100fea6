// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <xcb/xcb.h>

#include <QGuiApplication>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace corvane::x11 {

namespace {

struct Free {
    void operator()(void *reply) const { std::free(reply); }
};
template <typename Reply>
using Owned = std::unique_ptr<Reply, Free>;

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

bool isComposited()
{
    // A compositing manager owns the selection of its screen; Qt uses the first one.
    const std::uint32_t selection = atom("_NET_WM_CM_S0");
    if (selection == 0) {
        return false;
    }
    const auto asked = xcb_get_selection_owner(connection(), selection);
    const Owned<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection(), asked, nullptr));
    return reply && reply->owner != XCB_NONE;
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
    constexpr int bitsOfAValue = 32;
    if (!reply || reply->format != bitsOfAValue) {
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

} // namespace corvane::x11
