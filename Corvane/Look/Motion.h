// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

namespace corvane::look {

/// The duration of an animation in `widget`, in milliseconds: `wanted`, or 0 if nobody sees it or the desktop
/// wants no motion.
[[nodiscard]] int motionDuration(const QWidget &widget, int wanted);

} // namespace corvane::look
