// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <gio/gio.h>

#include "Corvane/Platform/Linux/Waiting/Pending.h"

#include <memory>

namespace corvane {

/// Starts an asynchronous GLib call. `start` is given the callback and its user data; the caller passes the
/// result to the call's own finish function. A callback after everyone has stopped waiting is harmless.
template <typename Start>
[[nodiscard]] Pending<GObjectRef<GAsyncResult>> startGioCall(Start start)
{
    using Result = Pending<GObjectRef<GAsyncResult>>;
    Result pending;
    start(
        +[](GObject *, GAsyncResult *result, gpointer data) {
            const std::unique_ptr<Result> pending(static_cast<Result *>(data));
            pending->resolve(GObjectRef<GAsyncResult>::share(result));
        },
        static_cast<gpointer>(new Result(pending)));
    return pending;
}

} // namespace corvane
