// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarRoom.h"
#include "tests/support/CalDavServer.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <csignal>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr auto onlineLimit =
    8000; // milliseconds; a load gives up after 4.5 s, the rest is for a busy machine

} // namespace

/// The complete store over a real calendar server, whose events change and which hangs, refuses and comes
/// back.
class OnlineCalendarTest : public QObject {
    Q_OBJECT

    std::unique_ptr<CalendarRoom> m_room;
    std::unique_ptr<CalDavServer> m_server;
    std::unique_ptr<CalendarService> m_service;
    std::unique_ptr<QSignalSpy> m_news;

    /// Restarts the store, which keeps only its memory on disk.
    void startStore()
    {
        m_news.reset();
        m_room->startOnAll();
        m_news = std::make_unique<QSignalSpy>(&m_room->monitor(), &CalendarMonitor::newsArrived);
    }

    /// Restarts the calendar service and the store, which keep only what they have on disk.
    void restartService()
    {
        m_news.reset();
        m_room->stop();
        m_service->kill(CalendarService::Part::factory);
        startStore();
    }

    [[nodiscard]] QStringList load() { return m_room->load(); }
    void refresh() { m_room->store().refresh(CalendarRefresh::wished); }

    [[nodiscard]] CalendarStatus online() const
    {
        for (const CalendarStatus &calendar : m_room->monitor().calendars()) {
            if (calendar.name == u"Online") {
                return calendar;
            }
        }
        return {};
    }

    /// Waits until both calendars are read and remembered.
    void loadAndRemember()
    {
        QTRY_COMPARE_WITH_TIMEOUT(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}), 30000);
        QTRY_COMPARE(m_room->memoryFiles().size(), 2);
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
        m_room = std::make_unique<CalendarRoom>();
        m_server->put(u"anna"_s, lesson("Zoom - Anna"));
        startStore();
        refresh();
    }

    void cleanup()
    {
        m_news.reset();
        m_room->stop();
        m_server->resume();
        m_server->remove(u"cleo"_s);
        m_room.reset();
    }

    void changesOnTheServerArriveWithARefresh()
    {
        loadAndRemember();
        m_server->put(u"cleo"_s, lesson("Zoom - Cleo"));
        m_news->clear();
        refresh();
        QTRY_VERIFY_WITH_TIMEOUT(!m_news->isEmpty(), 10000);
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s}));

        m_server->put(u"cleo"_s, lesson("Zoom - Cleo", {}, "10"));
        m_news->clear();
        refresh();
        QTRY_VERIFY_WITH_TIMEOUT(!m_news->isEmpty(), 10000);
        QCOMPARE(load(), (QStringList{u"Zoom - Cleo"_s, u"Zoom - Anna"_s, u"Zoom - Ben"_s}));

        m_server->remove(u"cleo"_s);
        m_news->clear();
        refresh();
        QTRY_VERIFY_WITH_TIMEOUT(!m_news->isEmpty(), 10000);
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
    }

    void theMemoryStandsInForAServerThatHangsFromTheStart()
    {
        loadAndRemember();
        m_server->hang();
        restartService();
        for (int round = 0; round < 3; ++round) {
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
            QVERIFY2(timer.elapsed() < onlineLimit, qPrintable(QString::number(timer.elapsed())));
            QCOMPARE(online().condition, CalendarStatus::Condition::silent);
            QVERIFY(online().usesLastAnswer);
        }
        m_server->resume();
        QTRY_COMPARE_WITH_TIMEOUT((static_cast<void>(load()), online().condition),
                                  CalendarStatus::Condition::answers, 60000);
    }

    void theMemoryStandsInForAServerThatIsDown()
    {
        loadAndRemember();
        m_server->stop();
        restartService();
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
        QVERIFY(!online().isGap());
        m_server->start();
        m_server->put(u"cleo"_s, lesson("Zoom - Cleo"));
        QTRY_COMPARE_WITH_TIMEOUT((refresh(), load()),
                                  (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s, u"Zoom - Cleo"_s}), 60000);
    }

    void aLateAnswerIsUsedAtOnce()
    {
        loadAndRemember();
        m_service->signal(CalendarService::Part::factory, SIGSTOP);
        refresh();
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
        QCOMPARE(online().condition, CalendarStatus::Condition::silent);
        QVERIFY(online().usesLastAnswer);
        m_news->clear();
        m_service->signal(CalendarService::Part::factory, SIGCONT);
        QTRY_VERIFY_WITH_TIMEOUT(!m_news->isEmpty(), 10000);
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
        QCOMPARE(online().condition, CalendarStatus::Condition::answers);
        QCOMPARE(m_room->logged(u"calendar did not answer name=\"Online\""_s), 1);
        QCOMPARE(m_room->logged(u"calendar answers again name=\"Online\""_s), 1);
    }

    // Keep this test last: from here on the server rejects every password.
    void aRejectedPasswordIsReportedAndTheLessonsRemain()
    {
        loadAndRemember();
        m_server->stop();
        m_server->refuseEveryone();
        m_server->start();
        restartService();
        QCOMPARE(load(), (QStringList{u"Zoom - Anna"_s, u"Zoom - Ben"_s}));
        QVERIFY(!online().isGap());
        refresh();
        QTRY_COMPARE_WITH_TIMEOUT((static_cast<void>(load()), online().condition),
                                  CalendarStatus::Condition::awaitsPassword, 30000);
    }
};

QUILLET_TEST(OnlineCalendarTest, runTest<OnlineCalendarTest>);
#include "OnlineCalendarTest.moc"
