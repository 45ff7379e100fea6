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

/// A calendar file. It is read again only when the file, the question or the shared events have changed.
class FileCalendar final : public SourceCalendar {
public:
    FileCalendar(std::shared_ptr<CalendarServices> services, const QByteArray &path);
    ~FileCalendar() override;

    /// The prefix of the identifiers of files.
    static constexpr QLatin1StringView identifierPrefix{"file:"};
    [[nodiscard]] static QByteArray pathOf(const QString &identifier);

    /// A larger file is not read. In bytes.
    static constexpr qint64 maximumSize = 20'000'000;

    void setStamp(const FileStamp &stamp);

    /// Called if the file cannot be examined and has not been in this run: its contents from an earlier run
    /// are used.
    void setUnreachable(const QString &reason);

    /// Determines which events the file names, or named when it was last read, possibly in an earlier run.
    /// Ends at `deadline`; the next call goes on.
    static QCoro::Task<void> index(std::shared_ptr<FileCalendar> self, QDeadlineTimer deadline);
    using Identifiers = std::shared_ptr<const std::set<IdentifierKey>>;
    /// The last result of index(): a different object after each new result. Never null.
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
    /// Why the file, in this state, is not a calendar.
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
