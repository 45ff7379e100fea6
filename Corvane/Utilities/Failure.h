// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// Why a platform operation failed, in words that may be logged.
struct Failure {
    QString localizedDescription;

    friend bool operator==(const Failure &, const Failure &) = default;
};

} // namespace corvane
