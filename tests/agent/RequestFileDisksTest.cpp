// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestFile.h"
#include "tests/agent/FullDisk.h"
#include "tests/agent/RequestFileFixture.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTest>

#include <array>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// During its lifetime file permissions apply to this thread even if it is root's.
class NoPrivileges {
public:
    NoPrivileges()
    {
        ::syscall(SYS_capget, &m_header, m_before.data());
        std::array<__user_cap_data_struct, 2> fewer = m_before;
        fewer[0].effective = 0;
        fewer[1].effective = 0;
        ::syscall(SYS_capset, &m_header, fewer.data());
    }
    ~NoPrivileges() { ::syscall(SYS_capset, &m_header, m_before.data()); }
    NoPrivileges(const NoPrivileges &) = delete;
    NoPrivileges &operator=(const NoPrivileges &) = delete;

private:
    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, 2> m_before{};
};

} // namespace

/// Full disks, and paths that cannot be read or written.
class RequestFileDisksTest final : public RequestFileFixture {
    Q_OBJECT

private Q_SLOTS:
    void onAFullDiskTheOldFileStays()
    {
        RequestFile file(m_path);
        QVERIFY(file.write(queueOf(3)));
        {
            const FullDisk full(100);
            const auto written = file.write(queueOf(4));
            QVERIFY(!written);
            QVERIFY(written.error().startsWith(u"cannot be written: "_s));
        }
        QVERIFY(RequestFile(m_path).read().queue == queueOf(3));
        QCOMPARE(QDir(QFileInfo(m_path).path()).entryList(QDir::Files), QStringList{u"pending"_s});
    }

    void onAFullDiskAnEntryCanBeInvalidated()
    {
        RequestFile file(m_path);
        QVERIFY(file.write(queueOf(3)));
        {
            const FullDisk full(100);
            QVERIFY(file.invalidate({numberedRequest(0).identifier}));
        }
        QCOMPARE(RequestFile(m_path).read().queue.size(), 2);
    }

    void onAFullDiskADamagedFileCanBeReadAndInvalidated()
    {
        put(encodedRequests(queueOf(3)).chopped(5));
        RequestFile file(m_path);
        {
            const FullDisk full(100);
            const auto found = file.read();
            QCOMPARE(found.queue.size(), 3);
            QCOMPARE(found.remarks.size(), 3);
            QVERIFY(file.invalidate({numberedRequest(0).identifier}));
        }
        QCOMPARE(RequestFile(m_path).read().queue.size(), 2);
    }

    void anUnwritableFileIsReadAndStays()
    {
        RequestFile file(m_path);
        QVERIFY(file.write(queueOf(3)));
        {
            const FullDisk none;
            QVERIFY(!file.write({}));
            QVERIFY(!file.invalidate({numberedRequest(0).identifier}));
            QCOMPARE(RequestFile(m_path).read().queue.size(), 3);
        }
        QVERIFY(RequestFile(m_path).read().queue == queueOf(3));
    }

    void anUnreadableFileIsLeftAsItIs_data()
    {
        QTest::addColumn<bool>("isOutOfFiles");
        QTest::newRow("a disk error") << false;
        QTest::newRow("too many open files") << true;
    }

    void anUnreadableFileIsLeftAsItIs()
    {
        QFETCH(bool, isOutOfFiles);
        QVERIFY(RequestFile(m_path).write(queueOf(3)));
        rlimit before{};
        ::getrlimit(RLIMIT_NOFILE, &before);
        if (isOutOfFiles) {
            const rlimit none{0, before.rlim_max};
            ::setrlimit(RLIMIT_NOFILE, &none);
        } else {
            // Reading its first page always fails.
            QVERIFY(QFile::rename(m_path, m_path + u".real"_s));
            QVERIFY(QFile::link(u"/proc/self/mem"_s, m_path));
        }
        RequestFile file(m_path);
        const bool isEmpty = file.isEmpty();
        const auto content = file.read();
        ::setrlimit(RLIMIT_NOFILE, &before);
        QVERIFY(!isEmpty);
        QVERIFY(!content.isReadable);
        QCOMPARE(content.remarks.size(), 1);
        QVERIFY(content.remarks.first().startsWith(u"cannot be read: "_s));
        QVERIFY(!QFile::exists(m_path + u".unreadable"_s));
        if (!isOutOfFiles) {
            QVERIFY(QFile::remove(m_path));
            QVERIFY(QFile::rename(m_path + u".real"_s, m_path));
        }
        QVERIFY(RequestFile(m_path).read().queue == queueOf(3));
    }

    void aFailedFolderFlushIsReportedButNoFailure()
    {
        // A folder with write permission, but not read permission, which opening needs.
        const QByteArray folder = QFile::encodeName(QFileInfo(m_path).path());
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
        QCOMPARE(::chmod(folder.constData(), 0300), 0);
        QStringList lines;
        RequestFile file(m_path, [&](const QString &line) { lines.append(line); });
        bool isWritten = false;
        {
            const NoPrivileges none;
            isWritten = file.write(queueOf(3)).has_value();
        }
        QCOMPARE(::chmod(folder.constData(), 0700), 0);
        QVERIFY(isWritten);
        QCOMPARE(lines.filter(u"folder cannot be flushed: "_s).size(), 1);
        QVERIFY(RequestFile(m_path).read().queue == queueOf(3));
        QVERIFY(file.invalidate({numberedRequest(1).identifier}));
    }

    void aFolderThatCannotBeCreatedFailsTheWrite()
    {
        QFile obstacle(m_folder->filePath(u"state"_s));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        RequestFile file(m_path);
        QVERIFY(file.read().queue.isEmpty());
        QVERIFY(!file.write(queueOf(1)));
    }

    void filesThatAreNotRegularAreReportedAndLeftAlone_data() { obstacles::addRows(); }
    void filesThatAreNotRegularAreReportedAndLeftAlone()
    {
        QFETCH(obstacles::Kind, kind);
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
        const auto obstacle = obstacles::put(kind, m_path);
        RequestFile file(m_path);
        QVERIFY(file.isEmpty());
        const auto found = file.read();
        QVERIFY(found.queue.isEmpty());
        QVERIFY(found.isReadable);
        QCOMPARE(found.remarks.size(), 1);
        QVERIFY(found.remarks.first().startsWith(u"cannot be read: it is "_s));
        const auto written = file.write(queueOf(1));
        QVERIFY(!written);
        QVERIFY(written.error().startsWith(u"cannot be written: it is "_s));
        QVERIFY(!file.invalidate({numberedRequest(0).identifier}));
        QVERIFY(obstacle.isUntouched());
        QCOMPARE(QFileInfo(m_path + u".unreadable"_s).isSymLink(), false);
        QVERIFY(!QFile::exists(m_path + u".unreadable"_s));
    }

    void aLinkToTheUsersOwnFileStaysALink()
    {
        const QString real = m_folder->filePath(u"repository/pending"_s);
        QVERIFY(RequestFile(real).write(queueOf(2)));
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
        QVERIFY(QFile::link(real, m_path));
        RequestFile file(m_path);
        QVERIFY(file.read().queue == queueOf(2));
        QVERIFY(file.write(queueOf(3)));
        QVERIFY(file.invalidate({numberedRequest(0).identifier}));
        QVERIFY(QFileInfo(m_path).isSymLink());
        QCOMPARE(RequestFile(real).read().queue.size(), 2);
    }
};

QUILLET_TEST(RequestFileDisksTest, runTest<RequestFileDisksTest>);
#include "RequestFileDisksTest.moc"
