// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/DateText.h"
#include "Corvane/Utilities/DayCalendar.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

/// A local time in `zone`.
Date in(const char *zone, const char *local)
{
    const QDateTime clock = QDateTime::fromString(QString::fromLatin1(local), Qt::ISODate);
    return fromDateTime(QDateTime(clock.date(), clock.time(), QTimeZone(zone)));
}

double hours(DateInterval interval)
{
    return (interval.end - interval.start).count() / 3600;
}

} // namespace

class DateTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void timesOfDayFollowTheLocaleAndLeaveSecondsOut()
    {
        const Date morning = at("09:05:59.9");
        const Date evening = at("21:05:00");
        QCOMPARE(timeOfDayText(morning, QLocale::c()), u"09:05"_s);
        QCOMPARE(timeOfDayText(evening, QLocale(u"de_DE"_s)), u"21:05"_s);
        QCOMPARE(timeOfDayText(morning, QLocale(u"en_US"_s)), u"9:05 AM"_s);
        QCOMPARE(timeOfDayText(evening, QLocale(u"en_US"_s)), u"9:05 PM"_s);
        QCOMPARE(timeOfDayText(evening, QLocale(u"da_DK"_s)), u"21.05"_s);
        QCOMPARE(timeOfDayText(at("00:00:00"), QLocale(u"en_GB"_s)), u"00:00"_s);
    }

    void noTimeOfDayHasANarrowNoBreakSpace()
    {
        for (const QLocale &locale :
             QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
            QVERIFY(!shortTimeFormat(locale).contains(QChar(0x202F)));
        }
    }

    void timestampsKeepTheirMilliseconds()
    {
        for (int millisecond = 0; millisecond < 1000; ++millisecond) {
            const QString text = iso8601Text(dateSince1970(1763190000 + millisecond / 1000.0));
            QCOMPARE(text, u"2025-11-15T07:00:00.%1Z"_s.arg(millisecond, 3, 10, QChar(u'0')));
        }
    }

    void descriptionsAreInUtc()
    {
        QCOMPARE(descriptionText(at("09:00:00.9")), u"2026-11-16 09:00:00 +0000"_s);
    }

    void doublesHaveTheirShortestTextWithAFraction()
    {
        QCOMPARE(defaultDoubleText(1731657600), u"1731657600.0"_s);
        QCOMPARE(defaultDoubleText(1731657600.5), u"1731657600.5"_s);
        QCOMPARE(defaultDoubleText(0), u"0.0"_s);
        QCOMPARE(defaultDoubleText(-148), u"-148.0"_s);
        QCOMPARE(defaultDoubleText(0.1), u"0.1"_s);
        QCOMPARE(defaultDoubleText(1731657600.1234567).toDouble(), 1731657600.1234567);
    }

    void doublesFarFromOneHaveAnExponent()
    {
        QCOMPARE(defaultDoubleText(9999999999999998), u"9999999999999998.0"_s);
        QCOMPARE(defaultDoubleText(-9999999999999998), u"-9999999999999998.0"_s);
        QCOMPARE(defaultDoubleText(1e16), u"1e+16"_s);
        QCOMPARE(defaultDoubleText(-1e16), u"-1e+16"_s);
        QCOMPARE(defaultDoubleText(0.0001), u"0.0001"_s);
        QCOMPARE(defaultDoubleText(0.00009), u"9e-05"_s);
    }

    void unusableDatesHaveAText()
    {
        QCOMPARE(descriptionText(dateSince1970(std::numeric_limits<double>::quiet_NaN())),
                 u"1970-01-01 00:00:00 +0000"_s);
        const double infinity = std::numeric_limits<double>::infinity();
        QCOMPARE(toDateTime(dateSince1970(infinity)).toMSecsSinceEpoch(), 9'000'000'000'000'000);
        QCOMPARE(toDateTime(dateSince1970(-infinity)).toMSecsSinceEpoch(), -9'000'000'000'000'000);
    }

    void aDayLastsFromMidnightToMidnight()
    {
        const DayCalendar calendar(QTimeZone("Europe/Berlin"));
        const DateInterval day = calendar.dayInterval(in("Europe/Berlin", "2026-11-16T23:59:59"));
        QCOMPARE(day.start, in("Europe/Berlin", "2026-11-16T00:00:00"));
        QCOMPARE(day.end, in("Europe/Berlin", "2026-11-17T00:00:00"));
        QCOMPARE(calendar.dayInterval(day.start).start, day.start);
        QCOMPARE(calendar.dayInterval(day.end).start, day.end);
        QCOMPARE(calendar.timeZoneIdentifier(), u"Europe/Berlin"_s);
    }

    void daylightSavingDaysHave23And25Hours()
    {
        const DayCalendar calendar(QTimeZone("Europe/Berlin"));
        QCOMPARE(hours(calendar.dayInterval(in("Europe/Berlin", "2026-03-29T12:00:00"))), 23.0);
        QCOMPARE(hours(calendar.dayInterval(in("Europe/Berlin", "2026-10-25T12:00:00"))), 25.0);
        QCOMPARE(hours(calendar.dayInterval(in("Europe/Berlin", "2026-10-26T12:00:00"))), 24.0);
    }

    void aDayWithoutAMidnightBeginsWithItsFirstMoment()
    {
        // That night the clocks jump from 23:59:59 to 01:00:00.
        const DayCalendar calendar(QTimeZone("Africa/Cairo"));
        const DateInterval day = calendar.dayInterval(in("Africa/Cairo", "2010-04-30T12:00:00"));
        QCOMPARE(day.start, in("Africa/Cairo", "2010-04-30T01:00:00"));
        QCOMPARE(hours(day), 23.0);
    }

    void aDayWithTwoMidnightsBeginsAtTheFirst_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::newRow("Havana") << QByteArray("America/Havana") << u"2025-11-02T04:00:00Z"_s
                                << u"2025-11-03T05:00:00Z"_s;
        QTest::newRow("Azores") << QByteArray("Atlantic/Azores") << u"2025-10-26T00:00:00Z"_s
                                << u"2025-10-27T01:00:00Z"_s;
    }

    void aDayWithTwoMidnightsBeginsAtTheFirst()
    {
        QFETCH(QByteArray, zone);
        QFETCH(QString, start);
        QFETCH(QString, end);
        const auto moment = [](const QString &text) {
            return fromDateTime(QDateTime::fromString(text, Qt::ISODate));
        };
        const DayCalendar calendar{QTimeZone(zone)};
        const DateInterval day{moment(start), moment(end)};
        QCOMPARE(calendar.dayInterval(day.start), day);
        QCOMPARE(calendar.dayInterval(day.start + Seconds{1800}), day);
        QCOMPARE(calendar.dayInterval(day.start + Seconds{5400}), day);
        QCOMPARE(calendar.dayInterval(day.start - Seconds{1}).end, day.start);
        QCOMPARE(calendar.dayInterval(day.end).start, day.end);
    }

    void aPathNamesItsZone_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("the zone file") << u"/usr/share/zoneinfo/Asia/Tokyo"_s;
        QTest::newRow("with a colon") << u":/usr/share/zoneinfo/Asia/Tokyo"_s;
        QTest::newRow("a link to it") << u"link"_s;
    }

    void aPathNamesItsZone()
    {
        QFETCH(QString, path);
        const QTemporaryDir folder;
        if (path == u"link") {
            path = folder.filePath(u"localtime"_s);
            QVERIFY(QFile::link(u"/usr/share/zoneinfo/Asia/Tokyo"_s, path));
        }
        const QByteArray before = qgetenv("TZ");
        qputenv("TZ", QFile::encodeName(path));
        const QByteArray id = systemTimeZoneId();
        const QString identifier = DayCalendar::current().timeZoneIdentifier();
        qputenv("TZ", before);
        QCOMPARE(id, QByteArray("Asia/Tokyo"));
        QCOMPARE(identifier, u"Asia/Tokyo"_s);
    }

    void anUnknownZoneIsTreatedAsUtc()
    {
        const QByteArray before = qgetenv("TZ");
        qputenv("TZ", "Nowhere/Atlantis");
        const DayCalendar calendar = DayCalendar::current();
        qputenv("TZ", before);
        QCOMPARE(hours(calendar.dayInterval(at("12:00:00"))), 24.0);
        QCOMPARE(calendar.dayInterval(at("12:00:00")).start, at("00:00:00"));
        QVERIFY(!calendar.isInSameDay(at("12:00:00"), at("12:00:00") + minutes(1440)));
    }

    void theSameDayDependsOnTheCalendarsZone()
    {
        const DayCalendar berlin(QTimeZone("Europe/Berlin"));
        const DayCalendar tokyo(QTimeZone("Asia/Tokyo"));
        const Date evening = at("14:30:00");
        const Date night = at("15:30:00");
        QVERIFY(berlin.isInSameDay(evening, night));
        QVERIFY(!tokyo.isInSameDay(evening, night));
    }
};

QUILLET_TEST(DateTextTest, runTest<DateTextTest>);
#include "DateTextTest.moc"
