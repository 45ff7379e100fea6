// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestFile.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

const QByteArray damagedQueue = "neither a queue nor entries\n";

void putDamagedQueue(const QString &path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(damagedQueue), damagedQueue.size());
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther));
}

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    ::stat(QFile::encodeName(path).constData(), &status);
    return status;
}

} // namespace

/// Where a damaged queue is kept.
class QueueAsideTest final : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;

private Q_SLOTS:
    void aQueueOnAnotherFileSystemIsKeptAsAPrivateCopy()
    {
        const QTemporaryDir elsewhere(u"/dev/shm/quillet-XXXXXX"_s);
        const QString target = elsewhere.filePath(u"queue"_s);
        const QString path = m_folder.filePath(u"linked"_s);
        const QString aside = path + u".unreadable"_s;
        putDamagedQueue(target);
        QVERIFY(statusOf(target).st_dev != statusOf(m_folder.path()).st_dev);
        QVERIFY(QFile::link(target, path));
        const auto found = RequestFile(path).read();
        QCOMPARE(found.remarks.value(1), u"is kept aside as \"%1\""_s.arg(aside));
        QFile kept(aside);
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), damagedQueue);
        QCOMPARE(statusOf(aside).st_mode & 07777U, 0600U);
    }

    void anObstacleInThatPlaceIsLeftAlone_data()
    {
        QTest::addColumn<obstacles::Kind>("kind");
        QTest::newRow("a pipe") << obstacles::Kind::pipe;
        QTest::newRow("a socket") << obstacles::Kind::socket;
        QTest::newRow("a folder") << obstacles::Kind::folder;
    }

    void anObstacleInThatPlaceIsLeftAlone()
    {
        QFETCH(obstacles::Kind, kind);
        const QString path = m_folder.filePath(QString::fromLatin1(QTest::currentDataTag()));
        putDamagedQueue(path);
        const auto obstacle = obstacles::put(kind, path + u".unreadable"_s);
        const auto found = RequestFile(path).read();
        QCOMPARE(found.remarks.value(1), u"cannot be kept aside: it is no regular file"_s);
        QVERIFY(obstacle.isUntouched());
    }
};

QUILLET_TEST(QueueAsideTest, runTest<QueueAsideTest>);
#include "QueueAsideTest.moc"
