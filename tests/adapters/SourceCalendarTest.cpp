// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include "tests/adapters/CalendarRoom.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <semaphore>
#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QDeadlineTimer noDeadline{QDeadlineTimer::Forever};

/// A calendar whose answers the test triggers.
class ScriptedCalendar final : public SourceCalendar {
public:
    explicit ScriptedCalendar(std::shared_ptr<CalendarServices> services)
        : SourceCalendar(std::move(services), u"test:scripted"_s)
    {
        rename(u"Scripted"_s, {});
    }

    struct Asked {
        CalendarQuestion question;
        Pending<std::shared_ptr<CalendarReading>> answer;
    };
    /// The readings requested, in order.
    std::vector<Asked> asked;

    /// Answers the reading `which` with one event of this title.
    void answer(std::size_t which, const QString &title)
    {
        CalendarEvent event;
        event.title = title;
        event.startDate = asked.at(which).question.interval.start;
        event.endDate = event.startDate + Seconds{1800};
        const auto pending = asked.at(which).answer;
        pending.resolve(
            std::make_shared<CalendarReading>(CalendarReading{.events = {event}, .skippedEvents = {}}));
    }

    /// The number of captures; each has different content.
    int captures = 0;

protected:
    QCoro::Task<Reading> read(CalendarQuestion question) override
    {
        const Pending<std::shared_ptr<CalendarReading>> answer;
        asked.push_back({question, answer});
        co_await answer.untilResolved();
        CalendarReading reading = *answer.value();
        co_return reading;
    }

    QCoro::Task<std::optional<QByteArray>> capture(CalendarQuestion) override
    {
        std::optional<QByteArray> text = calendarText(lesson(QByteArray::number(++captures)));
        co_return text;
    }
};

/// One load of one calendar.
struct Load {
    CalendarAnswers answers;
    QCoro::Task<void> task;

    [[nodiscard]] QStringList titles() const { return corvane::titles(answers.events); }
};

} // namespace

/// What happens to late answers and to a silent calendar.
class SourceCalendarTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_room;
    std::unique_ptr<DebugLogService> m_log;
    std::shared_ptr<CalendarServices> m_services;
    std::shared_ptr<ScriptedCalendar> m_calendar;
    int m_news = 0;

    [[nodiscard]] std::unique_ptr<Load> load(int daysLater, QDeadlineTimer inTime) const
    {
        auto load = std::make_unique<Load>();
        load->task =
            SourceCalendar::query(m_calendar, {testDay(daysLater), "UTC"}, inTime, noDeadline, load->answers);
        return load;
    }

    /// Loads the day and gives up before there is an answer.
    void loadInVain(int daysLater) const
    {
        const auto vain = load(daysLater, QDeadlineTimer(1ms));
        QCoro::waitFor(vain->task);
        QCOMPARE(vain->answers.silent, 1);
    }

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<QTemporaryDir>();
        m_log = std::make_unique<DebugLogService>(m_room->filePath(u"log"_s));
        m_services = std::make_shared<CalendarServices>(*m_log, m_room->filePath(u"memory"_s));
        m_news = 0;
        m_services->announceNews = [this] { ++m_news; };
        m_calendar = std::make_shared<ScriptedCalendar>(m_services);
    }

    void cleanup()
    {
        m_calendar.reset();
        const std::weak_ptr<CalendarServices> services = std::exchange(m_services, nullptr);
        QTRY_VERIFY(services.expired()); // pending writes of the memory have ended
        m_log.reset();
    }

    void aLateAnswerIsAnnouncedAndUsedByTheNextLoad()
    {
        loadInVain(0);
        QCOMPARE(m_news, 0);
        m_calendar->answer(0, u"Anna"_s);
        QCOMPARE(m_news, 1);
        const auto next = load(0, noDeadline);
        QVERIFY(next->task.isReady());
        QCOMPARE(next->titles(), QStringList{u"Anna"_s});
        QCOMPARE(m_calendar->asked.size(), std::size_t{1});
        // It is used only once.
        const auto further = load(0, noDeadline);
        QVERIFY(!further->task.isReady());
        m_calendar->answer(1, u"Ben"_s);
        QCOMPARE(further->titles(), QStringList{u"Ben"_s});
    }

    void aLateAnswerForAnotherDayIsIgnored()
    {
        loadInVain(0);
        m_calendar->answer(0, u"Anna"_s);
        const auto next = load(1, noDeadline);
        QCOMPARE(m_calendar->asked.size(), std::size_t{2});
        m_calendar->answer(1, u"Ben"_s);
        QCOMPARE(next->titles(), QStringList{u"Ben"_s});
    }

    void aReadingForAnotherDayIsAwaitedButNotUsed()
    {
        loadInVain(0);
        const auto next = load(1, noDeadline);
        QCOMPARE(m_calendar->asked.size(), std::size_t{1});
        m_calendar->answer(0, u"Anna"_s);
        QVERIFY(!next->task.isReady());
        QCOMPARE(m_calendar->asked.size(), std::size_t{2});
        QCOMPARE(m_calendar->asked.at(1).question.interval, testDay(1));
        m_calendar->answer(1, u"Ben"_s);
        QCOMPARE(next->titles(), QStringList{u"Ben"_s});
    }

    void aSilentCalendarDelaysLaterLoadsLess()
    {
        loadInVain(0);
        // This load has no deadline.
        const auto next = load(0, noDeadline);
        QTRY_VERIFY_WITH_TIMEOUT(next->task.isReady(), 20000);
        QCOMPARE(next->answers.silent, 1);
        QCOMPARE(m_calendar->asked.size(), std::size_t{1});
        m_calendar->answer(0, u"Anna"_s);
    }

    void aWriteUnderWayDoesNotBringAForgottenCalendarBack()
    {
        std::binary_semaphore slowDisk{0};
        const auto diskWork = startOnPool(m_services->memories.threads(), [&slowDisk] {
            slowDisk.acquire();
            return true;
        });
        const auto loaded = load(0, noDeadline);
        m_calendar->answer(0, u"Anna"_s);
        QCOMPARE(m_calendar->captures, 1);
        m_calendar->forget();
        QVERIFY(m_services->workers.threads().waitForDone());
        slowDisk.release();
        QVERIFY(m_services->memories.threads().waitForDone());
        QVERIFY(!m_services->memory.read(m_calendar->status().identifier));
    }

    void anErrorInTheMemoryIsLoggedOnce()
    {
        QFile obstacle(m_room->filePath(u"memory"_s));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        const auto loadAgain = [this] {
            const auto again = load(0, noDeadline);
            m_calendar->answer(m_calendar->asked.size() - 1, u"Anna"_s);
            return m_calendar->captures;
        };
        // The third capture begins after the attempt to write the second.
        QTRY_VERIFY_WITH_TIMEOUT(loadAgain() >= 3, 20000);
        QCOMPARE(m_log->latestLines().filter(u"calendar not remembered"_s).size(), 1);
    }
};

QUILLET_TEST(SourceCalendarTest, runTest<SourceCalendarTest>);
#include "SourceCalendarTest.moc"
