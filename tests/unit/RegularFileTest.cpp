// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/RegularFile.h"
#include "Corvane/Utilities/UserFolders.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <string>

using namespace corvane;
using namespace Qt::StringLiterals;

using Kind = FileError::Kind;

class RegularFileTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"file"_s);
        m_bytes = QFile::encodeName(m_path);
    }

    void writtenBytesReadBackEqual()
    {
        QVERIFY(replaceRegularFile(m_bytes, "one"));
        QCOMPARE(readRegularFile(m_bytes, 3).value(), QByteArray("one"));
        QVERIFY(appendToRegularFile(m_bytes, " two"));
        QCOMPARE(readRegularFile(m_bytes, 100).value(), QByteArray("one two"));
        QVERIFY(replaceRegularFile(m_bytes, QByteArray(200'000, 'x')));
        QCOMPARE(readRegularFile(m_bytes, 200'000).value(), QByteArray(200'000, 'x'));
        QCOMPARE(readRegularFile(m_bytes, 199'999).error().kind, Kind::unusable);
        QVERIFY(removeRegularFile(m_bytes));
        QCOMPARE(readRegularFile(m_bytes, 100).error().kind, Kind::absent);
        QVERIFY(removeRegularFile(m_bytes));
        QCOMPARE(m_folder->path(), QFileInfo(m_path).path());
        QVERIFY(QDir(m_folder->path()).isEmpty());
    }

    void filesThatAreNotRegularAreLeftAlone_data() { obstacles::addRows(); }

    // None of these calls may block; the test's time limit would notice.
    void filesThatAreNotRegularAreLeftAlone()
    {
        QFETCH(obstacles::Kind, kind);
        const auto obstacle = obstacles::put(kind, m_path);
        QVERIFY(obstacle.isThere());
        QCOMPARE(readRegularFile(m_bytes, 100).error().kind, Kind::unusable);
        for (const int access : {O_RDONLY, O_WRONLY, O_RDWR}) {
            QCOMPARE(openRegularFile(m_bytes, access).error().kind, Kind::unusable);
        }
        QCOMPARE(replaceRegularFile(m_bytes, "mine").error().kind, Kind::unusable);
        QCOMPARE(appendToRegularFile(m_bytes, "mine").error().kind, Kind::unusable);
        QVERIFY(!appendToRegularFile(m_bytes, "mine").error().reason.isEmpty());
        makeFilePrivate(m_bytes);
        QVERIFY(obstacle.isUntouched());
    }

    void anotherUsersRegularFileIsRead()
    {
        // Belongs to root, also if another user runs the test.
        QVERIFY(readRegularFile("/etc/passwd", 1'000'000));
    }

    void aLinkToTheUsersOwnFileStaysALink()
    {
        const QString real = m_folder->filePath(u"repository/settings"_s);
        QVERIFY(QDir().mkpath(QFileInfo(real).path()));
        QVERIFY(replaceRegularFile(QFile::encodeName(real), "one"));
        QVERIFY(QFile::link(u"repository/settings"_s, m_path));
        QCOMPARE(readRegularFile(m_bytes, 100).value(), QByteArray("one"));
        QVERIFY(replaceRegularFile(m_bytes, "two"));
        QVERIFY(appendToRegularFile(m_bytes, " three"));
        QVERIFY(QFileInfo(m_path).isSymLink());
        QCOMPARE(readRegularFile(QFile::encodeName(real), 100).value(), QByteArray("two three"));
        QCOMPARE(QDir(m_folder->path() + u"/repository"_s).entryList(QDir::Files),
                 QStringList{u"settings"_s});
        // Only the link is removed.
        QVERIFY(removeRegularFile(m_bytes));
        QVERIFY(QFile::exists(real));
    }

    void aCalendarMayBeALinkToAnotherUsersFile()
    {
        const auto obstacle = obstacles::put(obstacles::Kind::linkToForeignFile, m_path);
        QVERIFY(readRegularFile(m_bytes, 1'000'000, LinkTo::anyFile));
    }

    void onlyTheUserCanReadWrittenFiles()
    {
        const mode_t before = ::umask(0);
        QVERIFY(makePrivateFolder(m_bytes + "/a/b"));
        QVERIFY(replaceRegularFile(m_bytes + "/a/b/replaced", "x"));
        QVERIFY(appendToRegularFile(m_bytes + "/a/b/appended", "x"));
        ::umask(before);
        QCOMPARE(mode("/a"), mode_t{0700});
        QCOMPARE(mode("/a/b"), mode_t{0700});
        QCOMPARE(mode("/a/b/replaced"), mode_t{0600});
        QCOMPARE(mode("/a/b/appended"), mode_t{0600});
    }

    void readableFilesBecomePrivate()
    {
        QVERIFY(makePrivateFolder(m_bytes));
        for (const char *name : {"/one", "/two"}) {
            QVERIFY(replaceRegularFile(m_bytes + name, "x"));
            QCOMPARE(::chmod((m_bytes + name).constData(), 0664), 0);
        }
        QCOMPARE(::chmod(m_bytes.constData(), 0755), 0);
        QVERIFY(appendToRegularFile(m_bytes + "/one", "x"));
        QCOMPARE(mode("/one"), mode_t{0600});
        QCOMPARE(mode("/two"), mode_t{0664});
        makeFilePrivate(m_bytes + "/two");
        QCOMPARE(mode("/two"), mode_t{0600});
        QCOMPARE(::chmod((m_bytes + "/two").constData(), 0664), 0);
        QVERIFY(makePrivateFolder(m_bytes));
        QCOMPARE(mode("/two"), mode_t{0600});
        QCOMPARE(mode(""), mode_t{0700});
    }

    void anotherUsersFileIsNotAppendedTo()
    {
        if (::geteuid() != 0) {
            QCOMPARE(makePrivateFolder("/usr").error().kind, Kind::unusable);
            return; // only root can give a file away
        }
        QVERIFY(makePrivateFolder(m_bytes));
        QVERIFY(replaceRegularFile(m_bytes + "/log", "x"));
        QCOMPARE(::chown((m_bytes + "/log").constData(), 65534, 65534), 0);
        QCOMPARE(appendToRegularFile(m_bytes + "/log", "Anna").error().kind, Kind::unusable);
        QCOMPARE(::chown(m_bytes.constData(), 65534, 65534), 0);
        QCOMPARE(makePrivateFolder(m_bytes).error().kind, Kind::unusable);
    }

    void leftoversOfAnInterruptedCallAreReplaced()
    {
        QVERIFY(replaceRegularFile(m_bytes + ".new", "half"));
        QVERIFY(replaceRegularFile(m_bytes, "whole"));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"file"_s});
        QCOMPARE(readRegularFile(m_bytes, 100).value(), QByteArray("whole"));
    }

    void relativeBaseDirectoriesAreIgnored()
    {
        const auto with = [](const char *variable, const char *value, const auto &ask) {
            const QByteArray before = qgetenv(variable);
            qputenv(variable, value);
            auto answer = ask();
            qputenv(variable, before);
            return answer;
        };
        const QString home = QDir::homePath();
        QCOMPARE(with("XDG_CONFIG_HOME", "a/b", userFolders::config), home + u"/.config"_s);
        QCOMPARE(with("XDG_STATE_HOME", "./state", userFolders::state), home + u"/.local/state"_s);
        QCOMPARE(with("XDG_DATA_HOME", "data", userFolders::data), home + u"/.local/share"_s);
        QCOMPARE(with("XDG_DATA_HOME", "", userFolders::data), home + u"/.local/share"_s);
        QCOMPARE(with("XDG_DATA_HOME", "/data", userFolders::data), u"/data"_s);
        QCOMPARE(with("XDG_CONFIG_DIRS", "a:/b:c", userFolders::machineConfig), QStringList{u"/b"_s});
        QCOMPARE(with("XDG_CONFIG_DIRS", "a", userFolders::machineConfig), QStringList{u"/etc/xdg"_s});
        QCOMPARE(with("XDG_DATA_DIRS", "", userFolders::machineData),
                 (QStringList{u"/usr/local/share"_s, u"/usr/share"_s}));
    }

private:
    [[nodiscard]] mode_t mode(const char *name) const
    {
        struct stat status = {};
        return ::stat((m_bytes + name).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    QByteArray m_bytes;
};

QUILLET_TEST(RegularFileTest, runTest<RegularFileTest>);
#include "RegularFileTest.moc"
