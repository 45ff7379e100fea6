// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/AgentInterface.h"
#include "NotificationAgent/LoginEntry.h"
#include "NotificationAgent/ProgramWatch.h"
#include "NotificationAgent/RequestFile.h"
#include "NotificationAgent/RequestKeeper.h"
#include "tests/agent/FakeNotificationServer.h"
#include "tests/agent/FakeSessionProgram.h"
#include "tests/agent/FakeWallClock.h"
#include "tests/fuzz/FuzzTarget.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 noon = 1'800'000'000;

/// Takes values from the input; zeros once it is used up.
class Bytes {
public:
    explicit Bytes(const QByteArray &input) : m_rest(input) {}

    [[nodiscard]] bool isEmpty() const { return m_rest.isEmpty(); }

    quint8 byte()
    {
        const auto taken = m_rest.isEmpty() ? quint8{0} : static_cast<quint8>(m_rest.front());
        m_rest = m_rest.sliced(std::min<qsizetype>(1, m_rest.size()));
        return taken;
    }

    /// A text up to a zero byte. The byte before the text, times 16, repeats a short text up to 4,080 times;
    /// less than 256 repetitions count as one.
    QString text()
    {
        const int times = byte() * 16;
        const qsizetype end = std::max<qsizetype>(m_rest.indexOf('\0'), 0);
        const QString taken = QString::fromUtf8(m_rest.first(end));
        m_rest = m_rest.sliced(std::min(end + 1, m_rest.size()));
        return times > 255 && taken.size() < 16 ? taken.repeated(times) : taken;
    }

    /// A date up to 199 s after noon, or any 64-bit value.
    qint64 date()
    {
        const quint8 kind = byte();
        if (kind < 200) {
            return noon + kind;
        }
        quint64 value = 0;
        for (int count = 0; count < 8; ++count) {
            value = value << 8U | byte();
        }
        return static_cast<qint64>(value);
    }

private:
    QByteArray m_rest;
};

void call(AgentInterface &agent, Bytes &bytes)
{
    const quint8 method = bytes.byte() % 4;
    if (method == 0) {
        (void)agent.PendingRequests();
        return;
    }
    if (method == 1) {
        QStringList identifiers;
        for (int count = bytes.byte() % 8; count > 0; --count) {
            identifiers.append(bytes.text());
        }
        agent.RemovePendingRequests(identifiers);
        return;
    }
    const QString identifier = bytes.text();
    const QString title = bytes.text();
    const QString body = bytes.text();
    const QString category = bytes.text();
    const qint64 fireDate = bytes.date();
    const qint64 expirationDate = bytes.date();
    if (method == 2) {
        agent.Add(identifier, title, body, category, fireDate, expirationDate);
    } else {
        agent.AddQuietly(identifier, title, body, category, fireDate, expirationDate);
    }
}

/// Arbitrary calls to the agent's bus interface while time passes and requests fall due.
void run(const QByteArray &input)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(u"quillet/pending"_s);
    QFile::remove(path);
    const auto log = [](const QString &) {};
    RequestFile file(path, log);
    LoginEntry entry(u"/opt/agent"_s, folder.path());
    FakeWallClock clock(noon);
    FakeNotificationServer server;
    RequestKeeper keeper(file, entry, clock, server, log);
    fuzz::require(keeper.load(), "the queue can be read");
    keeper.start();
    FakeSessionProgram program;
    ProgramWatch watch(clock, program, log);
    AgentInterface agent(QDBusConnection(u"none"_s), keeper, watch, log);
    Bytes bytes(input);
    for (int count = 0; !bytes.isEmpty() && count < 50; ++count) {
        call(agent, bytes);
        if (bytes.byte() % 4 == 0) {
            clock.tick();
            QCoreApplication::processEvents();
        }
    }
    QCoreApplication::processEvents();
    fuzz::require(keeper.queue().size() <= AgentInterface::maximumRequests, "the queue is limited");
    fuzz::require(RequestFile(path, log).read().queue.identifiers() == keeper.queue().identifiers(),
                  "what is pending is on the disk");
}

QUILLET_FUZZ_TARGET("AgentCalls", run);

} // namespace
