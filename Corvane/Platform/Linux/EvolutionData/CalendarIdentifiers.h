// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstddef>
#include <set>

namespace corvane {

/// A hash of an event's identifier: identifiers with the same key count as the same.
using IdentifierKey = std::size_t;

[[nodiscard]] IdentifierKey identifierKey(QByteArrayView identifier);

/// The identifiers that a text names, even if it is no valid calendar text. A pure function, linear in the
/// text.
[[nodiscard]] std::set<IdentifierKey> identifiersIn(const QByteArray &text);

} // namespace corvane
