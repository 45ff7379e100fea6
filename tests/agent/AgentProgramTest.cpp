// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/AgentLifecycle.h"
#include "NotificationAgent/ProgramWatch.h"
#include "tests/agent/AgentRoom.h"
#include "tests/agent/ListeningSocket.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr int programTimeout = 20'000; // milliseconds

const QString programName = u"com.ordwinsoftware.Quillet"_s;

// Stands for Quillet: a peer that owns its name on the bus.
class Program {
public:
    explicit Program(AgentRoom &room)
        : m_room(room)
        , m_bus(QDBusConnection::connectToBus(room.bus().address(), u"program"_s))
    {
        if (!m_bus.registerService(programName)) {
            qFatal("the program's name is taken");
        }
    }
    ~Program() { crash(); }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    [[nodiscard]] QString call(const QString &method, const QVariantList &arguments) const
    {
        return m_bus.call(m_room.message(method, arguments), QDBus::Block, programTimeout).errorMessage();
    }

    // Leaves the bus without a goodbye.
    void crash()
    {
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(u"program"_s);
    }

private:
    AgentRoom &m_room;
    QDBusConnection m_bus;
};

} // namespace

class AgentProgramTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<AgentRoom>();
        m_compositor = std::make_unique<ListeningSocket>(QFile::encodeName(compositorPath()));
        m_room->addService(programName,
                           u"echo \"$DISPLAY $WAYLAND_DISPLAY $PPID\" >>'%1'; exit 1"_s.arg(startsPath()));
    }
    void cleanup()
    {
        m_room.reset();
        m_compositor.reset();
        QFile::remove(compositorPath());
    }

    void theBusStartsACrashedProgramOnItsDisplayThreeTimes()
    {
        m_room->startAgent();
        Program program(*m_room);
        QCOMPARE(program.call(u"Hello"_s, hello()), QString());
        QElapsedTimer timer;
        timer.start();
        program.crash();
        QTRY_COMPARE_WITH_TIMEOUT(starts().size(), 1, programTimeout);
        QVERIFY(timer.elapsed() < 5000);
        // Not the agent's child, which would inherit its sandbox.
        const QStringList words = starts().constFirst().split(u' ');
        QCOMPARE(words.first(2), (QStringList{u":64999"_s, compositorPath()}));
        QVERIFY(words.at(2) != QString::number(m_room->agent().processId()));
        // Each time it ended without taking its name, which counts as a crash.
        QTRY_VERIFY_WITH_TIMEOUT(m_room->log().contains(u"Quillet is not brought back"_s), programTimeout);
        QCOMPARE(starts().size(), 3);
    }

    void theAgentStaysUntilTheProgramSaysGoodbye()
    {
        m_room->startAgent();
        Program program(*m_room);
        QCOMPARE(program.call(u"Hello"_s, hello()), QString());
        QTest::qWait(static_cast<int>(AgentLifecycle::idleTime.count()) + 1000);
        QVERIFY(m_room->isNameOwned());
        QCOMPARE(program.call(u"Goodbye"_s, {}), QString());
        program.crash();
        QTRY_VERIFY_WITH_TIMEOUT(!m_room->isNameOwned(), programTimeout);
        QVERIFY(starts().isEmpty());
    }

    void otherCallersAreRefused()
    {
        m_room->startAgent();
        QCOMPARE(m_room->call(u"Hello"_s, hello()).errorMessage(), u"this is not Quillet"_s);
        const Program program(*m_room);
        QCOMPARE(program.call(u"Hello"_s, hello()), QString());
        QCOMPARE(m_room->call(u"Goodbye"_s, {}).errorMessage(), u"this is not Quillet"_s);
        QCOMPARE(program.call(u"Hello"_s, {qlonglong{-1}, QString(), QString(), QString()}),
                 u"a date is out of range"_s);
        QCOMPARE(program.call(u"Hello"_s, {qlonglong{1}, QString(5000, u'x'), QString(), QString()}),
                 u"a text is too long"_s);
    }

    // The bus keeps a call to an agent that is about to start.
    void aGreetingThatStartsTheAgentIsNotLost()
    {
        m_room = std::make_unique<AgentRoom>(AgentRoom::Start::byBus);
        m_room->addService(programName, u"echo started >>'%1'; exit 1"_s.arg(startsPath()));
        Program program(*m_room);
        QCOMPARE(program.call(u"Hello"_s, hello()), QString());
        // No display means that the session has ended.
        m_compositor.reset();
        program.crash();
        QTRY_VERIFY_WITH_TIMEOUT(m_room->log().contains(u"the session's display is gone"_s), programTimeout);
        QVERIFY(starts().isEmpty());
    }

private:
    [[nodiscard]] QString compositorPath() const { return m_folder.filePath(u"wayland-7"_s); }
    [[nodiscard]] QString startsPath() const { return m_room->filePath(u"starts"_s); }

    [[nodiscard]] QStringList starts() const
    {
        QFile file(startsPath());
        return file.open(QIODevice::ReadOnly)
                   ? QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)
                   : QStringList();
    }

    // A greeting's arguments: an X server that the compositor starts on demand, and that compositor.
    [[nodiscard]] QVariantList hello() const
    {
        return {AgentRoom::now() + 1000, u":64999"_s, compositorPath(), QString()};
    }

    QTemporaryDir m_folder;
    std::unique_ptr<AgentRoom> m_room;
    std::unique_ptr<ListeningSocket> m_compositor;
};

QUILLET_TEST(AgentProgramTest, runTest<AgentProgramTest>);
#include "AgentProgramTest.moc"
