// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/DebugLogService.h"
#include "tests/support/Obstacles.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

QByteArray contents(const QUrl &url)
{
    QFile file(url.toLocalFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

/// Redirects standard error to a file during its lifetime.
class StandardErrorIn {
public:
    explicit StandardErrorIn(const QString &path) : m_before(::dup(STDERR_FILENO))
    {
        const int file =
            ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        if (file >= 0) {
            ::dup2(file, STDERR_FILENO);
            ::close(file);
        }
    }
    ~StandardErrorIn()
    {
        if (m_before >= 0) {
            ::dup2(m_before, STDERR_FILENO);
            ::close(m_before);
        }
    }
    Q_DISABLE_COPY_MOVE(StandardErrorIn)

private:
    int m_before;
};

} // namespace

class DebugLogServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLatestEightyLinesAreKept()
    {
        const QTemporaryDir library;
        DebugLogService log(library.path());
        for (int call = 1; call <= 80; ++call) {
            log.log(u"call "_s + QString::number(call), at("09:00:00"));
        }
        QVERIFY(log.latestLines().first().endsWith(u" call 1"_s));
        log.log(u"call 81"_s, at("09:00:00"));
        QCOMPARE(log.latestLines().size(), 80);
        QVERIFY(log.latestLines().first().endsWith(u" call 2"_s));
        for (int call = 82; call <= 200; ++call) {
            log.log(u"call "_s + QString::number(call), at("09:00:00"));
        }
        QCOMPARE(log.latestLines().size(), 80);
        for (int line = 0; line < 80; ++line) {
            QCOMPARE(log.latestLines().at(line),
                     u"2026-11-16T09:00:00.000Z call "_s + QString::number(121 + line));
        }
        QCOMPARE(contents(log.logURL()).count('\n'), 200);
    }

    void theFirstCallMakesTheFileWithExactlyOneLine()
    {
        const QTemporaryDir library;
        const QString path = library.path() + u"/state/Logs/Quillet/quillet-debug.log"_s;
        DebugLogService log(library.path() + u"/state"_s);
        QVERIFY(!QFile::exists(path));
        QCOMPARE(log.logURL(), QUrl::fromLocalFile(path));
        log.log(u"app started"_s, at("09:00:00.123"));
        QCOMPARE(contents(log.logURL()), QByteArray("2026-11-16T09:00:00.123Z app started\n"));
    }

    void aLaterLaunchAppendsAndStartsWithAnEmptyList()
    {
        const QTemporaryDir library;
        DebugLogService(library.path()).log(u"first"_s, at("09:00:00"));
        DebugLogService second(library.path());
        QVERIFY(second.latestLines().isEmpty());
        second.log(u"second 王"_s, at("09:00:01"));
        QCOMPARE(contents(second.logURL()),
                 QByteArray("2026-11-16T09:00:00.000Z first\n2026-11-16T09:00:01.000Z second 王\n"));
    }

    void aLineFeedInAMessageMakesTwoLinesInTheFileAndOneEntry()
    {
        const QTemporaryDir library;
        DebugLogService log(library.path());
        log.log(u"one\ntwo"_s, at("09:00:00"));
        QCOMPARE(log.latestLines(), QStringList{u"2026-11-16T09:00:00.000Z one\ntwo"_s});
        QCOMPARE(contents(log.logURL()).count('\n'), 2);
    }

    void filesThatAreNotRegularLeaveTheLinesInMemory_data() { obstacles::addRows(); }

    void filesThatAreNotRegularLeaveTheLinesInMemory()
    {
        QFETCH(obstacles::Kind, kind);
        const QTemporaryDir library;
        const QString path = library.path() + u"/Logs/Quillet/quillet-debug.log"_s;
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        const auto obstacle = obstacles::put(kind, path);
        DebugLogService log(library.path());
        log.log(u"kept"_s, at("09:00:00"));
        QCOMPARE(log.latestLines(), QStringList{u"2026-11-16T09:00:00.000Z kept"_s});
        QVERIFY(obstacle.isUntouched());
    }

    void anUnwritableLogIsReportedOnce()
    {
        const QTemporaryDir library;
        const QString path = library.path() + u"/Logs/Quillet/quillet-debug.log"_s;
        QVERIFY(QDir().mkpath(path));
        const QString said = library.filePath(u"stderr"_s);
        {
            const StandardErrorIn redirected(said);
            DebugLogService log(library.path());
            log.log(u"one"_s, at("09:00:00"));
            QCOMPARE(contents(QUrl::fromLocalFile(said)).count('\n'), 1);
            log.log(u"two"_s, at("09:00:00"));
        }
        const QString text = QString::fromUtf8(contents(QUrl::fromLocalFile(said)));
        QVERIFY2(text.startsWith(u"quillet: the log "_s + path + u" cannot be written: "_s),
                 qPrintable(text));
        QCOMPARE(text.count(u'\n'), 1);
        QVERIFY(!text.endsWith(u": \n"_s));
    }

    void onlyTheUserCanReadTheLog()
    {
        const QTemporaryDir library;
        const QString path = library.path() + u"/Logs/Quillet/quillet-debug.log"_s;
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.setPermissions(QFile::Permissions(0x6644)));
        QVERIFY(QFile::setPermissions(QFileInfo(path).path(), QFile::Permissions(0x7755)));
        DebugLogService(library.path()).log(u"Anna"_s, at("09:00:00"));
        for (const QString &name : {path, QFileInfo(path).path()}) {
            QCOMPARE(QFile::permissions(name) & QFile::Permissions(0x0077), QFile::Permissions());
        }
        const QTemporaryDir fresh;
        DebugLogService(fresh.path()).log(u"Anna"_s, at("09:00:00"));
        QCOMPARE(QFile::permissions(fresh.path() + u"/Logs/Quillet/quillet-debug.log"_s) &
                     QFile::Permissions(0x0077),
                 QFile::Permissions());
    }

    void aFolderThatCannotBeCreatedLeavesTheLinesInMemory()
    {
        // A file in the folder's place: not even root can create the folder.
        const QTemporaryDir library;
        QFile obstacle(library.path() + u"/Logs"_s);
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        DebugLogService log(library.path());
        log.log(u"kept"_s, at("09:00:00"));
        QCOMPARE(log.latestLines(), QStringList{u"2026-11-16T09:00:00.000Z kept"_s});
        QVERIFY(!QFile::exists(log.logURL().toLocalFile()));
    }

    // Its owner could read the log.
    void nothingIsWrittenIntoAnotherUsersFolder()
    {
        const QTemporaryDir library;
        const QString folder = library.path() + u"/Logs/Quillet"_s;
        if (::geteuid() == 0) {
            QVERIFY(QDir().mkpath(folder));
            QCOMPARE(::chown(QFile::encodeName(folder).constData(), 65534, 65534), 0);
        } else {
            QVERIFY(QDir().mkpath(library.path() + u"/Logs"_s));
            QVERIFY(QFile::link(u"/var/tmp"_s, folder)); // only root can give a folder away
        }
        DebugLogService log(library.path());
        log.log(u"kept"_s, at("09:00:00"));
        QCOMPARE(log.latestLines().size(), 1);
        QVERIFY(!QFile::exists(log.logURL().toLocalFile()));
    }

    void aMovedFileIsRecreated()
    {
        const QTemporaryDir library;
        DebugLogService log(library.path());
        log.log(u"one"_s, at("09:00:00"));
        QVERIFY(QFile::rename(log.logURL().toLocalFile(), library.filePath(u"old.log"_s)));
        log.log(u"two"_s, at("09:00:00"));
        QCOMPARE(contents(log.logURL()), QByteArray("2026-11-16T09:00:00.000Z two\n"));
    }

    void withoutALibraryTheTemporaryFolderIsUsed()
    {
        const DebugLogService log{QString()};
        QCOMPARE(log.logURL().toLocalFile(), QDir::tempPath() + u"/Logs/Quillet/quillet-debug.log"_s);
    }

    void theUsersLibraryFollowsTheDesktopsBaseDirectories()
    {
        qputenv("XDG_STATE_HOME", "/somewhere/state");
        QCOMPARE(DebugLogService::userLibraryDirectory(), u"/somewhere/state"_s);
        qputenv("XDG_STATE_HOME", "relative");
        QCOMPARE(DebugLogService::userLibraryDirectory(), QDir::homePath() + u"/.local/state"_s);
        qunsetenv("XDG_STATE_HOME");
        QCOMPARE(DebugLogService::userLibraryDirectory(), QDir::homePath() + u"/.local/state"_s);
    }

    void observersAreNotifiedOfEachLine()
    {
        const QTemporaryDir library;
        DebugLogService log(library.path());
        const QSignalSpy spy(&log, &DebugLogService::latestLinesChanged);
        log.log(u"one"_s, at("09:00:00"));
        log.log(u"one"_s, at("09:00:00"));
        QCOMPARE(spy.count(), 2);
    }
};

QUILLET_TEST(DebugLogServiceTest, runTest<DebugLogServiceTest>);
#include "DebugLogServiceTest.moc"
