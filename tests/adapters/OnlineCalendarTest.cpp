// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"
#include "tests/support/CalDavServer.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr auto limit = 5000; // milliseconds; a load gives up after 4.5 s

QByteArray lesson(const QByteArray &title, const QByteArray &hour = "12")
{
    return "BEGIN:VEVENT\nUID:" + title.simplified().replace(' ', '-') +
           "\nDTSTAMP:20250101T000000Z\nDTSTART:20250514T" + hour + "0000Z\nDTEND:20250514T" + hour +
           "3000Z\nSUMMARY:" + title + "\nEND:VEVENT\n";
}

} // namespace

/// The store of the whole machine over a real calendar server that changes, hangs, refuses and comes back.
class OnlineCalendarTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_room;
    std::unique_ptr<DebugLogService> m_log;
    std::unique_ptr<CalDavServer> m_server;
    std::unique_ptr<CalendarService> m_service;
    std::unique_ptr<EventStore> m_store;
    std::unique_ptr<QSignalSpy> m_news;
    const DateInterval m_day{dateSince1970(1747180800),
                             dateSince1970(1747180800 + 86400)}; // 14 May 2025, UTC

    /// Quillet starts: with what it remembers, and nothing else.
    void startStore()
    {
        m_news.reset();
        m_store = makeLinuxEventStore(*m_log, {m_room->filePath(u"folder"_s)}, m_room->filePath(u"memory"_s));
        m_news = std::make_unique<QSignalSpy>(&m_store->monitor(), &CalendarMonitor::newsArrived);
    }

    /// The machine starts: the calendar service knows what it has on its disk.
    void restartService()
    {
        m_news.reset();
        m_store.reset();
        m_service->signal(CalendarService::Part::factory, SIGKILL);
        QTRY_VERIFY(!m_service->isRunning(CalendarService::Part::factory));
        startStore();
    }

    [[nodiscard]] QStringList load()
    {
        if (m_store->authorizationStatus() != CalendarAuthorization::fullAccess) {
            const auto granted = QCoro::waitFor(m_store->requestFullAccessToEvents());
            if (!granted.value_or(false)) {
                return {u"no access"_s};
            }
        }
        const auto events = QCoro::waitFor(m_store->events(m_day));
        if (!events) {
            return {u"failed: "_s + events.error().localizedDescription};
        }
        QStringList titles;
        for (const CalendarEvent &event : *events) {
            titles << event.title.value_or(QString());
        }
        return titles;
    }

    [[nodiscard]] CalendarStatus online() const
    {
        for (const CalendarStatus &calendar : m_store->monitor().calendars()) {
            if (calendar.name == u"Online") {
                return calendar;
            }
        }
        return {};
    }

    [[nodiscard]] qsizetype memories() const
    {
        return QDir(m_room->filePath(u"memory"_s)).entryList({u"*.memory"_s}, QDir::Files).size();
    }

    /// Both calendars are read and remembered.
    void loadAndRemember()
    {
        QTRY_COMPARE_WITH_TIMEOUT(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}), 30000);
        QTRY_COMPARE(memories(), 2);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_server = std::make_unique<CalDavServer>();
        CalendarService::writeCalendar(calendarText(lesson("Zoom - Ben")));
        m_server->addToService(u"online"_s);
        m_service = std::make_unique<CalendarService>();
    }

    void cleanupTestCase()
    {
        m_service.reset();
        m_server.reset();
    }

    void init()
    {
        m_room = std::make_unique<QTemporaryDir>();
        m_log = std::make_unique<DebugLogService>(m_room->path());
        m_server->put(u"anna"_s, lesson("Zoom - Anna"));
        startStore();
        m_store->refresh(CalendarRefresh::wished);
    }

    void cleanup()
    {
        m_news.reset();
        m_store.reset();
        m_server->resume();
        m_server->remove(u"cleo"_s);
        m_log.reset();
        m_room.reset();
    }

    void whatChangesOnTheServerArrivesWithARefresh()
    {
        loadAndRemember();
        m_server->put(u"cleo"_s, lesson("Zoom - Cleo"));
        m_news->clear();
        m_store->refresh(CalendarRefresh::wished);
        QTRY_VERIFY_WITH_TIMEOUT(!m_news->isEmpty(), 10000);
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s}));

        m_server->put(u"cleo"_s, lesson("Zoom - Cleo", "10"));
        m_news->clear();
        m_store->refresh(CalendarRefresh::wished);
        QTRY_VERIFY_WITH_TIMEOUT(!m_news->isEmpty(), 10000);
        QCOMPARE(load(), (QStringList{u"Zoom - Cleo"_s, u"Zoom - Anna"_s, u"Zoom - Ben"_s}));

        m_server->remove(u"cleo"_s);
        m_news->clear();
        m_store->refresh(CalendarRefresh::wished);
        QTRY_VERIFY_WITH_TIMEOUT(!m_news->isEmpty(), 10000);
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
    }

    void aServerThatHangsFromTheStartOnLeavesTheLessonsOfBefore()
    {
        loadAndRemember();
        m_server->hang();
        restartService();
        for (int round = 0; round < 3; ++round) {
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
            QVERIFY2(timer.elapsed() < limit, qPrintable(QString::number(timer.elapsed())));
            QCOMPARE(online().condition, CalendarStatus::Condition::silent);
            QVERIFY(online().usesLastAnswer);
        }
        m_server->resume();
        QTRY_COMPARE_WITH_TIMEOUT((static_cast<void>(load()), online().condition),
                                  CalendarStatus::Condition::answers, 60000);
    }

    void aServerThatIsDownLeavesTheLessonsOfBefore()
    {
        loadAndRemember();
        m_server->stop();
        restartService();
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
        QVERIFY(!online().isGap());
        m_server->start();
        m_server->put(u"cleo"_s, lesson("Zoom - Cleo"));
        QTRY_COMPARE_WITH_TIMEOUT((m_store->refresh(CalendarRefresh::wished), load()),
                                  (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s}), 60000);
    }

    void aLateAnswerCountsAtOnce()
    {
        loadAndRemember();
        m_service->signal(CalendarService::Part::factory, SIGSTOP);
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
        QCOMPARE(online().condition, CalendarStatus::Condition::silent);
        QVERIFY(online().usesLastAnswer);
        m_news->clear();
        m_service->signal(CalendarService::Part::factory, SIGCONT);
        QTRY_VERIFY_WITH_TIMEOUT(!m_news->isEmpty(), 10000);
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
        QCOMPARE(online().condition, CalendarStatus::Condition::answers);
        QCOMPARE(m_log->latestLines().filter(u"calendar did not answer name=\"Online\""_s).size(), 1);
        QCOMPARE(m_log->latestLines().filter(u"calendar answers again name=\"Online\""_s).size(), 1);
    }

    // The last one: from here on the server lets nobody in.
    void aServerThatRefusesThePasswordIsToldAndItsLessonsStand()
    {
        loadAndRemember();
        m_server->stop();
        m_server->refuseEveryone();
        m_server->start();
        restartService();
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
        QVERIFY(!online().isGap());
        m_store->refresh(CalendarRefresh::wished);
        QTRY_COMPARE_WITH_TIMEOUT((static_cast<void>(load()), online().condition),
                                  CalendarStatus::Condition::awaitsPassword, 30000);
    }
};

QUILLET_TEST(OnlineCalendarTest, runTest<OnlineCalendarTest>);
#include "OnlineCalendarTest.moc"
