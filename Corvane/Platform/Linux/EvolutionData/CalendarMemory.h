// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/DayCalendar.h"
#include "Corvane/Utilities/Failure.h"

#include <QByteArray>
#include <QString>

#include <expected>
#include <optional>
#include <vector>

namespace corvane {

/// What a calendar held when it last answered.
struct RememberedCalendar {
    QString identifier;
    QString name;
    QString account;
    Date readAt;
    /// The days that `text` is complete for. Outside of them it tells nothing.
    DateInterval span;
    /// Calendar text: the events and series that matter in `span`, with their zones. It may hold no event.
    QByteArray text;

    friend bool operator==(const RememberedCalendar &, const RememberedCalendar &) = default;
};

/// The form of a memory on disk: a version, a checksum of all that follows, and the calendar.
[[nodiscard]] QByteArray encodeMemory(const RememberedCalendar &calendar);
/// Fails for bytes of another version, and for damaged ones.
[[nodiscard]] std::expected<RememberedCalendar, Failure> decodeMemory(const QByteArray &bytes);

/// What the calendars last answered, in one file a calendar, which only the user can read. A value that knows
/// its folder; its calls block as long as the disk does: for worker threads, and for one calendar on one
/// thread at a time.
class CalendarMemory {
public:
    /// A calendar whose text is larger is not remembered. In bytes.
    static constexpr qint64 maximumTextSize = 4'000'000;

    /// `folder` is an absolute path; it is made when there is something to remember.
    explicit CalendarMemory(QString folder);

    /// Nothing where there is no memory of the calendar, or a damaged one.
    [[nodiscard]] std::optional<RememberedCalendar> read(const QString &identifier) const;

    /// Every calendar whose identifier begins with `prefix`.
    [[nodiscard]] std::vector<RememberedCalendar> readAll(const QString &prefix) const;

    /// Replaces what was remembered of the calendar.
    [[nodiscard]] std::expected<void, Failure> write(const RememberedCalendar &calendar) const;

    /// Forgets a calendar that was removed or switched off.
    void forget(const QString &identifier) const;

    /// Forgets the calendars that were read so long before `now` that their span is over.
    void forgetExpired(Date now) const;

private:
    [[nodiscard]] QString path(const QString &identifier) const;

    QString m_folder;
};

} // namespace corvane
