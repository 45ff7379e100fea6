// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/TimeZoneWatcher.h"

#include "tests/support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

class TimeZoneWatcherTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qunsetenv("TZ");
        m_folder = std::make_unique<QTemporaryDir>();
        // The test's own rules, in a folder named like the system's.
        m_rules = m_folder->filePath(u"share/zoneinfo/"_s);
        QDir().mkpath(m_rules + u"Europe"_s);
        QDir().mkpath(m_folder->filePath(u"etc"_s));
        write(m_rules + u"Europe/Berlin"_s, "rules of Berlin");
        write(m_rules + u"Europe/Vienna"_s, "rules of Vienna");
        link(u"Europe/Berlin"_s);
    }

    void cleanup()
    {
        m_watcher.reset();
        qputenv("TZ", "UTC");
    }

    void aReplacedLinkIsReported()
    {
        watch();
        link(u"Europe/Vienna"_s);
        QTRY_COMPARE(m_times->size(), 1);
        link(u"Europe/Berlin"_s);
        QTRY_COMPARE(m_times->size(), 2);
    }

    void aLinkRemovedAndCreatedAgainIsReportedOnce()
    {
        watch();
        const QFileSystemWatcher folder({m_folder->filePath(u"etc"_s)});
        QSignalSpy changes(&folder, &QFileSystemWatcher::directoryChanged);
        QFile::remove(file());
        // The watcher under test is notified in the same turn of the event loop.
        QVERIFY(changes.wait());
        QCoreApplication::processEvents();
        link(u"Europe/Vienna"_s);
        QTRY_COMPARE(m_times->size(), 1);
        waitLongEnough();
        QCOMPARE(m_times->size(), 1);
    }

    void aRelativeLinkToTheSameZoneIsNoChange()
    {
        watch();
        QFile::remove(file());
        QFile::link(u"../share/zoneinfo/Europe/Berlin"_s, file());
        waitLongEnough();
        QCOMPARE(m_times->size(), 0);
    }

    void otherFilesInTheFolderAreNoChange()
    {
        watch();
        write(m_folder->filePath(u"etc/passwd"_s), "someone");
        waitLongEnough();
        QCOMPARE(m_times->size(), 0);
    }

    void newRulesOfTheSameZoneAreNoChange()
    {
        watch();
        write(m_rules + u"Europe/Berlin"_s, "newer rules of Berlin");
        waitLongEnough();
        QCOMPARE(m_times->size(), 0);
    }

    void anOverwrittenCopyIsReported()
    {
        QFile::remove(file());
        write(file(), "rules of Berlin");
        watch();
        write(file(), "rules of Berlin");
        waitLongEnough();
        QCOMPARE(m_times->size(), 0);
        write(file(), "rules of Vienna");
        QTRY_COMPARE(m_times->size(), 1);
    }

    void aCopyThatReplacesALinkIsWatched()
    {
        watch();
        QFile::remove(file());
        write(file(), "rules of Vienna");
        QTRY_COMPARE(m_times->size(), 1);
        write(file(), "rules of Berlin");
        QTRY_COMPARE(m_times->size(), 2);
    }

    void aRemovedFileIsReported()
    {
        watch();
        QFile::remove(file());
        QTRY_COMPARE(m_times->size(), 1);
    }

    void aFolderInItsPlaceIsHarmless()
    {
        QFile::remove(file());
        QDir().mkpath(file());
        watch();
        QDir().rmdir(file());
        link(u"Europe/Vienna"_s);
        QTRY_COMPARE(m_times->size(), 1);
    }

    void aZoneFromTheEnvironmentOverridesTheFile_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::newRow("named") << QByteArray("America/Havana");
        QTest::newRow("empty, which means UTC") << QByteArray("");
    }

    void aZoneFromTheEnvironmentOverridesTheFile()
    {
        QFETCH(QByteArray, zone);
        qputenv("TZ", zone);
        watch();
        link(u"Europe/Vienna"_s);
        waitLongEnough();
        QCOMPARE(m_times->size(), 0);
    }

    void theDecidingFileIsTheSystemsUnlessTheEnvironmentNamesOne()
    {
        const QString machines = u"/etc/localtime"_s;
        QCOMPARE(TimeZoneWatcher::decidingFile(), machines);
        for (const char *named : {"", "Europe/Berlin", ":Europe/Berlin"}) {
            qputenv("TZ", named);
            QCOMPARE(TimeZoneWatcher::decidingFile(), machines);
        }
        for (const QByteArray &colon : {QByteArray(), QByteArray(":")}) {
            qputenv("TZ", colon + QFile::encodeName(file()));
            QCOMPARE(TimeZoneWatcher::decidingFile(), file());
        }
    }

    void anEnvironmentThatNamesTheFileDoesNotOverrideIt()
    {
        qputenv("TZ", ":" + QFile::encodeName(file()));
        watch();
        link(u"Europe/Vienna"_s);
        QTRY_COMPARE(m_times->size(), 1);
    }

private:
    [[nodiscard]] QString file() const { return m_folder->filePath(u"etc/localtime"_s); }

    static void write(const QString &path, const QByteArray &text)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// Replaces the link atomically, as the system does.
    void link(const QString &zone) const
    {
        const QString newLink = file() + u".new"_s;
        QVERIFY(QFile::link(m_rules + zone, newLink));
        QCOMPARE(std::rename(QFile::encodeName(newLink).constData(), QFile::encodeName(file()).constData()),
                 0);
    }

    void watch()
    {
        m_watcher = std::make_unique<TimeZoneWatcher>(file());
        m_times = std::make_unique<QSignalSpy>(m_watcher.get(), &TimeZoneWatcher::zoneChanged);
    }

    /// Waits until a change would have been reported.
    static void waitLongEnough()
    {
        QTest::qWait(2 * static_cast<int>(TimeZoneWatcher::settlingTime.count()));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_rules;
    std::unique_ptr<TimeZoneWatcher> m_watcher;
    std::unique_ptr<QSignalSpy> m_times;
};

QUILLET_TEST(TimeZoneWatcherTest, runTest<TimeZoneWatcherTest>);
#include "TimeZoneWatcherTest.moc"
