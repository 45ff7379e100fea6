// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QList>

namespace corvane {

/// The bell for a desktop's panel, in the sizes that panels use. A panel does not tell whether it is light or
/// dark, so that the bell is light with a dark rim: one of the two stands out on any panel.
[[nodiscard]] QList<QImage> statusBellImages();

} // namespace corvane
