// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/AgentGreeting.h"

#include "tests/adapters/RecordingAgent.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QDBusPendingCallWatcher>
#include <QElapsedTimer>
#include <QTest>

#include <csignal>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const Date start = dateSince1970(4'000'000'000);

Lesson lessonFrom(Date begin, Seconds duration)
{
    Lesson lesson;
    lesson.studentName = u"Anna"_s;
    lesson.startTime = begin;
    lesson.duration = duration;
    return lesson;
}

// Two overlapping lessons and the agent's greeting for them, with the end of the later one rounded up.
const std::vector lessons{lessonFrom(start, Seconds{5400.5}), lessonFrom(start + Seconds{60}, Seconds{600})};
const QString greeting = u"Hello 4000005401 \":7\" \"\" \"/home/anna/.Xauthority\""_s;

} // namespace

class AgentGreetingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qputenv("DISPLAY", ":7");
        qputenv("XAUTHORITY", "/home/anna/.Xauthority");
        qunsetenv("WAYLAND_DISPLAY");
        m_bus = std::make_unique<PrivateBus>();
        m_agent = std::make_unique<RecordingAgent>(connection());
        m_lines.clear();
        m_program = connection();
        m_greeting = std::make_unique<AgentGreeting>(
            m_program, [this](const QString &line) { m_lines.append(line); }, 50ms);
    }

    void cleanup()
    {
        m_greeting.reset();
        m_program = QDBusConnection(QString());
        m_agent.reset();
        for (; m_connections > 0; --m_connections) {
            QDBusConnection::disconnectFromBus(QString::number(m_connections));
        }
        m_bus.reset();
        qunsetenv("DISPLAY");
        qunsetenv("XAUTHORITY");
    }

    void theAgentIsToldOnceWhenTheLastLessonEnds()
    {
        m_greeting->setLessons(lessons);
        m_greeting->setLessons(lessons);
        QTRY_COMPARE(m_agent->calls, QStringList{greeting});
        m_greeting->setLessons({lessonFrom(start, Seconds{60})});
        QTRY_COMPARE(m_agent->calls.size(), 2);
        QVERIFY(m_agent->calls.last().startsWith(u"Hello 4000000060 "_s));
        m_greeting->setLessons({});
        QTRY_COMPARE(m_agent->calls.size(), 3);
        QVERIFY(m_agent->calls.last().startsWith(u"Hello 0 "_s));
        QCOMPARE(m_lines, QStringList());
    }

    void withoutRemainingLessonsNothingIsSent()
    {
        m_greeting->setLessons({});
        m_greeting->setLessons({lessonFrom(currentDate() - Seconds{3600}, Seconds{600})});
        waitUntilAllHasArrived();
        QCOMPARE(m_agent->calls, QStringList());
    }

    void theAgentIsToldOfTheProgramsEnd()
    {
        m_greeting.reset();
        // The destructor sends it without the program's event loop.
        QTRY_COMPARE(m_agent->calls, QStringList{u"Goodbye"_s});
    }

    void aRestartedAgentIsGreetedAgain()
    {
        m_greeting->setLessons(lessons);
        QTRY_COMPARE(m_agent->calls.size(), 1);
        m_agent.reset();
        m_agent = std::make_unique<RecordingAgent>(connection());
        QTRY_COMPARE(m_agent->calls, QStringList{greeting});
    }

    void anAgentThatEndsIsCalledAgain()
    {
        m_greeting->setLessons(lessons);
        QTRY_COMPARE(m_agent->calls.size(), 1);
        m_agent.reset();
        // The agent cannot be started on this bus, so the log line shows the call.
        QTRY_COMPARE(m_lines.filter(u"notification agent not greeted"_s).size(), 1);
        // As with the next load.
        m_greeting->setLessons(lessons);
        QTRY_COMPARE(m_lines.size(), 2);
    }

    void anOldAgentIsGreetedOnceAndItsSuccessorAgain()
    {
        m_agent->lacksNewerMethods = true;
        m_greeting->setLessons(lessons);
        QTRY_COMPARE(m_lines.size(), 1);
        m_greeting->setLessons({lessonFrom(start, Seconds{60})});
        waitUntilAllHasArrived();
        QCOMPARE(m_agent->calls, QStringList{u"unknown "_s + greeting});
        m_agent.reset();
        m_agent = std::make_unique<RecordingAgent>(connection());
        QTRY_COMPARE(m_agent->calls.size(), 1);
        m_greeting.reset();
        m_agent->lacksNewerMethods = true;
        QTRY_COMPARE(m_agent->calls.last(), u"unknown Goodbye"_s);
    }

    void aLateAnswerOfAnEarlierAgentDoesNotConcernItsSuccessor()
    {
        const QDBusConnection earlier = connection();
        m_agent.reset();
        m_agent = std::make_unique<RecordingAgent>(earlier);
        m_agent->hangs = true;
        m_greeting->setLessons(lessons);
        QTRY_VERIFY(m_agent->calls.contains(greeting));
        const QDBusMessage call = m_agent->unansweredCalls.back();
        m_agent.reset();
        m_agent = std::make_unique<RecordingAgent>(connection());
        QTRY_COMPARE(m_agent->calls, QStringList{greeting});
        QVERIFY(earlier.send(call.createErrorReply(QDBusError::UnknownMethod, u"No such method"_s)));
        // A further answer from the same connection comes after it.
        const QDBusPendingCallWatcher last(m_program.asyncCall(QDBusMessage::createMethodCall(
            earlier.baseService(), u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s)));
        QTRY_VERIFY(last.isFinished());
        m_greeting->setLessons({lessonFrom(start, Seconds{60})});
        QTRY_COMPARE(m_agent->calls.size(), 2);
        QCOMPARE(m_lines, QStringList());
    }

    void aRefusedGreetingIsRepeatedWithTheNextLoad()
    {
        m_agent->refusal = u"not now"_s;
        m_greeting->setLessons(lessons);
        QTRY_COMPARE(m_lines, QStringList{u"notification agent not greeted error=not now"_s});
        m_agent->refusal.clear();
        m_greeting->setLessons(lessons);
        QTRY_COMPARE(m_agent->calls.size(), 2);
    }

    void aRefusedGreetingWithoutLessonsIsRepeatedToo()
    {
        m_greeting->setLessons(lessons);
        QTRY_COMPARE(m_agent->calls.size(), 1);
        m_agent->refusal = u"not now"_s;
        m_greeting->setLessons({});
        QTRY_COMPARE(m_lines.size(), 1);
        m_agent->refusal.clear();
        m_greeting->setLessons({});
        QTRY_COMPARE(m_agent->calls.size(), 3);
        QVERIFY(m_agent->calls.last().startsWith(u"Hello 0 "_s));
    }

    void aBusThatHangsDelaysTheEndOnlyBriefly()
    {
        const auto bus = static_cast<pid_t>(m_bus->processId());
        ::kill(bus, SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        m_greeting.reset();
        QVERIFY(timer.elapsed() < 10'000);
        ::kill(bus, SIGCONT);
    }

private:
    QDBusConnection connection()
    {
        return QDBusConnection::connectToBus(m_bus->address(), QString::number(++m_connections));
    }

    // Waits until everything that the greeting has sent so far has arrived: the bus delivers in order.
    void waitUntilAllHasArrived() const
    {
        const QDBusPendingCallWatcher last(m_program.asyncCall(
            QDBusMessage::createMethodCall(u"com.ordwinsoftware.Quillet.NotificationAgent"_s,
                                           u"/com/ordwinsoftware/Quillet/NotificationAgent"_s,
                                           u"org.freedesktop.DBus.Introspectable"_s, u"Introspect"_s)));
        QTRY_VERIFY(last.isFinished());
    }

    std::unique_ptr<PrivateBus> m_bus;
    int m_connections = 0;
    QDBusConnection m_program{QString()};
    std::unique_ptr<RecordingAgent> m_agent;
    std::unique_ptr<AgentGreeting> m_greeting;
    QStringList m_lines;
};

QUILLET_TEST(AgentGreetingTest, runTest<AgentGreetingTest>);
#include "AgentGreetingTest.moc"
