// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Sound/CanberraSounds.h"

#include "Corvane/Services/FirstLessonLook.h"
#include "tests/contracts/SystemSoundsContract.h"
#include "tests/support/EventLoopWatch.h"
#include "tests/support/PrivateSoundServer.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QDataStream>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>
#include <vector>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// A limit that even a busy machine keeps, shorter than the 30 s for which a hanging server blocks its caller.
constexpr Seconds generousLimit{10};

// Milliseconds; slightly less than those 30 s.
constexpr qint64 shorterThanTheBlocking = 25000;

// A minute of silence: a WAV file with 8-bit samples.
QByteArray minuteOfSilence()
{
    constexpr quint32 rate = 8000;
    constexpr quint32 size = 60 * rate;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32{36 + size};
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32{16} << quint16{1} << quint16{1} << rate << rate << quint16{1} << quint16{8};
    stream.writeRawData("data", 4);
    stream << size;
    return bytes + QByteArray(size, '\x80');
}

} // namespace

class CanberraSoundsTest final : public SystemSoundsContract {
    Q_OBJECT

protected:
    SystemSounds &sounds() override { return *m_sounds; }
    void holdAnswers() override { m_server->hang(); }

private Q_SLOTS:
    void initTestCase()
    {
        const QString folder = m_ownSounds.filePath(u"sounds/quillet/stereo"_s);
        QVERIFY(QDir().mkpath(folder));
        QFile file(folder + u'/' + minute() + u".wav"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray bytes = minuteOfSilence();
        QCOMPARE(file.write(bytes), bytes.size());
        qputenv("XDG_DATA_DIRS", QUILLET_BUILD_SHARE ":" + m_ownSounds.path().toUtf8() + ":/usr/share");
    }

    void init()
    {
        m_server = std::make_unique<PrivateSoundServer>();
        m_plainBells = 0;
        m_hasPlayed = false;
        makeSounds(generousLimit);
    }

    void cleanup()
    {
        m_sounds.reset();
        m_server.reset();
    }

    void theSoundIsAudibleAndDoesNotClip()
    {
        m_server->startRecording();
        QVERIFY(QCoro::waitFor(m_sounds->play(u"Glass"_s)));
        QTRY_VERIFY_WITH_TIMEOUT(m_server->peak() > 0.5, 20000);
        QVERIFY(m_server->peak() < 0.71);
    }

    void theSilentSoundPlaysInaudibly()
    {
        m_server->startRecording();
        QVERIFY(QCoro::waitFor(m_sounds->play(FirstLessonLook::silentSound())));
        QTRY_VERIFY_WITH_TIMEOUT(m_server->isSilent(), 20000);
        QVERIFY(m_server->peak() < 0.001); // not 0 because of dithering
    }

    void theSilentSoundRevealsAServerThatHangs()
    {
        makeSounds(CanberraSounds::timeout);
        m_server->hang();
        QVERIFY(!QCoro::waitFor(m_sounds->play(FirstLessonLook::silentSound())));
    }

    // libcanberra caches the location of each sound in a file, whatever the data folders are, so these tests
    // need a separate process and cache.
    void withoutTheThemeTheSoundIsMissing()
    {
        const QTemporaryDir home;
        QCOMPARE(runProgram(home.path(), u"/usr/share"_s), 1);
    }

    void aThemeThatIsInstalledLaterIsFound()
    {
        const QTemporaryDir home;
        QVERIFY(QDir(home.path()).mkpath(u"sounds"_s));
        QCOMPARE(runProgram(home.path(), u"/usr/share"_s), 1);
        // The cache's age is measured in whole seconds.
        const qint64 second = QDateTime::currentSecsSinceEpoch();
        QTRY_VERIFY(QDateTime::currentSecsSinceEpoch() > second + 1);
        QVERIFY(QDir(home.path()).mkpath(u"sounds/quillet/stereo"_s));
        for (const QString &file : {u"index.theme"_s, u"stereo/Glass.oga"_s}) {
            QVERIFY(QFile::copy(QStringLiteral(QUILLET_BUILD_SHARE) + u"/sounds/quillet/"_s + file,
                                home.filePath(u"sounds/quillet/"_s + file)));
        }
        QCOMPARE(runProgram(home.path(), u"/usr/share"_s), 0);
    }

    void theBeepIsTheDesktopsBell()
    {
        m_server->startRecording();
        m_sounds->beep();
        QTRY_VERIFY_WITH_TIMEOUT(m_server->peak() > 0.02, 20000);
        QCOMPARE(m_plainBells, 0);
    }

    void withoutABellSoundTheBeepIsThePlainBell()
    {
        const QTemporaryDir home;
        QCOMPARE(runProgram(home.path(), home.path(), {u"beep"_s}), 2);
    }

    void withoutAThreadTheBeepIsThePlainBell()
    {
        const QTemporaryDir home;
        QCOMPARE(runProgram(home.path(), u"/usr/share"_s, {u"beep"_s, u"without-threads"_s}, u"1"_s), 2);
    }

    void withoutASoundServerNothingPlaysAndThePlainBellRings()
    {
        m_server->stop();
        QVERIFY(!QCoro::waitFor(m_sounds->play(u"Glass"_s)));
        m_sounds->beep();
        QTRY_COMPARE_WITH_TIMEOUT(m_plainBells, 1, 20000);
    }

    void aServerThatRestartsIsFoundAgain()
    {
        QVERIFY(QCoro::waitFor(m_sounds->play(u"Glass"_s)));
        m_server.reset();
        m_server = std::make_unique<PrivateSoundServer>();
        // The first call after the loss may fail, which is how the loss is noticed.
        QTRY_VERIFY_WITH_TIMEOUT(QCoro::waitFor(m_sounds->play(u"Glass"_s)), 20000);
    }

    void theConnectionEndsAfterTheSound()
    {
        QVERIFY(QCoro::waitFor(m_sounds->play(u"Glass"_s)));
        QVERIFY(isConnected());
        QTRY_VERIFY_WITH_TIMEOUT(!isConnected(), 30000);
    }

    void aLongSoundKeepsItsConnection()
    {
        QVERIFY(QCoro::waitFor(m_sounds->play(minute())));
        const QDeadlineTimer secondRest(
            std::chrono::ceil<std::chrono::milliseconds>(CanberraSounds::rest * 2.5));
        QTRY_VERIFY_WITH_TIMEOUT(secondRest.hasExpired(), 30000);
        QVERIFY(isConnected());
    }

    void aServerThatRestartsBetweenTwoSoundsCostsNone()
    {
        QVERIFY(QCoro::waitFor(m_sounds->play(u"Glass"_s)));
        QTRY_VERIFY_WITH_TIMEOUT(!isConnected(), 30000);
        m_server.reset();
        m_server = std::make_unique<PrivateSoundServer>();
        QVERIFY(QCoro::waitFor(m_sounds->play(u"Glass"_s)));
    }

    void aServerThatHangsCostsOneSecondAndNeverBlocksTheMainThread()
    {
        QVERIFY(connectWithTheShippedLimit());
        m_server->hang();
        const EventLoopWatch watch;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!QCoro::waitFor(m_sounds->play(u"Glass"_s)));
        const qint64 first = timer.elapsed();
        QVERIFY2(first >= 990 && first < shorterThanTheBlocking, qPrintable(QString::number(first)));
        QVERIFY2(watch.turns() > 3, qPrintable(QString::number(watch.turns())));
        // The server is now known to be stuck, so calls are answered at once.
        m_sounds->beep();
        QCOMPARE(m_plainBells, 1);
        auto second = m_sounds->play(u"Glass"_s);
        QVERIFY(second.isReady());
        QVERIFY(!QCoro::waitFor(second));
    }

    void aServerThatHangsFromTheStartCostsOneSecond()
    {
        makeSounds(CanberraSounds::timeout);
        m_server->hang();
        const EventLoopWatch watch;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!QCoro::waitFor(m_sounds->play(u"Glass"_s)));
        QVERIFY2(timer.elapsed() < shorterThanTheBlocking, qPrintable(QString::number(timer.elapsed())));
        QVERIFY2(watch.turns() > 3, qPrintable(QString::number(watch.turns())));
    }

    void aBeepReturnsBeforeItsBell()
    {
        makeSounds(CanberraSounds::timeout);
        m_server->hang();
        m_sounds->beep();
        QCOMPARE(m_plainBells, 0);
        QTRY_COMPARE_WITH_TIMEOUT(m_plainBells, 1, 20000);
    }

    void callsBehindAStuckCallAreAnsweredWithinASecondEach()
    {
        QVERIFY(connectWithTheShippedLimit());
        m_server->hang();
        QElapsedTimer timer;
        timer.start();
        std::vector<QCoro::Task<bool>> tasks;
        tasks.reserve(40); // one after another they would take 40 s
        for (int i = 0; i < 40; ++i) {
            tasks.push_back(m_sounds->play(u"Glass"_s));
        }
        for (auto &task : tasks) {
            QVERIFY(!QCoro::waitFor(task));
        }
        QVERIFY2(timer.elapsed() < shorterThanTheBlocking, qPrintable(QString::number(timer.elapsed())));
    }

    void aServerThatRecoversPlaysNoOldSounds()
    {
        QVERIFY(connectWithTheShippedLimit());
        m_server->startRecording();
        // Wait until this sound has ended, or its rest would be mixed with the next.
        QTRY_VERIFY_WITH_TIMEOUT(m_server->isSilent(), 20000);
        m_server->hang();
        std::vector<QCoro::Task<bool>> tasks;
        tasks.reserve(10);
        for (int i = 0; i < 10; ++i) {
            tasks.push_back(m_sounds->play(u"Glass"_s));
        }
        for (auto &task : tasks) {
            QVERIFY(!QCoro::waitFor(task));
        }
        m_server->resume();
        m_hasPlayed = false;
        // One sound plays again; several at the same time would be louder.
        QTRY_VERIFY_WITH_TIMEOUT(plays(), 20000);
        QTRY_VERIFY_WITH_TIMEOUT(m_server->peak() > 0.3, 20000);
        QVERIFY2(m_server->peak() < 0.9, qPrintable(QString::number(m_server->peak())));
    }

    void theSoundsAreDestroyedAtOnceWhileACallIsStuck()
    {
        QVERIFY(connectWithTheShippedLimit());
        m_server->hang();
        auto task = m_sounds->play(u"Glass"_s);
        QVERIFY(!task.isReady());
        QElapsedTimer timer;
        timer.start();
        m_sounds.reset();
        QVERIFY2(timer.elapsed() < shorterThanTheBlocking, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(task.isReady());
        QVERIFY(!QCoro::waitFor(task));
    }

    void nothingRingsAfterTheEnd()
    {
        m_server->hang();
        m_sounds->beep();
        m_sounds.reset();
        QCOMPARE(m_plainBells, 0);
    }

    void theProgramEndsWhileACallIsStuck()
    {
        m_server->hang();
        const QTemporaryDir home;
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(runProgram(home.path(), qEnvironmentVariable("XDG_DATA_DIRS"), {}, u"1"_s), 1);
        QVERIFY2(timer.elapsed() < shorterThanTheBlocking, qPrintable(QString::number(timer.elapsed())));
    }

    void theProgramEndsAfterTheAnswer()
    {
        const QTemporaryDir home;
        QCOMPARE(runProgram(home.path(), qEnvironmentVariable("XDG_DATA_DIRS")), 0);
    }

private:
    // Whether the server lists this program as a client.
    static bool isConnected()
    {
        QProcess list;
        list.start(u"pactl"_s, {u"list"_s, u"clients"_s});
        return list.waitForFinished(10000) && list.readAllStandardOutput().contains("\"Quillet\"");
    }

    void makeSounds(Seconds limit)
    {
        m_sounds = std::make_unique<CanberraSounds>([this] { ++m_plainBells; }, limit);
    }

    // Whether the sound has started, now or in an earlier call.
    bool plays()
    {
        m_hasPlayed = m_hasPlayed || QCoro::waitFor(m_sounds->play(u"Glass"_s));
        return m_hasPlayed;
    }

    bool connectWithTheShippedLimit()
    {
        makeSounds(CanberraSounds::timeout);
        return QTest::qWaitFor([this] { return plays(); }, 20000);
    }

    // Runs the program in SoundProgram.cpp with these data folders and returns its exit code.
    static int runProgram(const QString &home, const QString &dataDirs, const QStringList &arguments = {},
                          const QString &seconds = QString::number(generousLimit.count()))
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_DATA_HOME"_s, home);
        environment.insert(u"XDG_DATA_DIRS"_s, dataDirs);
        environment.insert(u"XDG_CACHE_HOME"_s, home);
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QUILLET_SOUND_PROGRAM, QStringList{seconds} + arguments);
        return program.waitForFinished(60000) && program.exitStatus() == QProcess::NormalExit
                   ? program.exitCode()
                   : -1;
    }

    QTemporaryDir m_ownSounds;
    std::unique_ptr<PrivateSoundServer> m_server;
    std::unique_ptr<CanberraSounds> m_sounds;
    int m_plainBells = 0;
    bool m_hasPlayed = false;
};

QUILLET_TEST(CanberraSoundsTest, runTest<CanberraSoundsTest, QApplication>);
#include "CanberraSoundsTest.moc"
