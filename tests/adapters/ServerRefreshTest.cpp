// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/ServerRefresh.h"

#include "Corvane/Platform/Linux/Waiting/Pending.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <chrono>
#include <initializer_list>
#include <vector>

using namespace corvane;

namespace {

/// A client whose answers the test triggers.
class ScriptedClient final : public RefreshableClient {
public:
    bool dead = false;
    bool refreshable = true;
    std::vector<Pending<bool>> refreshes;

    [[nodiscard]] bool isDead() const override { return dead; }
    [[nodiscard]] bool canRefresh() const override { return refreshable; }
    QCoro::Task<bool> refresh() override
    {
        const Pending<bool> answer;
        refreshes.push_back(answer);
        co_await answer.untilResolved();
        co_return answer.value();
    }

    /// Completes the latest refresh.
    void answer(bool isAsked) const
    {
        const Pending<bool> last = refreshes.back();
        last.resolve(isAsked);
    }
};

} // namespace

/// How often a server is asked for news.
class ServerRefreshTest : public QObject {
    Q_OBJECT

    ManualClock m_clock{at("09:00:00")};
    std::shared_ptr<ServerRefresh> m_refresh;
    std::shared_ptr<ScriptedClient> m_client;

    void ask(CalendarRefresh kind) const { m_refresh->ask(m_client, kind); }
    [[nodiscard]] std::size_t refreshes() const { return m_client->refreshes.size(); }

    /// Asks a server that fails, again and again. Checks that it is left alone for these minutes each time.
    void fail(std::initializer_list<int> pauses)
    {
        constexpr Seconds shortTime{0.01};
        for (const int minutes : pauses) {
            const std::size_t before = refreshes();
            ask(CalendarRefresh::regular);
            QCOMPARE(refreshes(), before + 1);
            m_client->answer(false);
            m_clock.advance(std::chrono::minutes(minutes) - shortTime);
            ask(CalendarRefresh::regular);
            QCOMPARE(refreshes(), before + 1);
            m_clock.advance(2 * shortTime);
        }
    }

private Q_SLOTS:
    void init()
    {
        m_refresh = std::make_shared<ServerRefresh>();
        m_client = std::make_shared<ScriptedClient>();
    }

    void aServerIsNeverAskedTwiceAtOnce()
    {
        ask(CalendarRefresh::regular);
        ask(CalendarRefresh::regular);
        ask(CalendarRefresh::wished);
        QCOMPARE(refreshes(), std::size_t{1});
        m_client->answer(true);
        ask(CalendarRefresh::regular);
        QCOMPARE(refreshes(), std::size_t{2});
        m_client->answer(true);
    }

    void aFailingServerIsRefreshedOnlyOnRequest()
    {
        ask(CalendarRefresh::regular);
        m_client->answer(false);
        ask(CalendarRefresh::regular);
        QCOMPARE(refreshes(), std::size_t{1});
        ask(CalendarRefresh::wished);
        QCOMPARE(refreshes(), std::size_t{2});
        m_client->answer(true);
        ask(CalendarRefresh::regular);
        QCOMPARE(refreshes(), std::size_t{3});
        m_client->answer(true);
    }

    void theLongerAServerFailsTheLessOftenItIsAsked() { fail({2, 4, 8, 16, 32, 64, 64}); }

    void anAnswerOrARequestShortensThePauseAgain()
    {
        fail({2, 4, 8});
        ask(CalendarRefresh::regular);
        m_client->answer(true);
        fail({2, 4, 8});
        ask(CalendarRefresh::wished);
        m_client->answer(false);
        m_clock.advance(std::chrono::minutes(2));
        fail({4, 8});
    }

    void aCalendarWithoutAServerIsNotRefreshed()
    {
        m_client->refreshable = false;
        ask(CalendarRefresh::wished);
        QCOMPARE(refreshes(), std::size_t{0});
    }

    void aRequestWaitsForTheNextClient()
    {
        m_refresh->ask(nullptr, CalendarRefresh::wished);
        m_refresh->clientOpened(m_client);
        QCOMPARE(refreshes(), std::size_t{1});
        m_client->answer(true);
        m_refresh->clientOpened(m_client);
        QCOMPARE(refreshes(), std::size_t{1});
        m_client->dead = true;
        ask(CalendarRefresh::regular);
        QCOMPARE(refreshes(), std::size_t{1});
        m_client->dead = false;
        m_refresh->clientOpened(m_client);
        QCOMPARE(refreshes(), std::size_t{2});
        m_client->answer(true);
    }
};

QUILLET_TEST(ServerRefreshTest, runTest<ServerRefreshTest>);
#include "ServerRefreshTest.moc"
