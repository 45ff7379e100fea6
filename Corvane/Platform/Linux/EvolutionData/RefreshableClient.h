// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qcoro/qcorotask.h>

namespace corvane {

/// An open calendar, as ServerRefresh needs it. Main thread only.
class RefreshableClient {
public:
    virtual ~RefreshableClient() = default;

    /// Whether the calendar has to be opened again.
    [[nodiscard]] virtual bool isDead() const = 0;

    /// Whether it has a server that can be asked for news.
    [[nodiscard]] virtual bool canRefresh() const = 0;

    /// Whether the server could be asked. The caller keeps the client alive.
    virtual QCoro::Task<bool> refresh() = 0;
};

} // namespace corvane
