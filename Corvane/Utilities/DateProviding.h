// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

namespace corvane {

/// A clock handed in at construction.
class DateProviding {
public:
    virtual ~DateProviding() = default;

    /// The present moment, read at each call.
    [[nodiscard]] virtual Date now() const = 0;
};

/// The system's clock.
class SystemDateProvider final : public DateProviding {
public:
    [[nodiscard]] Date now() const override { return currentDate(); }
};

} // namespace corvane
