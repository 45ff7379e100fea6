// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/Names.h"
#include "NotificationAgent/AgentLifecycle.h"
#include "NotificationAgent/AgentLog.h"
#include "NotificationAgent/FreedesktopNotificationServer.h"
#include "NotificationAgent/LoginEntry.h"
#include "NotificationAgent/TimerfdClock.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <sys/timerfd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

PendingRequest sampleRequest()
{
    return {u"quillet.backup.start.1.Anna"_s,
            u"Quillet: <START> & NOW"_s,
            u"Anna & <b>Ben</b> \"start\" in 20 seconds."_s,
            u"quillet.lesson"_s,
            1,
            2};
}

} // namespace

class AgentPartsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // --- the clock

    void theAlarmRingsInItsSecondAndNotBefore()
    {
        TimerfdClock clock;
        qint64 best = 1'000'000;
        for (int i = 0; i < 2; ++i) {
            const qint64 second = clock.now() + 1;
            qint64 rang = 0;
            const auto connection =
                connect(&clock, &WallClock::woke, this, [&] { rang = QDateTime::currentMSecsSinceEpoch(); });
            clock.wakeAt(second);
            QTRY_VERIFY_WITH_TIMEOUT(rang != 0, 10'000);
            disconnect(connection);
            QVERIFY(clock.now() >= second);
            QVERIFY(rang >= second * 1000);
            best = std::min(best, rang - second * 1000);
        }
        QVERIFY2(best < 100, QByteArray::number(best).constData());
    }

    void anAlarmInThePastRingsAtOnce()
    {
        TimerfdClock clock;
        QSignalSpy rings(&clock, &WallClock::woke);
        clock.wakeAt(-5);
        QVERIFY(rings.isEmpty());
        QTRY_COMPARE(rings.size(), 1);
    }

    void aCancelledAlarmDoesNotRing()
    {
        TimerfdClock clock;
        QSignalSpy rings(&clock, &WallClock::woke);
        clock.wakeAt(clock.now());
        clock.wakeAt(std::nullopt);
        TimerfdClock other;
        QSignalSpy otherRings(&other, &WallClock::woke);
        other.wakeAt(other.now() + 1);
        QTRY_COMPARE(otherRings.size(), 1);
        QVERIFY(rings.isEmpty());
    }

    // A test must not set the clock, so this checks what the kernel says about the timer.
    void theAlarmIsAbsoluteAndNoticesClockChanges()
    {
        TimerfdClock clock;
        clock.wakeAt(clock.now() + 1000);
        QByteArray timer;
        for (const QString &file : QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System)) {
            if (QFile::symLinkTarget(u"/proc/self/fd/"_s + file).endsWith(u"[timerfd]"_s)) {
                timer += contentOf(u"/proc/self/fdinfo/"_s + file);
            }
        }
        const auto flags =
            QByteArray::number(TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, 8).rightJustified(2, '0');
        QVERIFY2(timer.contains("settime flags: " + flags), timer.constData());
        QVERIFY2(timer.contains("clockid: " + QByteArray::number(CLOCK_REALTIME) + '\n'), timer.constData());
    }

    // --- obstacles in a file's place

    void filesThatAreNotRegularAreLeftAlone_data() { obstacles::addRows(); }

    void filesThatAreNotRegularAreLeftAlone()
    {
        QFETCH(obstacles::Kind, kind);
        const QTemporaryDir folder;
        const QString logPath = folder.filePath(u"Logs/agent.log"_s);
        QVERIFY(QDir().mkpath(QFileInfo(logPath).path()));
        const auto inTheLogsPlace = obstacles::put(kind, logPath);
        AgentLog(logPath).log(u"line"_s);
        QVERIFY(inTheLogsPlace.isUntouched());

        LoginEntry entry(u"/opt/agent"_s, folder.path());
        QVERIFY(QDir().mkpath(QFileInfo(entry.path()).path()));
        const auto inTheEntrysPlace = obstacles::put(kind, entry.path());
        const auto made = entry.setPresent(true);
        QVERIFY(!made);
        QVERIFY(made.error().startsWith(u"cannot be written: it is "_s));
        QVERIFY(inTheEntrysPlace.isUntouched());
    }

    void aPipeInPlaceOfTheLoginEntryIsNotRemoved()
    {
        const QTemporaryDir folder;
        LoginEntry entry(u"/opt/agent"_s, folder.path());
        QVERIFY(QDir().mkpath(QFileInfo(entry.path()).path()));
        const auto pipe = obstacles::put(obstacles::Kind::pipe, entry.path());
        QVERIFY(!entry.setPresent(false));
        QVERIFY(pipe.isUntouched());
    }

    void onlyTheUserCanReadTheLog()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Logs/agent.log"_s);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        for (const QString &name : {path, path + u".old"_s}) {
            QFile file(name);
            QVERIFY(file.open(QIODevice::WriteOnly));
            QVERIFY(file.setPermissions(QFile::Permissions(0x6664)));
        }
        QVERIFY(QFile::setPermissions(QFileInfo(path).path(), QFile::Permissions(0x7775)));
        AgentLog(path).log(u"line"_s);
        for (const QString &name : {path, path + u".old"_s, QFileInfo(path).path()}) {
            QCOMPARE(QFile::permissions(name) & QFile::Permissions(0x0077), QFile::Permissions());
        }
    }

    void aMessageIsWrittenAsOneLineWithoutControlCharacters()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Logs/agent.log"_s);
        AgentLog(path).log(u"a\n2026-01-01T00:00:00.000Z forged\x1b[31m\u009b1m\u202Eb"_s);
        const QByteArray content = contentOf(path);
        QCOMPARE(content.count('\n'), 1);
        QVERIFY2(content.endsWith(" a 2026-01-01T00:00:00.000Z forged [31m 1mb\n"), content.constData());
    }

    // --- the unit

    void theUnitRestartsLimitsAndSandboxesTheAgent()
    {
        const QList<QByteArray> lines = contentOf(QUILLET_AGENT_UNIT).split('\n');
        // Systemd ends the agent when it loses its name, so that the next call starts a new one.
        QVERIFY(lines.contains("Type=dbus"));
        QVERIFY(lines.contains(QByteArray("BusName=") + names::agent.data()));
        // With this delay fewer than five starts fit into ten seconds; after five, systemd gives up.
        QVERIFY(lines.contains("Restart=on-failure"));
        QVERIFY(lines.contains("RestartSec=3"));
        QVERIFY(lines.contains("MemoryMax=128M"));
        for (const char *line :
             {"NoNewPrivileges=yes", "UMask=0077", "LockPersonality=yes", "MemoryDenyWriteExecute=yes",
              "RestrictAddressFamilies=AF_UNIX", "RestrictNamespaces=yes", "RestrictRealtime=yes",
              "RestrictSUIDSGID=yes", "SystemCallArchitectures=native", "SystemCallErrorNumber=EPERM"}) {
            QVERIFY2(lines.contains(line), line);
        }
        // No other settings: those that mount or change capabilities need a user namespace, which may be
        // forbidden.
        const auto isKnown = [](const QByteArray &line) {
            static const QList<QByteArray> known{"Description",
                                                 "Type",
                                                 "BusName",
                                                 "ExecStart",
                                                 "Restart",
                                                 "RestartSec",
                                                 "MemoryMax",
                                                 "NoNewPrivileges",
                                                 "UMask",
                                                 "LockPersonality",
                                                 "MemoryDenyWriteExecute",
                                                 "RestrictAddressFamilies",
                                                 "RestrictNamespaces",
                                                 "RestrictRealtime",
                                                 "RestrictSUIDSGID",
                                                 "SystemCallArchitectures",
                                                 "SystemCallErrorNumber",
                                                 "SystemCallFilter"};
            return line.isEmpty() || line.startsWith('#') || line.startsWith('[') ||
                   known.contains(line.split('=').first());
        };
        for (const QByteArray &line : lines) {
            QVERIFY2(isKnown(line), line.constData());
            QVERIFY2(line.startsWith("SystemCallFilter=") || !line.contains('@'), line.constData());
        }
    }

    // --- what a server receives

    void aServerWithMarkupGetsTheBodyEscaped()
    {
        const QVariantList arguments =
            FreedesktopNotificationServer::notifyArguments(sampleRequest(), {u"body"_s, u"body-markup"_s});
        QCOMPARE(arguments.at(3).toString(), sampleRequest().title);
        QCOMPARE(arguments.at(4).toString(),
                 u"Anna &amp; &lt;b&gt;Ben&lt;/b&gt; &quot;start&quot; in 20 seconds."_s);
    }

    void aServerGetsNoControlCharacters()
    {
        PendingRequest hostile = sampleRequest();
        hostile.title = u"a\x1b[31m\nb"_s;
        hostile.body = u"c\u202E\u0085d"_s;
        const QVariantList arguments = FreedesktopNotificationServer::notifyArguments(hostile, {u"body"_s});
        QCOMPARE(arguments.at(3).toString(), u"a [31m b"_s);
        QCOMPARE(arguments.at(4).toString(), u"c d"_s);
    }

    void aServerWithoutMarkupGetsTheBodyUnchanged()
    {
        const QVariantList arguments =
            FreedesktopNotificationServer::notifyArguments(sampleRequest(), {u"body"_s});
        QCOMPARE(arguments.at(4).toString(), sampleRequest().body);
    }

    void theCallHasExactlyTheStandardArguments()
    {
        const QVariantList arguments = FreedesktopNotificationServer::notifyArguments(sampleRequest(), {});
        QCOMPARE(arguments.size(), 8);
        QCOMPARE(arguments.at(0), QVariant(u"Quillet"_s));
        QCOMPARE(arguments.at(1), QVariant(0U));
        QCOMPARE(arguments.at(2), QVariant(u"com.ordwinsoftware.Quillet"_s));
        QCOMPARE(arguments.at(5), QVariant(QStringList()));
        const QVariantMap hints{{u"urgency"_s, QVariant::fromValue(uchar{1})},
                                {u"category"_s, u"quillet.lesson"_s},
                                {u"desktop-entry"_s, u"com.ordwinsoftware.Quillet"_s},
                                {u"sound-name"_s, u"message-new-instant"_s}};
        QCOMPARE(arguments.at(6).toMap(), hints);
        QCOMPARE(arguments.at(6).toMap().value(u"urgency"_s).typeId(), static_cast<int>(QMetaType::UChar));
        QCOMPARE(arguments.at(7), QVariant(-1));
    }

    void aQuietRequestSuppressesTheSound()
    {
        PendingRequest quiet = sampleRequest();
        quiet.isQuiet = true;
        const QVariantMap hints =
            FreedesktopNotificationServer::notifyArguments(quiet, {u"sound"_s}).at(6).toMap();
        QCOMPARE(hints.value(u"suppress-sound"_s), QVariant(true));
        QVERIFY(!hints.contains(u"sound-name"_s));
    }

    // --- the login entry

    void theEntryIsValidAndHidden()
    {
        const QTemporaryDir home;
        LoginEntry entry(u"/opt/my \"lessons\" 100%/$agent\\"_s, home.path());
        QVERIFY(entry.setPresent(true));
        QCOMPARE(entry.path(),
                 home.filePath(u"autostart/com.ordwinsoftware.Quillet.NotificationAgent.desktop"_s));
        QProcess validator;
        validator.setProcessChannelMode(QProcess::MergedChannels);
        validator.start(u"desktop-file-validate"_s, {u"--no-hints"_s, entry.path()});
        QVERIFY(validator.waitForFinished(20'000));
        QCOMPARE(QString::fromUtf8(validator.readAll()), QString());
        QCOMPARE(validator.exitCode(), 0);
        const QByteArray content = contentOf(entry.path());
        QVERIFY(content.contains("\nNoDisplay=true\n"));
        QVERIFY(content.contains("\nTryExec=/opt/my \"lessons\" 100%/$agent\\\\\n"));
        QVERIFY(
            content.contains("\nExec=\"/opt/my \\\\\"lessons\\\\\" 100%%/\\\\$agent\\\\\\\\\" --login\n"));
    }

    void theEntryIsWrittenOnlyWhenItChanges()
    {
        const QTemporaryDir home;
        LoginEntry entry(u"/opt/agent"_s, home.path());
        QVERIFY(entry.setPresent(false));
        QVERIFY(entry.setPresent(true));
        QFile file(entry.path());
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QDateTime old = QDateTime::fromSecsSinceEpoch(1'000'000'000);
        QVERIFY(file.setFileTime(old, QFileDevice::FileModificationTime));
        file.close();
        QVERIFY(entry.setPresent(true));
        QCOMPARE(QFileInfo(entry.path()).lastModified(), old);
        QVERIFY(LoginEntry(u"/usr/agent"_s, home.path()).setPresent(true));
        QVERIFY(contentOf(entry.path()).contains("/usr/agent"));
        QVERIFY(entry.setPresent(false));
        QVERIFY(!QFile::exists(entry.path()));
    }

    void anUnwritableEntryIsReported()
    {
        const QTemporaryDir home;
        QFile obstacle(home.filePath(u"autostart"_s));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        QVERIFY(!LoginEntry(u"/opt/agent"_s, home.path()).setPresent(true));
    }

    // --- the log

    void aLineHasATimestampAndNoControlCharacters()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Logs/Quillet/agent.log"_s);
        AgentLog(path).log(u"one\ntwo \x1b[31m 王"_s);
        const QRegularExpression line(
            u"^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z one two  \\[31m 王\n$"_s);
        QVERIFY(line.match(QString::fromUtf8(contentOf(path))).hasMatch());
    }

    void theLogIsRotatedAtItsMaximumSize()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"agent.log"_s);
        QFile full(path);
        QVERIFY(full.open(QIODevice::WriteOnly));
        full.write(QByteArray(AgentLog::maximumFileSize - 10, 'x'));
        full.close();
        const AgentLog log(path);
        log.log(u"one"_s);
        log.log(u"two"_s);
        QVERIFY(QFileInfo(path).size() < 200);
        QCOMPARE(QFileInfo(path + u".old"_s).size(), AgentLog::maximumFileSize - 10);
    }

    void aLongTextIsTruncatedForTheLog()
    {
        QCOMPARE(quotedForLog(u"a"_s), u"\"a\""_s);
        QCOMPARE(quotedForLog(QString(5000, u'a')).size(), 123);
    }

    // --- the lock

    void aQueueHasOneLockHolder()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"quillet/queue.lock"_s);
        QueueLock second(path);
        {
            QueueLock first(path);
            QCOMPARE(first.tryLock(), QueueLock::Attempt::locked);
            QCOMPARE(second.tryLock(), QueueLock::Attempt::heldByOther);
        }
        QCOMPARE(second.tryLock(), QueueLock::Attempt::locked);
    }

    void anImpossibleLockIsReported()
    {
        QueueLock lock(u"/proc/quillet/queue.lock"_s);
        QCOMPARE(lock.tryLock(), QueueLock::Attempt::impossible);
    }
};

QUILLET_TEST(AgentPartsTest, runTest<AgentPartsTest>);
#include "AgentPartsTest.moc"
