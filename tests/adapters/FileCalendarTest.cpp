// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/FileCalendar.h"
#include "tests/adapters/CalendarRoom.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

const QDeadlineTimer forever{QDeadlineTimer::Forever};
const CalendarQuestion today{testDay(), "UTC"};

} // namespace

/// One calendar file, without the folder that finds it.
class FileCalendarTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_room;
    std::unique_ptr<DebugLogService> m_log;
    std::shared_ptr<CalendarServices> m_services;

    [[nodiscard]] QByteArray path() const { return QFile::encodeName(m_room->filePath(u"a.ics"_s)); }

    [[nodiscard]] std::shared_ptr<FileCalendar> makeCalendar(const QByteArray &components) const
    {
        QFile file(QFile::decodeName(path()));
        if (!file.open(QIODevice::WriteOnly) || file.write(calendarText(components)) < 0) {
            qFatal("the calendar file cannot be written");
        }
        file.close();
        const auto calendar = std::make_shared<FileCalendar>(m_services, path());
        calendar->setStamp(listFolders({QFile::encodeName(m_room->path())}).files.at(path()));
        return calendar;
    }

    static CalendarAnswers ask(const std::shared_ptr<FileCalendar> &calendar)
    {
        CalendarAnswers answers;
        QCoro::waitFor(SourceCalendar::query(calendar, today, forever, forever, answers));
        return answers;
    }

    void remember(const QByteArray &components) const
    {
        const QString identifier = FileCalendar::identifierPrefix + QFile::decodeName(path());
        const DateInterval span{testDay().start, testDay(8).start};
        QVERIFY(
            m_services->memory.write({identifier, u"a.ics"_s, {}, span.start, span, calendarText(components)})
                .has_value());
    }

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<QTemporaryDir>();
        m_log = std::make_unique<DebugLogService>(m_room->filePath(u"log"_s));
        m_services = std::make_shared<CalendarServices>(*m_log, m_room->filePath(u"memory"_s));
    }

    void cleanup()
    {
        const std::weak_ptr<CalendarServices> services = std::exchange(m_services, nullptr);
        QTRY_VERIFY(services.expired()); // pending writes of the memory have ended
        m_log.reset();
    }

    void anUnreachableFileIsNotOpened()
    {
        remember(lesson("Zoom - Anna"));
        const auto calendar = makeCalendar(lesson("Zoom - Ben"));
        calendar->setUnreachable(u"its folder did not answer in time"_s);
        QCoro::waitFor(FileCalendar::index(calendar, forever));
        QCOMPARE(*calendar->identifiers(), identifiersIn(calendarText(lesson("Zoom - Anna"))));
        const CalendarAnswers answers = ask(calendar);
        QCOMPARE(titles(answers.events), QStringList{u"Zoom - Anna"_s});
        QCOMPARE(calendar->status().reason, u"its folder did not answer in time"_s);
    }

    void anInterruptedReadingIsRepeated()
    {
        // A tenth of a second of work, so that the expansion still runs when it is stopped. Under the
        // sanitizers steps take far longer, and the expansion must stay below its time limit.
#ifdef __SANITIZE_ADDRESS__
        const QByteArray start = "20250501T120";
#else
        const QByteArray start = "20250101T120";
#endif
        const auto calendar =
            makeCalendar("BEGIN:VEVENT\nUID:dense\nDTSTART:" + start + "000Z\nDTEND:" + start +
                         "100Z\nRRULE:FREQ=MINUTELY;INTERVAL=10\nSUMMARY:dense\nEND:VEVENT\n");
        CalendarAnswers first;
        auto reading = SourceCalendar::query(calendar, today, forever, forever, first);
        const QDeadlineTimer deadline(20000);
        while (m_services->workers.threads().activeThreadCount() == 0 && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
        }
        calendar->close();
        QCoro::waitFor(reading);
        QCOMPARE(first.events.size(), std::size_t{0});
        QCOMPARE(ask(calendar).events.size(), std::size_t{144});
    }
};

QUILLET_TEST(FileCalendarTest, runTest<FileCalendarTest>);
#include "FileCalendarTest.moc"
