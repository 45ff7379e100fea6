// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/AgentInterface.h"
#include "tests/agent/AgentRoom.h"
#include "tests/support/TestProgram.h"

#include <QDBusPendingCall>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <deque>
#include <limits>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr int floodTimeout = 60'000; // milliseconds

#ifdef __SANITIZE_ADDRESS__
constexpr double maximumMemory = 2000; // MiB; the sanitizer keeps freed memory
#else
constexpr double maximumMemory = 64;
#endif

// Calls per flood; benchmarks/agent-figures sends a million.
int floodSize()
{
    const int told = qEnvironmentVariableIntValue("QUILLET_FLOOD");
    return told > 0 ? told : 10'000;
}

PendingRequest floodRequest(const QString &identifier)
{
    const qint64 later = AgentRoom::now() + 100'000;
    return {identifier, u"Quillet: prepare"_s, u"Anna starts in 4 minutes."_s, u"quillet.lesson"_s, later,
            later + 240};
}

} // namespace

class NotificationAgentFloodTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_room = std::make_unique<AgentRoom>(); }
    void cleanupTestCase() { m_room.reset(); }

    void init()
    {
        if (!m_room->isNameOwned()) {
            m_room->startAgent();
        }
    }
    void cleanup()
    {
        // The agent refuses a question right after one with a long answer.
        QStringList identifiers;
        QVERIFY(QTest::qWaitFor(
            [&] {
                identifiers = m_room->pending();
                return !identifiers.value(0).startsWith(u"error: "_s);
            },
            floodTimeout));
        QVERIFY(m_room->remove(identifiers).type() == QDBusMessage::ReplyMessage);
    }

    void oneHundredAndFiftyRequestsAreReplaced()
    {
        QStringList identifiers;
        for (int i = 0; i < 150; ++i) {
            identifiers.append(u"quillet.backup.start.1800000000.Anna %1"_s.arg(i));
            QCOMPARE(m_room->add(floodRequest(identifiers.constLast())).type(), QDBusMessage::ReplyMessage);
        }
        QElapsedTimer timer;
        timer.start();
        // As Quillet does it: each call waits for the answer to the previous one.
        QCOMPARE(m_room->pending().size(), 150);
        QCOMPARE(m_room->remove(identifiers).type(), QDBusMessage::ReplyMessage);
        for (const QString &identifier : identifiers) {
            QCOMPARE(m_room->add(floodRequest(identifier)).type(), QDBusMessage::ReplyMessage);
        }
        qInfo() << "ms to replace 150 requests, one after the other" << timer.elapsed();
        QCOMPARE(m_room->pending().size(), 150);
    }

    void overlongTextsAreRefused_data()
    {
        QTest::addColumn<int>("identifier");
        QTest::addColumn<int>("title");
        QTest::addColumn<int>("body");
        QTest::addColumn<int>("category");
        QTest::addColumn<bool>("isTaken");
        QTest::newRow("the longest") << 2048 << 4096 << 4096 << 4096 << true;
        QTest::newRow("identifier") << 2049 << 1 << 1 << 1 << false;
        QTest::newRow("title") << 1 << 4097 << 1 << 1 << false;
        QTest::newRow("body") << 1 << 1 << 4097 << 1 << false;
        QTest::newRow("category") << 1 << 1 << 1 << 4097 << false;
        QTest::newRow("thirty megabytes") << 1 << 1 << 30'000'000 << 1 << false;
    }

    void overlongTextsAreRefused()
    {
        QFETCH(int, identifier);
        QFETCH(int, title);
        QFETCH(int, body);
        QFETCH(int, category);
        QFETCH(bool, isTaken);
        const qint64 later = AgentRoom::now() + 1000;
        const QDBusMessage answer =
            m_room->add({QString(identifier, u'i'), QString(title, u't'), QString(body, u'b'),
                         QString(category, u'c'), later, later + 1});
        QCOMPARE(answer.errorName(), isTaken ? QString() : u"org.freedesktop.DBus.Error.LimitsExceeded"_s);
        QCOMPARE(m_room->pending().size(), isTaken ? 1 : 0);
    }

    void absurdDatesAreRefused_data()
    {
        QTest::addColumn<qint64>("fireDate");
        QTest::addColumn<qint64>("expirationDate");
        QTest::newRow("before 1970") << qint64{-1} << qint64{10};
        QTest::newRow("least") << std::numeric_limits<qint64>::min() << std::numeric_limits<qint64>::max();
        QTest::newRow("most") << std::numeric_limits<qint64>::max() << std::numeric_limits<qint64>::max();
        QTest::newRow("expires in the year 10000") << qint64{1'800'000'000} << qint64{253'402'300'800};
        QTest::newRow("expires when it fires") << qint64{1'800'000'000} << qint64{1'800'000'000};
        QTest::newRow("expires before it fires") << qint64{1'800'000'000} << qint64{1'799'999'999};
    }

    void absurdDatesAreRefused()
    {
        QFETCH(qint64, fireDate);
        QFETCH(qint64, expirationDate);
        const QDBusMessage answer = m_room->add({u"i"_s, u"t"_s, u"b"_s, u"c"_s, fireDate, expirationDate});
        QCOMPARE(answer.errorName(), u"org.freedesktop.DBus.Error.InvalidArgs"_s);
        QCOMPARE(m_room->pending(), QStringList());
    }

    void wrongTypesAreRefused()
    {
        for (const QVariantList &arguments :
             {QVariantList{}, QVariantList{1}, QVariantList{u"i"_s, u"t"_s, u"b"_s, u"c"_s, 1, 2},
              QVariantList{u"i"_s, u"t"_s, u"b"_s, u"c"_s, u"1"_s, u"2"_s},
              QVariantList{u"i"_s, u"t"_s, u"b"_s, u"c"_s, qlonglong{1}, qlonglong{2}, qlonglong{3}}}) {
            QCOMPARE(m_room->call(u"Add"_s, arguments).type(), QDBusMessage::ErrorMessage);
        }
        QCOMPARE(m_room->call(u"RemovePendingRequests"_s, {u"i"_s}).type(), QDBusMessage::ErrorMessage);
        QCOMPARE(m_room->call(u"NoSuchMethod"_s, {}).type(), QDBusMessage::ErrorMessage);
        QCOMPARE(m_room->pending(), QStringList());
    }

    void tenThousandRequestsArePendingAndAFloodOfMoreIsRefused()
    {
        QElapsedTimer timer;
        timer.start();
        sendWithoutAnswers(10'000, [](int i) { return QString::number(i); });
        QCOMPARE(m_room->pending().size(), 10'000);
        qInfo() << "ms to add ten thousand requests" << timer.elapsed();
        const QDBusMessage refusal = m_room->add(floodRequest(u"one more"_s));
        QCOMPARE(refusal.errorName(), u"org.freedesktop.DBus.Error.LimitsExceeded"_s);
        QCOMPARE(refusal.errorMessage(), u"too much is pending"_s);
        // Replacing one of them is still allowed.
        timer.restart();
        QCOMPARE(m_room->add(floodRequest(u"77"_s)).type(), QDBusMessage::ReplyMessage);
        qInfo() << "ms to replace one of ten thousand" << timer.elapsed();
        const AgentRoom::Memory memory = AgentRoom::memoryOf(m_room->ownerProcess());
        qInfo() << "MiB with ten thousand pending: resident" << memory.residentMiB << "private"
                << memory.privateMiB;
        timer.restart();
        QCOMPARE(flood(floodSize(), [](int i) { return u"flood %1"_s.arg(i); }), floodSize());
        tell(floodSize(), timer);
        QVERIFY(std::max(memory.privateMiB, m_peak.privateMiB) < maximumMemory);
        // The agent still answers, and the flood has not filled its log.
        QCOMPARE(m_room->pending().size(), 10'000);
        QVERIFY(m_room->log().count(u'\n') < 200);
    }

    void theTotalTextLengthOfPendingRequestsIsLimited()
    {
        PendingRequest big = floodRequest({});
        big.title = QString(4096, u't');
        big.body = QString(4096, u'b');
        big.categoryIdentifier = QString(4096, u'c');
        const auto number = [](int i) { return QString::number(i); };
        const int refused = flood(300, number, big);
        QVERIFY(refused > 100);
        QVERIFY(m_peak.privateMiB < maximumMemory);
        QCOMPARE(m_room->pending().size(), 300 - refused);
    }

    // Answers that a client does not read pile up in the agent.
    void unreadAnswersToAFloodOfQuestionsKeepTheMemoryBounded()
    {
        const QString tail(AgentInterface::maximumIdentifierLength - 10, u'i');
        (void)flood(500, [&](int i) { return u"%1"_s.arg(i, 10) + tail; });
        QVERIFY(m_room->pending().size() > 400);
        const qint64 process = m_room->ownerProcess();
        m_peak = {};
        QElapsedTimer timer;
        timer.start();
        constexpr int questions = 600;
        std::deque<QDBusPendingCall> open;
        const QDBusMessage question = m_room->message(u"PendingRequests"_s, {});
        for (int i = 0; i < questions; ++i) {
            open.push_back(m_room->connection().asyncCall(question, floodTimeout));
        }
        int refused = 0;
        int answered = 0;
        while (!open.empty()) {
            look(process);
            open.front().waitForFinished();
            (open.front().isError() ? refused : answered)++;
            open.pop_front();
        }
        tell(questions, timer);
        qInfo() << "answered" << answered << "refused" << refused;
        QVERIFY(answered > 0);
        QVERIFY(m_peak.privateMiB < maximumMemory);
        // The agent answers again once its answers have been read. One answer is enough: it is so long that
        // the next question is refused for a while.
        QVERIFY(QTest::qWaitFor([this] { return m_room->pending().size() > 400; }, floodTimeout));
    }

    void tooManyIdentifiersAreRefused()
    {
        QCOMPARE(m_room->add(floodRequest(u"one"_s)).type(), QDBusMessage::ReplyMessage);
        QStringList identifiers(AgentInterface::maximumIdentifiers, QString());
        QCOMPARE(m_room->remove(identifiers).type(), QDBusMessage::ReplyMessage);
        identifiers.append(u"one"_s);
        m_peak = {};
        for (int i = 0; i < 100; ++i) {
            QCOMPARE(m_room->remove(identifiers).errorName(), u"org.freedesktop.DBus.Error.LimitsExceeded"_s);
            look(m_room->ownerProcess());
        }
        QCOMPARE(m_room->pending(), QStringList{u"one"_s});
        QVERIFY(m_peak.privateMiB < maximumMemory);
    }

    // A client that wants no answers can send faster than the agent reads.
    void aFloodOfCallsWithoutAnswersKeepsTheMemoryBounded()
    {
        const int size = floodSize();
        QElapsedTimer timer;
        timer.start();
        sendWithoutAnswers(size, [](int) { return u"one"_s; });
        QCOMPARE(m_room->pending(), QStringList{u"one"_s});
        look(m_room->ownerProcess());
        tell(size, timer);
        QVERIFY(m_peak.privateMiB < maximumMemory);
    }

private:
    template <typename Name>
    void sendWithoutAnswers(int count, Name name)
    {
        m_peak = {};
        const qint64 process = m_room->ownerProcess();
        const PendingRequest sample = floodRequest({});
        for (int i = 0; i < count; ++i) {
            m_room->connection().send(
                m_room->message(u"Add"_s, {name(i), sample.title, sample.body, sample.categoryIdentifier,
                                           sample.fireDate, sample.expirationDate}));
            if (i % 1000 == 0) {
                look(process);
            }
        }
    }

    // Sends `count` requests without waiting for each answer; returns how many were refused.
    template <typename Name>
    int flood(int count, Name name, const PendingRequest &sample = floodRequest({}))
    {
        constexpr std::size_t maximumOpenCalls = 100; // the bus itself has a limit on open calls
        m_peak = {};
        const qint64 process = m_room->ownerProcess();
        std::deque<QDBusPendingCall> open;
        int refused = 0;
        const auto takeOldest = [&] {
            open.front().waitForFinished();
            refused += open.front().isError() ? 1 : 0;
            open.pop_front();
        };
        for (int i = 0; i < count; ++i) {
            open.push_back(m_room->connection().asyncCall(
                m_room->message(u"Add"_s, {name(i), sample.title, sample.body, sample.categoryIdentifier,
                                           sample.fireDate, sample.expirationDate}),
                floodTimeout));
            if (open.size() >= maximumOpenCalls) {
                takeOldest();
            }
            if (i % 5000 == 0) {
                look(process);
            }
        }
        look(process);
        while (!open.empty()) {
            takeOldest();
        }
        look(process);
        return refused;
    }

    void tell(int calls, const QElapsedTimer &timer) const
    {
        const AgentRoom::Memory now = AgentRoom::memoryOf(m_room->ownerProcess());
        qInfo() << calls << "calls: seconds" << static_cast<double>(timer.elapsed()) / 1000
                << "peak MiB resident" << m_peak.residentMiB << "private" << m_peak.privateMiB
                << "after it resident" << now.residentMiB << "private" << now.privateMiB;
    }

    void look(qint64 process)
    {
        const AgentRoom::Memory memory = AgentRoom::memoryOf(process);
        m_peak.residentMiB = std::max(m_peak.residentMiB, memory.residentMiB);
        m_peak.privateMiB = std::max(m_peak.privateMiB, memory.privateMiB);
    }

    std::unique_ptr<AgentRoom> m_room;
    AgentRoom::Memory m_peak;
};

QUILLET_TEST(NotificationAgentFloodTest, runTest<NotificationAgentFloodTest>);
#include "NotificationAgentFloodTest.moc"
