// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>

namespace corvane::look {

/// A scroll area round `content`, which gets the area's width within its own limits and is centred. The
/// scroll keys work wherever in the content the keyboard focus is.
[[nodiscard]] QScrollArea *scrolling(QWidget *content);

} // namespace corvane::look
