// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>

namespace corvane::look {

/// `content` in an area that scrolls it where it is larger: as wide as the area while it can be, centred
/// where it cannot be as wide. The keys that scroll work wherever in it the keyboard is.
[[nodiscard]] QScrollArea *scrolling(QWidget *content);

} // namespace corvane::look
