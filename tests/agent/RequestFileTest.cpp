// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestFile.h"
#include "tests/agent/RequestFileFixture.h"
#include "tests/support/TestProgram.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTest>

#include <random>

using namespace corvane;
using namespace Qt::StringLiterals;

/// What is written, and what is read of whole and damaged files.
class RequestFileTest final : public RequestFileFixture {
    Q_OBJECT

private Q_SLOTS:
    void aMissingFileIsAnEmptyQueue()
    {
        RequestFile file(m_path);
        const auto content = file.read();
        QVERIFY(content.queue.isEmpty());
        QVERIFY(content.remarks.isEmpty());
        QVERIFY(file.isEmpty());
        QVERIFY(!QFile::exists(m_path + u".unreadable"_s));
    }

    void aWrittenQueueReadsBackEqual()
    {
        QVERIFY(RequestFile(m_path).write(queueOf(5)));
        RequestFile file(m_path);
        QVERIFY(!file.isEmpty());
        const auto content = file.read();
        QVERIFY(content.queue == queueOf(5));
        QVERIFY(content.remarks.isEmpty());
        QCOMPARE(QDir(QFileInfo(m_path).path()).entryList(QDir::Files), QStringList{u"pending"_s});
    }

    void aQuietRequestReadsBackQuiet()
    {
        RequestQueue queue;
        PendingRequest quiet = numberedRequest(1);
        quiet.isQuiet = true;
        queue.add(quiet);
        queue.add(numberedRequest(2));
        const QByteArray text = encodedRequests(queue, nullptr);
        const DecodedRequests decoded = decodedRequests(text);
        QVERIFY(decoded.isWhole);
        QCOMPARE(decoded.requests.size(), std::size_t{2});
        QVERIFY(decoded.requests.front() == quiet);
        QVERIFY(decoded.requests.back() == numberedRequest(2));
        // The others keep the format that older agents read.
        QCOMPARE(text.count("true"), 1);
    }

    void onlyTheUserCanReadTheFile()
    {
        QVERIFY(RequestFile(m_path).write(queueOf(1)));
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(m_path).constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, 0600U);
    }

    void theFileIsReplacedAtomically()
    {
        RequestFile file(m_path);
        QVERIFY(file.write(queueOf(5)));
        QFile old(m_path);
        QVERIFY(old.open(QIODevice::ReadOnly));
        QVERIFY(file.write(queueOf(2)));
        // A reader that has the old file open still sees all of it.
        QCOMPARE(old.readAll(), encodedRequests(queueOf(5)));
        QCOMPARE(content(), encodedRequests(queueOf(2)));
    }

    void aFileTruncatedAtAnyByteKeepsEveryWholeEntry()
    {
        const RequestQueue queue = queueOf(4);
        QMultiHash<QString, qint64> offsets;
        const QByteArray text = encodedRequests(queue, &offsets);
        const auto all = queue.requests();
        for (qsizetype length = 0; length < text.size(); ++length) {
            const DecodedRequests decoded = decodedRequests(text.first(length));
            QVERIFY2(!decoded.isWhole, QByteArray::number(length).constData());
            // An entry counts as whole even without its line feed.
            std::vector<PendingRequest> expected;
            for (const PendingRequest &one : all) {
                const qsizetype end = text.indexOf('\n', offsets.value(one.identifier));
                if (end <= length) {
                    expected.push_back(one);
                }
            }
            QVERIFY2(decoded.requests == expected, QByteArray::number(length).constData());
        }
        QVERIFY(decodedRequests(text).isWhole);
        QVERIFY(decodedRequests(text).requests == all);
    }

    void aTruncatedFileIsRepairedReportedAndKeptAside()
    {
        const QByteArray text = encodedRequests(queueOf(4));
        for (const qsizetype length : {qsizetype{0}, qsizetype{10}, text.size() / 2, text.size() - 1}) {
            put(text.first(length));
            RequestFile file(m_path);
            const auto damaged = file.read();
            QCOMPARE(damaged.remarks.size(), 2);
            QVERIFY(damaged.remarks.first().startsWith(u"is damaged"_s));
            QCOMPARE(content(m_path + u".unreadable"_s), text.first(length));
            const auto mended = RequestFile(m_path).read();
            QVERIFY(mended.remarks.isEmpty());
            QVERIFY(mended.queue == damaged.queue);
        }
    }

    void aChangedByteCostsAtMostOneEntry()
    {
        const RequestQueue queue = queueOf(3);
        const QByteArray text = encodedRequests(queue);
        for (qsizetype place = 0; place < text.size(); ++place) {
            QByteArray changed = text;
            changed[place] = static_cast<char>(changed.at(place) ^ 0x15);
            const DecodedRequests decoded = decodedRequests(changed);
            QVERIFY2(!decoded.isWhole, QByteArray::number(place).constData());
            // A changed line feed joins two lines; the second can still be found.
            QVERIFY2(decoded.requests.size() >= 2, QByteArray::number(place).constData());
            for (const PendingRequest &one : decoded.requests) {
                QVERIFY(queue.contains(one.identifier));
            }
        }
    }

    void garbageAroundWholeEntriesCostsNoEntry_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("zeros before") << QByteArray(4096, '\0') << QByteArray();
        QTest::newRow("zeros after") << QByteArray() << QByteArray(4096, '\0');
        QTest::newRow("text") << QByteArray("no queue [\"at all\"]\n") << QByteArray("{\"a\": [");
        QByteArray noise;
        std::minstd_rand random(7);
        for (int i = 0; i < 50'000; ++i) {
            noise += static_cast<char>(random());
        }
        QTest::newRow("noise") << noise << noise;
        // Each of these could be the start of an entry; parsing from each to the end would take minutes.
        QTest::newRow("possible starts") << QByteArray(" [\"").repeated(300'000) + "]\n"
                                         << QByteArray(" [\"").repeated(300'000);
        QTest::newRow("starts that look like entries")
            << QByteArray("0123456789abcdef [\"").repeated(50'000) + "]\n"
            << QByteArray("]");
        QTest::newRow("one long line") << QByteArray(200'000, '[') << QByteArray(200'000, '"');
    }

    void garbageAroundWholeEntriesCostsNoEntry()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        const QByteArray text = encodedRequests(queueOf(10));
        put(before + text + after);
        RequestFile file(m_path);
        const auto found = file.read();
        QVERIFY(found.queue == queueOf(10));
        QCOMPARE(found.remarks.size(), 2);
        QCOMPARE(content(m_path + u".unreadable"_s), before + text + after);
    }

    void anEntryIsFoundBehindFifteenFalseStarts()
    {
        const QByteArray start("0123456789abcdef [\"");
        QByteArray text = encodedRequests(queueOf(2));
        const qsizetype first = text.indexOf('\n') + 1;
        put(QByteArray(text).insert(first, start.repeated(15)));
        QCOMPARE(RequestFile(m_path).read().queue.requests().size(), 2U);
        put(text.insert(first, start.repeated(16))); // more than occur by accident
        QCOMPARE(RequestFile(m_path).read().queue.requests().size(), 1U);
    }

    void aGarbageFileIsAnEmptyUsableQueue()
    {
        put(QByteArray("\xff\xfe garbage \0 \n\n\n", 16));
        RequestFile file(m_path);
        QVERIFY(file.read().queue.isEmpty());
        QVERIFY(file.write(queueOf(1)));
        QVERIFY(RequestFile(m_path).read().queue == queueOf(1));
    }

    void tenThousandEntriesReadBackEqual()
    {
        const RequestQueue queue = queueOf(10'000);
        QVERIFY(RequestFile(m_path).write(queue));
        QVERIFY(RequestFile(m_path).read().queue == queue);
    }

    void anInvalidatedEntryIsGone()
    {
        RequestFile file(m_path);
        QVERIFY(file.write(queueOf(3)));
        QVERIFY(file.invalidate({numberedRequest(1).identifier}));
        const auto left = RequestFile(m_path).read();
        QVERIFY(left.remarks.isEmpty());
        QCOMPARE(left.queue.identifiers(),
                 (QStringList{numberedRequest(0).identifier, numberedRequest(2).identifier}));
    }

    void aHalfInvalidatedEntryIsGoneToo()
    {
        QMultiHash<QString, qint64> offsets;
        const QByteArray text = encodedRequests(queueOf(3), &offsets);
        for (int done = 1; done < 16; ++done) {
            QByteArray half = text;
            half.replace(offsets.value(numberedRequest(1).identifier), done, QByteArray(done, '-'));
            QCOMPARE(decodedRequests(half).requests.size(), 2U);
        }
    }

    void entriesReadFromTheFileCanBeInvalidated()
    {
        QVERIFY(RequestFile(m_path).write(queueOf(3)));
        RequestFile file(m_path);
        (void)file.read();
        QVERIFY(file.invalidate({numberedRequest(0).identifier, numberedRequest(2).identifier}));
        QCOMPARE(RequestFile(m_path).read().queue.identifiers(), QStringList{numberedRequest(1).identifier});
    }
};

QUILLET_TEST(RequestFileTest, runTest<RequestFileTest>);
#include "RequestFileTest.moc"
