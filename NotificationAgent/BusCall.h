// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusMessage>

namespace corvane {

/// The usual time limit for calls of the bus's own methods, in milliseconds; they may start a service.
inline constexpr int busTimeout = 25'000;

/// A call of one of the bus's own methods.
[[nodiscard]] QDBusMessage busCall(const QString &method);

} // namespace corvane
