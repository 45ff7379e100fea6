// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <expected>

namespace corvane {

/// The bytes of the file at `path`, or why it cannot be read. What is no regular file is left alone, and so
/// is a file of more than `maximumSize` bytes. Blocks as long as the disk does: for worker threads.
[[nodiscard]] std::expected<QByteArray, QString> readRegularFile(const QByteArray &path, qint64 maximumSize);

} // namespace corvane
