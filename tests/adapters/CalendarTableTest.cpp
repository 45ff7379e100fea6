// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/EvolutionCalendars.h"
#include "Corvane/Platform/Linux/EvolutionData/IcsFolders.h"
#include "Corvane/Platform/Linux/EvolutionData/MergedEventStore.h"
#include "Corvane/Utilities/DateText.h"
#include "tests/adapters/CalendarRows.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>
#include <QUrl>

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

std::vector<CalendarRow> rows()
{
    std::vector<CalendarRow> all = plainRows();
    std::ranges::move(foreignRows(), std::back_inserter(all));
    return all;
}

QString describe(const CalendarEvent &event, const CalendarRow &row, const QTimeZone &zone, bool isLocal)
{
    const QTimeZone shown = isLocal ? zone : QTimeZone::utc();
    const auto text = [&](Date date) {
        const QDateTime time = toDateTime(date).toTimeZone(shown);
        const QString mark = time.date() < row.day ? u"-"_s : time.date() > row.day ? u"+"_s : QString();
        return mark + time.toString(u"hh:mm"_s);
    };
    QString line = (isLocal ? u"local "_s : QString()) + text(event.startDate) + u' ' + text(event.endDate);
    line += event.title.value_or(QString()).mid(QString::fromLatin1(row.name).size());
    if (event.url) {
        line += u" <"_s + event.url->toString() + u'>';
    }
    return event.isAllDay ? line + u" (whole day)"_s : line;
}

/// The titles and starts of the events that only one of both has.
QString difference(const std::vector<CalendarEvent> &served, const std::vector<CalendarEvent> &filed)
{
    QStringList lines;
    const auto add = [&](const QString &name, const auto &events, const auto &others) {
        for (const CalendarEvent &event : events) {
            if (std::ranges::find(others, event) == others.end()) {
                lines << name + event.title.value_or(QString()) + u' ' +
                             toDateTime(event.startDate).toUTC().toString(Qt::ISODate);
            }
        }
    };
    add(u"only from the service: "_s, served, filed);
    add(u"only from the folder: "_s, filed, served);
    return lines.isEmpty() ? u"in another order"_s : lines.join(u'\n');
}

QByteArray componentsOf(const std::vector<CalendarRow> &rows)
{
    QByteArray components = definedZones();
    for (const CalendarRow &row : rows) {
        // Titles contain spaces; identifiers must not.
        QByteArray text = row.components;
        text.replace("UID:%N", "UID:" + QByteArray(row.name).replace(' ', '-').replace(',', '-'));
        text.replace("%N", QByteArray(row.name).replace(",", "\\,"));
        text.replace("BEGIN:VEVENT\n", "BEGIN:VEVENT\nDTSTAMP:20250101T000000Z\n");
        components += text;
    }
    return components;
}

void addRows(const std::vector<CalendarRow> &rows)
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<int>("row");
    // The last two are hours away from UTC; the rows with UTC times fall on the same day in all of them.
    for (const char *zone : {"UTC", "Europe/Berlin", "America/Los_Angeles", "Asia/Kathmandu"}) {
        for (std::size_t row = 0; row < rows.size(); ++row) {
            QTest::addRow("%s: %s", zone, rows[row].name) << QByteArray(zone) << static_cast<int>(row);
        }
    }
}

} // namespace

class CalendarTableTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    DebugLogService m_log{m_folder.filePath(u"log"_s)};
    std::unique_ptr<CalendarService> m_service;
    QByteArray m_zone = "UTC";
    std::unique_ptr<EventStore> m_served;
    std::unique_ptr<EventStore> m_filed;
    std::unique_ptr<EventStore> m_filedOnly;
    std::map<std::tuple<EventStore *, QByteArray, QDate>, std::expected<std::vector<CalendarEvent>, Failure>>
        m_loads;

    void write(const QString &name, const QByteArray &text)
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_folder.filePath(name)).path()));
        QFile file(m_folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    using Events = std::expected<std::vector<CalendarEvent>, Failure>;

    /// Loads each day once for each store and time zone; rows of the same day share the load.
    const Events &eventsOf(EventStore &store, QDate date)
    {
        const auto [place, isNew] = m_loads.try_emplace({&store, m_zone, date});
        if (isNew) {
            place->second = QCoro::waitFor(store.events(dayOf(date)));
        }
        return place->second;
    }

    QStringList servedTitles(QDate date)
    {
        const Events events = QCoro::waitFor(m_served->events(dayOf(date)));
        QStringList found;
        for (const CalendarEvent &event : events ? *events : std::vector<CalendarEvent>()) {
            found << event.title.value_or(QString());
        }
        return found;
    }

    [[nodiscard]] DateInterval dayOf(QDate date) const
    {
        const QTimeZone timeZone(m_zone);
        return {fromDateTime(date.startOfDay(timeZone)), fromDateTime(date.addDays(1).startOfDay(timeZone))};
    }

    /// The occurrences of the row's events in `store`.
    QStringList occurrences(EventStore &store, const CalendarRow &row, const std::vector<CalendarRow> &all)
    {
        const QTimeZone timeZone(m_zone);
        const bool isLocal = !row.expected.isEmpty() && row.expected.first().startsWith(u"local"_s);
        const Events &events = eventsOf(store, row.day);
        if (!events) {
            return {events.error().localizedDescription};
        }
        QStringList found;
        for (const CalendarEvent &event : *events) {
            const QString title = event.title.value_or(QString());
            const QString name = QString::fromLatin1(row.name);
            if (title == name ||
                (title.startsWith(name + u' ') && std::ranges::none_of(all, [&](const CalendarRow &other) {
                     return QString::fromLatin1(other.name) == title;
                 }))) {
                found << describe(event, row, timeZone, isLocal);
            }
        }
        return found;
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QByteArray text = calendarText(componentsOf(rows()));
        CalendarService::writeCalendar(text);
        m_service = std::make_unique<CalendarService>();
        write(u"both/table.ics"_s, text);
        write(u"folders/table.ics"_s, calendarText(componentsOf(folderRows())));

        const TimeZoneId zone = [this] { return m_zone; };
        const auto services = std::make_shared<CalendarServices>(m_log, m_folder.filePath(u"memory"_s));
        using Sources = std::vector<std::shared_ptr<CalendarSource>>;
        m_served =
            std::make_unique<MergedEventStore>(Sources{std::make_shared<EvolutionCalendars>(services)}, zone);
        const auto folder = [&](const QString &name) {
            return std::make_unique<MergedEventStore>(
                Sources{std::make_shared<IcsFolders>(services, QStringList{m_folder.filePath(name)})}, zone);
        };
        m_filed = folder(u"both"_s);
        m_filedOnly = folder(u"folders"_s);
        QVERIFY(QCoro::waitFor(m_served->requestFullAccessToEvents()).value_or(false));
        QVERIFY(QCoro::waitFor(m_filed->requestFullAccessToEvents()).value_or(false));
        QVERIFY(QCoro::waitFor(m_filedOnly->requestFullAccessToEvents()).value_or(false));
        // Rules that the service could not read are found after the first load.
        QTRY_VERIFY_WITH_TIMEOUT(
            servedTitles(QDate(2025, 5, 14)).contains(u"rule that ends with a private part"_s), 30000);
    }

    void cleanupTestCase()
    {
        m_served.reset();
        m_filed.reset();
        m_service.reset();
    }

    void bothAdaptersReturnTheOccurrences_data() { addRows(rows()); }

    void bothAdaptersReturnTheOccurrences()
    {
        QFETCH(QByteArray, zone);
        QFETCH(int, row);
        m_zone = zone;
        const auto all = rows();
        const CalendarRow &expected = all[static_cast<std::size_t>(row)];
        for (EventStore *store : {m_filed.get(), m_served.get()}) {
            QCOMPARE(occurrences(*store, expected, all), expected.expected);
        }
    }

    void foldersReturnMore_data() { addRows(folderRows()); }

    void foldersReturnMore()
    {
        QFETCH(QByteArray, zone);
        QFETCH(int, row);
        m_zone = zone;
        const auto all = folderRows();
        const CalendarRow &expected = all[static_cast<std::size_t>(row)];
        QCOMPARE(occurrences(*m_filedOnly, expected, all), expected.expected);
    }

    void bothAdaptersAgreeOnEveryDayOfAYear()
    {
        for (const char *zone : {"UTC", "Europe/Berlin", "America/Los_Angeles"}) {
            m_zone = zone;
            const QTimeZone timeZone(m_zone);
            for (QDate date(2025, 1, 1); date < QDate(2026, 1, 1); date = date.addMonths(1)) {
                const DateInterval month{fromDateTime(date.startOfDay(timeZone)),
                                         fromDateTime(date.addMonths(1).startOfDay(timeZone))};
                const auto served = QCoro::waitFor(m_served->events(month));
                const auto filed = QCoro::waitFor(m_filed->events(month));
                QVERIFY(served.has_value() && filed.has_value());
                QVERIFY2(*served == *filed, qPrintable(QString::fromLatin1(zone) + date.toString() + u'\n' +
                                                       difference(*served, *filed)));
            }
        }
    }
};

QUILLET_TEST(CalendarTableTest, runTest<CalendarTableTest>);
#include "CalendarTableTest.moc"
