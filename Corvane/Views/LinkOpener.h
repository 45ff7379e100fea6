// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QUrl>

#include <functional>

namespace corvane {

/// Opens a URL with the desktop's program for it; returns whether there was one.
using LinkOpener = std::function<bool(const QUrl &)>;

} // namespace corvane
