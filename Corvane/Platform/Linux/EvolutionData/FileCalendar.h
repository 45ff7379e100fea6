// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarExpander.h"
#include "Corvane/Platform/Linux/EvolutionData/FolderListing.h"
#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include <QByteArray>

#include <memory>
#include <optional>

namespace corvane {

/// A calendar file. It is read again only when it has changed.
class FileCalendar final : public SourceCalendar {
public:
    FileCalendar(std::shared_ptr<CalendarServices> services, const QByteArray &path);
    ~FileCalendar() override;

    /// A larger file is left out. In bytes.
    static constexpr qint64 maximumSize = 20'000'000;

    void setStamp(const FileStamp &stamp);

    void close() override;

protected:
    QCoro::Task<Reading> read(CalendarQuestion question) override;
    QCoro::Task<std::optional<QByteArray>> capture(CalendarQuestion span) override;

private:
    struct Contents {
        FileStamp stamp;
        CalendarQuestion question;
        CalendarReading reading;
        /// Calendar text of what matters in the remembered span.
        std::optional<QByteArray> text;
    };
    /// What made a state of the file no calendar.
    struct Rejection {
        FileStamp stamp;
        CalendarError error;
    };

    QByteArray m_path;
    FileStamp m_stamp;
    std::shared_ptr<CalendarExpander> m_expander;
    std::optional<Contents> m_contents;
    std::optional<Rejection> m_rejection;
};

} // namespace corvane
