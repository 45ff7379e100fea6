// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

class QWidget;

namespace corvane::look {

/// Calls `change`, which replaces the content of `area`, at once; the user sees the old page fade and slide
/// to the new one. `isForward` is the direction in reading order.
void slidePage(QWidget &area, bool isForward, const std::function<void()> &change);

} // namespace corvane::look
