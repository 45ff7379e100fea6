// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarSource.h"

#include <QStringList>

#include <expected>
#include <memory>

namespace corvane {

/// Folders of calendar files (".ics" in any letter case), read with their subfolders.
///
/// Files are read and expanded on worker threads, each again only when its size or its time of modification
/// has changed. A file that cannot be read, that holds no calendar or that is too large is logged and left
/// out. Links are followed, each folder is read once.
class IcsFolders final : public CalendarSource {
public:
    /// A larger file is left out. In bytes.
    static constexpr qint64 maximumFileSize = 20'000'000;

    /// `folders` are absolute paths; none of them needs to exist.
    IcsFolders(DebugLogService &log, const QStringList &folders, TimeZoneId timeZoneId);
    ~IcsFolders() override;
    IcsFolders(const IcsFolders &) = delete;
    IcsFolders &operator=(const IcsFolders &) = delete;

    QCoro::Task<std::expected<bool, Failure>> checkAvailability(QDeadlineTimer deadline) override;
    QCoro::Task<CalendarAnswers> query(DateInterval interval, QDeadlineTimer deadline) override;
    void close() override;

private:
    class Impl;
    std::shared_ptr<Impl> m_impl;
};

} // namespace corvane
