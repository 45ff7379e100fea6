// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QList>

namespace corvane {

/// The bell for status item hosts, in the sizes that they use. A host does not report whether it is light or
/// dark, so the bell is light with a dark rim: one of the two stands out on any host.
[[nodiscard]] QList<QImage> statusBellImages();

} // namespace corvane
