// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/DateText.h"

#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>

using namespace Qt::StringLiterals;

namespace corvane {

QDateTime toDateTime(Date date)
{
    // Dates beyond Qt's range would overflow the conversion to whole milliseconds.
    constexpr double furthest = 9.0e15;
    // A double of seconds rarely represents a whole millisecond exactly; half a microsecond keeps it from
    // being rounded down to the previous one.
    const double milliseconds = std::floor(secondsSince1970(date) * 1000.0 + 0.0005);
    const double clamped = std::isnan(milliseconds) ? 0.0 : std::clamp(milliseconds, -furthest, furthest);
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(clamped), QTimeZone::utc()).toUTC();
}

Date fromDateTime(const QDateTime &dateTime)
{
    return dateSince1970(static_cast<double>(dateTime.toMSecsSinceEpoch()) / 1000.0);
}

QString iso8601Text(Date date)
{
    return toDateTime(date).toString(Qt::ISODateWithMs);
}

QString descriptionText(Date date)
{
    return toDateTime(date).toString(u"yyyy-MM-dd HH:mm:ss"_s) + u" +0000"_s;
}

QString shortTimeFormat(const QLocale &locale)
{
    return locale.timeFormat(QLocale::ShortFormat).replace(QChar(0x202F), u' ');
}

QString timeOfDayText(Date date, const QLocale &locale)
{
    // The short form of some locales, such as C, has seconds.
    static const QRegularExpression seconds(u"[:.]ss?"_s);
    QString format = shortTimeFormat(locale);
    format.remove(seconds);
    return locale.toString(toDateTime(date).toLocalTime().time(), format);
}

QString defaultDoubleText(double value)
{
    std::array<char, 64> buffer{};
    const bool plain = std::abs(value) < 1e16 && (value == 0.0 || std::abs(value) >= 1e-4);
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            plain ? std::chars_format::fixed : std::chars_format::scientific);
    Q_ASSERT(error == std::errc{});
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const auto result = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    return plain && text.find('.') == std::string_view::npos ? result + u".0"_s : result;
}

} // namespace corvane
