// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/ChildProcess.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;
using namespace Qt::StringLiterals;

class ChildProcessTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aServerEndsWithATestThatIsKilled()
    {
        // Without a parent, the server becomes a child of this process, which can wait for it.
        QCOMPARE(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
        int ends[2];
        QCOMPARE(::pipe(ends), 0);
        const pid_t test = ::fork();
        if (test == 0) {
            QProcess server;
            endWithThisProcess(server);
            server.start(u"sleep"_s, {u"1000"_s});
            const auto pid = static_cast<pid_t>(server.waitForStarted() ? server.processId() : 0);
            [[maybe_unused]] const ssize_t written = ::write(ends[1], &pid, sizeof pid);
            ::raise(SIGKILL);
        }
        pid_t server = 0;
        QCOMPARE(::read(ends[0], &server, sizeof server), static_cast<ssize_t>(sizeof server));
        QVERIFY(server > 0);
        QCOMPARE(::waitpid(test, nullptr, 0), test);
        int status = 0;
        pid_t ended = 0; // QTRY_VERIFY evaluates its condition again after it was true
        const auto hasEnded = [&] {
            ended = ended == server ? ended : ::waitpid(server, &status, WNOHANG);
            return ended == server;
        };
        QTRY_VERIFY(hasEnded());
        QVERIFY(WIFSIGNALED(status));
        ::close(ends[0]);
        ::close(ends[1]);
        QCOMPARE(::prctl(PR_SET_CHILD_SUBREAPER, 0), 0);
    }
};

QUILLET_TEST(ChildProcessTest, runTest<ChildProcessTest>);
#include "ChildProcessTest.moc"
