// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace corvane {

/// Why an operation of the platform failed, in words that may go into the log.
struct Failure {
    QString localizedDescription;

    friend bool operator==(const Failure &, const Failure &) = default;
};

} // namespace corvane
