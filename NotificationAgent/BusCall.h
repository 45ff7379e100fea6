// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusMessage>

namespace corvane {

/// A call of one of the bus's own methods.
[[nodiscard]] QDBusMessage busCall(const QString &method);

} // namespace corvane
