// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarSource.h"

#include <QStringList>

#include <expected>
#include <memory>

namespace corvane {

struct CalendarServices;

/// Folders of calendar files, with their subfolders; each file is a calendar. While a file cannot be read, or
/// is incomplete, its earlier contents are used; a file that is not a calendar is logged and left out.
class IcsFolders final : public CalendarSource {
public:
    /// `folders` are absolute paths; none of them has to exist.
    IcsFolders(std::shared_ptr<CalendarServices> services, const QStringList &folders);
    ~IcsFolders() override;
    IcsFolders(const IcsFolders &) = delete;
    IcsFolders &operator=(const IcsFolders &) = delete;

    QCoro::Task<std::expected<bool, Failure>> checkAvailability(QDeadlineTimer deadline) override;
    QCoro::Task<CalendarAnswers> query(CalendarQuestion question, QDeadlineTimer deadline) override;
    void close() override;

private:
    class Impl;
    std::shared_ptr<Impl> m_impl;
};

} // namespace corvane
