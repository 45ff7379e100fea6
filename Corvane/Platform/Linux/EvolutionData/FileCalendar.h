// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/CalendarExpander.h"
#include "Corvane/Platform/Linux/EvolutionData/CalendarIdentifiers.h"
#include "Corvane/Platform/Linux/EvolutionData/FolderListing.h"
#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include <QByteArray>
#include <QDeadlineTimer>

#include <memory>
#include <optional>
#include <set>
#include <utility>

namespace corvane {

/// A calendar file. It is read again only when it has changed.
class FileCalendar final : public SourceCalendar {
public:
    FileCalendar(std::shared_ptr<CalendarServices> services, const QByteArray &path);
    ~FileCalendar() override;

    /// Begins the identifiers of files.
    static constexpr QLatin1StringView identifierPrefix{"file:"};
    [[nodiscard]] static QByteArray pathOf(const QString &identifier);

    /// A larger file is left out. In bytes.
    static constexpr qint64 maximumSize = 20'000'000;

    void setStamp(const FileStamp &stamp);

    /// The file cannot be looked at now, and was not in this run: what it held in an earlier one stands in.
    void setUnreachable(const QString &reason);

    /// Finds out which events the file names, or named when it was read last, also in an earlier run. Ends at
    /// `deadline`, and goes on at the next call.
    static QCoro::Task<void> index(std::shared_ptr<FileCalendar> self, QDeadlineTimer deadline);
    using Identifiers = std::shared_ptr<const std::set<IdentifierKey>>;
    /// As it was found out last: another object when it was found out anew. Never null.
    [[nodiscard]] const Identifiers &identifiers() const { return m_identifiers; }

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

    static QCoro::Task<void> indexFile(std::shared_ptr<FileCalendar> self, QDeadlineTimer deadline);

    QByteArray m_path;
    FileStamp m_stamp;
    QString m_unreachable;
    std::shared_ptr<CalendarExpander> m_expander;
    std::optional<Contents> m_contents;
    std::optional<Rejection> m_rejection;

    struct Indexing {
        FileStamp stamp;
        Pending<std::shared_ptr<std::optional<std::set<IdentifierKey>>>> identifiers;
    };
    std::optional<Indexing> m_indexing;
    std::optional<FileStamp> m_indexedStamp;
    Identifiers m_identifiers = std::make_shared<const std::set<IdentifierKey>>();
};

} // namespace corvane
