// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

class QWidget;

namespace corvane::look {

/// Has `change` change what `area` shows, at once; what is seen slides there from what was shown before, and
/// fades. `isForward` tells the direction in which the pages are read.
void slidePage(QWidget &area, bool isForward, const std::function<void()> &change);

} // namespace corvane::look
