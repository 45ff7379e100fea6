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

/// What a calendar contained when it last answered.
struct RememberedCalendar {
    QString identifier;
    QString name;
    QString account;
    Date readAt;
    /// The days for which `text` is complete; it tells nothing about other days.
    DateInterval span;
    /// Calendar text: the events and series that matter in `span`, with their zones. It may contain no event.
    QByteArray text;

    friend bool operator==(const RememberedCalendar &, const RememberedCalendar &) = default;
};

/// The format of a memory on disk: a version, a checksum of all that follows, and the calendar.
[[nodiscard]] QByteArray encodeMemory(const RememberedCalendar &calendar);
/// Fails for other versions and for damaged bytes.
[[nodiscard]] std::expected<RememberedCalendar, Failure> decodeMemory(const QByteArray &bytes);

/// The last answers of the calendars, in one file per calendar, which only the user can read. A value that
/// knows its folder. Calls block as long as the disk does: for worker threads, and for one thread at a time
/// per calendar.
class CalendarMemory {
public:
    /// A calendar whose text is larger is not remembered. In bytes.
    static constexpr qint64 maximumTextSize = 4'000'000;

    /// `folder` is an absolute path; it is created when there is something to remember.
    explicit CalendarMemory(QString folder);

    /// None if the calendar is not remembered, or its file is damaged.
    [[nodiscard]] std::optional<RememberedCalendar> read(const QString &identifier) const;

    /// Every remembered calendar whose identifier begins with `prefix`.
    [[nodiscard]] std::vector<RememberedCalendar> readAll(const QString &prefix) const;

    /// Replaces what was remembered of the calendar. A text that is too large fails and removes the earlier
    /// one.
    [[nodiscard]] std::expected<void, Failure> write(const RememberedCalendar &calendar) const;

    /// Forgets a calendar that was removed or disabled.
    void forget(const QString &identifier) const;

    /// Forgets the calendars that were read so long before `now` that their span has ended.
    void forgetExpired(Date now) const;

private:
    [[nodiscard]] QString path(const QString &identifier) const;

    QString m_folder;
};

} // namespace corvane
