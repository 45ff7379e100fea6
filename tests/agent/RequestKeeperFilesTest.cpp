// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/agent/FullDisk.h"
#include "tests/agent/RequestKeeperFixture.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The queue's file and the login entry, on bad disks too.
class RequestKeeperFilesTest final : public RequestKeeperFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void onAFullDiskARequestIsRefusedAndTheOthersStay()
    {
        QVERIFY(add(request(u"a"_s, noon + 5)));
        {
            const FullDisk none;
            QVERIFY(!add(request(u"b"_s, noon + 5)));
            QVERIFY(!add(request(u"a"_s, noon + 7)));
            QVERIFY(!remove({u"a"_s}));
            QCOMPARE(m_keeper->pendingRequests(), QStringList{u"a"_s});
            QCOMPARE(m_keeper->queue().requests().front().fireDate, noon + 5);
        }
        // Logged once until a write succeeds.
        QCOMPARE(m_lines.filter(u"queue file cannot be"_s).size(), 1);
        QCOMPARE(onDisk(), QStringList{u"a"_s});
        QVERIFY(add(request(u"b"_s, noon + 5)));
    }

    void aRequestIsNotDeliveredUntilItCanBeTakenOutOfTheFile()
    {
        QVERIFY(add(request(u"a"_s, noon + 1)));
        QVERIFY(add(request(u"b"_s, noon + 7)));
        {
            const FullDisk none;
            m_clock->tick();
            QTRY_VERIFY(logged(u"queue file cannot be"_s));
            settle();
            QVERIFY(m_server->handed.isEmpty());
            QCOMPARE(m_keeper->pendingRequests(), (QStringList{u"a"_s, u"b"_s}));
            QCOMPARE(m_clock->alarm(), noon + 7);
        }
        QTRY_COMPARE_WITH_TIMEOUT(m_server->handed, QStringList{u"a"_s}, 10000);
    }

    void onAFullDiskPendingRequestsAreDeliveredAndCanBeRemoved()
    {
        QVERIFY(add(request(u"a"_s, noon + 1)));
        QVERIFY(add(request(u"b"_s, noon + 2)));
        for (int i = 0; i < 20; ++i) {
            QVERIFY(add(request(u"later %1"_s.arg(i), noon + 100)));
        }
        {
            // Room for changes in place, but not for a new file.
            const FullDisk full(500);
            QVERIFY(!add(request(u"c"_s, noon + 5)));
            QVERIFY(remove({u"b"_s}));
            m_clock->tick();
            QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
            m_clock->tick();
            settle();
            QCOMPARE(m_server->handed.size(), 1);
        }
        restart();
        QCOMPARE(m_keeper->pendingRequests().size(), 20);
    }

    void aPipeInPlaceOfTheQueueIsReportedOnce()
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_file->path()).path()));
        const auto pipe = obstacles::put(obstacles::Kind::pipe, m_file->path());
        restart();
        QVERIFY(!add(request(u"a"_s, noon + 1)));
        QVERIFY(!add(request(u"a"_s, noon + 1)));
        QVERIFY(pipe.isUntouched());
        QCOMPARE(m_lines.filter(u"cannot be read: it is no regular file"_s).size(), 1);
        QCOMPARE(m_lines.filter(u"cannot be written: it is no regular file"_s).size(), 1);
    }

    void aDamagedFileIsLoggedAndItsWholeEntriesAreDelivered()
    {
        QVERIFY(add(request(u"a"_s, noon + 1)));
        QVERIFY(add(request(u"b"_s, noon + 2)));
        m_keeper.reset();
        QFile file(queuePath());
        QVERIFY(file.resize(file.size() - 20));
        restart();
        QVERIFY(logged(u"queue file is damaged"_s));
        m_clock->tick();
        QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
    }

    void theLoginEntryExistsWhileSomethingIsPending()
    {
        QVERIFY(!QFile::exists(m_entry->path()));
        m_keeper->add(request(u"a"_s, noon + 1), [this](const std::expected<void, QString> &) {
            QVERIFY(QFile::exists(m_entry->path()));
        });
        QTRY_VERIFY(QFile::exists(m_entry->path()));
        m_keeper->tidyUp();
        QVERIFY(QFile::exists(m_entry->path()));
        QVERIFY(remove({u"a"_s}));
        m_keeper->tidyUp();
        QVERIFY(!QFile::exists(m_entry->path()));
        // As in an agent that has tidied up but cannot leave.
        QVERIFY(add(request(u"b"_s, noon + 1)));
        QVERIFY(QFile::exists(m_entry->path()));
    }

    void aMissingLoginEntryIsRestoredAtTheStart()
    {
        QVERIFY(add(request(u"a"_s, noon + 1)));
        QVERIFY(QFile::remove(m_entry->path()));
        restart();
        QVERIFY(QFile::exists(m_entry->path()));
    }

    void anUnwritableLoginEntryIsReportedOnceAndRetried()
    {
        QFile obstacle(m_folder->filePath(u"config"_s));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        QVERIFY(add(request(u"a"_s, noon + 1)));
        QVERIFY(add(request(u"b"_s, noon + 1)));
        QCOMPARE(m_lines.filter(u"login entry"_s).size(), 1);
        // The next agent logs it, too.
        restart();
        QCOMPARE(m_lines.filter(u"login entry"_s).size(), 2);
        QVERIFY(obstacle.remove());
        QVERIFY(add(request(u"c"_s, noon + 1)));
        QVERIFY(QFile::exists(m_entry->path()));
    }

    void afterAllDeliveriesTheFileHoldsNoStudentName()
    {
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        QTRY_VERIFY(m_keeper->isIdle());
        m_keeper->tidyUp();
        QFile file(queuePath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!file.readAll().contains("Anna"));
    }
};

QUILLET_TEST(RequestKeeperFilesTest, runTest<RequestKeeperFilesTest>);
#include "RequestKeeperFilesTest.moc"
