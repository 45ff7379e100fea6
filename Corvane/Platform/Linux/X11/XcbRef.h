// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace corvane::x11 {

struct FreeReply {
    void operator()(void *reply) const { std::free(reply); }
};
/// A reply of the X server.
template <typename Reply>
using Owned = std::unique_ptr<Reply, FreeReply>;

struct Disconnect {
    void operator()(xcb_connection_t *server) const { xcb_disconnect(server); }
};
/// A connection of our own, beside the toolkit's.
using OwnConnection = std::unique_ptr<xcb_connection_t, Disconnect>;

} // namespace corvane::x11
