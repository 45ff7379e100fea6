// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstddef>
#include <set>

namespace corvane {

/// Stands for an event's identifier: two identifiers with one key are taken for one.
using IdentifierKey = std::size_t;

[[nodiscard]] IdentifierKey identifierKey(QByteArrayView identifier);

/// The identifiers that calendar text names, whatever it is else. A pure function, linear in the text.
[[nodiscard]] std::set<IdentifierKey> identifiersIn(const QByteArray &text);

} // namespace corvane
