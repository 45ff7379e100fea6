// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

namespace corvane {

/// A clock that is injected at construction.
class DateProviding {
public:
    virtual ~DateProviding() = default;

    /// The current time at each call.
    [[nodiscard]] virtual Date now() const = 0;
};

/// The system's clock.
class SystemDateProvider final : public DateProviding {
public:
    [[nodiscard]] Date now() const override { return currentDate(); }
};

} // namespace corvane
