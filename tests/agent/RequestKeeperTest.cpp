// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestKeeper.h"

#include "NotificationAgent/LoginEntry.h"
#include "NotificationAgent/RequestFile.h"
#include "tests/agent/FakeNotificationServer.h"
#include "tests/agent/FakeWallClock.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <signal.h>
#include <sys/resource.h>

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

#include <algorithm>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

using Outcome = NotificationServer::Outcome;

namespace {

constexpr qint64 noon = 1'800'000'000;

PendingRequest request(const QString &identifier, qint64 fireDate, qint64 helpsFor = 60)
{
    return {identifier, u"Quillet: prepare"_s, u"Anna starts in 4 minutes."_s, u"quillet.lesson"_s,
            fireDate,   fireDate + helpsFor};
}

} // namespace

class RequestKeeperTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_clock = std::make_unique<FakeWallClock>(noon);
        m_server = std::make_unique<FakeNotificationServer>();
        m_entry = std::make_unique<LoginEntry>(u"/opt/agent"_s, m_folder->filePath(u"config"_s));
        m_lines.clear();
        restart();
    }

    void cleanup()
    {
        m_keeper.reset();
        m_file.reset();
    }

    void aRequestIsDeliveredInItsSecondAndNotBefore()
    {
        QVERIFY(add(request(u"a"_s, noon + 3)));
        QCOMPARE(m_clock->alarm(), std::optional<qint64>(noon + 3));
        m_clock->tick();
        m_clock->tick();
        settle();
        QCOMPARE(m_server->asked, 0);
        m_clock->tick();
        QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
        QTRY_VERIFY(m_keeper->isIdle());
    }

    void aSecondThatBeginsDuringTheQueueCheckIsNotSkipped()
    {
        m_clock->isHurried = true;
        QVERIFY(add(request(u"a"_s, noon + 1)));
        settle();
        // This alarm rings at once, since its second has begun by now.
        QCOMPARE(m_clock->alarm(), std::optional<qint64>(noon + 1));
    }

    void anOverdueRequestIsDeliveredAtOnce()
    {
        QVERIFY(add(request(u"a"_s, noon - 10)));
        QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
    }

    void requestsDueInTheSameSecondAreDeliveredInTurn()
    {
        QVERIFY(add(request(u"b"_s, noon + 1)));
        QVERIFY(add(request(u"a"_s, noon + 1)));
        m_clock->tick();
        QTRY_COMPARE(m_server->handed, (QStringList{u"b"_s, u"a"_s}));
    }

    void aRequestIsConfirmedOnceItIsOnDisk()
    {
        bool isAnswered = false;
        m_keeper->add(request(u"a"_s, noon + 5), [&](const std::expected<void, QString> &result) {
            isAnswered = true;
            QVERIFY(result);
            QCOMPARE(onDisk(), QStringList{u"a"_s});
        });
        QVERIFY(!isAnswered);
        QTRY_VERIFY(isAnswered);
    }

    void simultaneousChangesShareOneWrite()
    {
        int answers = 0;
        for (int i = 0; i < 500; ++i) {
            m_keeper->add(request(QString::number(i), noon + 5),
                          [&](const std::expected<void, QString> &) { ++answers; });
        }
        QCOMPARE(onDisk(), QStringList());
        QTRY_VERIFY(answers > 0);
        QCOMPARE(answers, 500);
        QCOMPARE(onDisk().size(), 500);
    }

    void aRequestIsOffTheDiskBeforeTheServerGetsIt()
    {
        QStringList left{u"not looked"_s};
        m_server->onDeliver = [&](const PendingRequest &) { left = onDisk(); };
        QVERIFY(add(request(u"a"_s, noon + 1)));
        m_clock->tick();
        QTRY_COMPARE(m_server->handed.size(), 1);
        QCOMPARE(left, QStringList());
    }

    void anAgentThatDiesAfterTheDeliveryDoesNotDeliverAgain()
    {
        QVERIFY(add(request(u"a"_s, noon + 1)));
        m_clock->tick();
        QTRY_COMPARE(m_server->handed.size(), 1);
        restart();
        settle();
        QCOMPARE(m_server->handed.size(), 1);
    }

    void removedRequestsAreNotDelivered()
    {
        QVERIFY(add(request(u"a"_s, noon + 1)));
        QVERIFY(add(request(u"b"_s, noon + 1)));
        QVERIFY(remove({u"a"_s, u"not pending"_s}));
        QCOMPARE(onDisk(), QStringList{u"b"_s});
        m_clock->tick();
        QTRY_COMPARE(m_server->handed, QStringList{u"b"_s});
    }

    void aRequestRemovedWhileTheServerIsAskedIsNotDelivered()
    {
        m_server->isSilent = true;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->asked, 1);
        m_keeper->remove({u"a"_s}, [](const std::expected<void, QString> &) {});
        m_server->answer();
        settle();
        QVERIFY(m_server->handed.isEmpty());
        QVERIFY(m_keeper->isIdle());
    }

    // --- servers that are absent, refuse or hang

    void withoutAServerTheRequestStaysOnDiskUntilOneArrives()
    {
        m_server->isThere = false;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->asked, 1);
        settle();
        QCOMPARE(onDisk(), QStringList{u"a"_s});
        QVERIFY(!m_keeper->isIdle());
        m_server->isThere = true;
        Q_EMIT m_server->arrived();
        QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
    }

    void withoutAServerDeliveryIsRetriedAfterAWhile()
    {
        m_server->isThere = false;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->asked, 1);
        m_server->isThere = true;
        QTRY_COMPARE_WITH_TIMEOUT(m_server->handed, QStringList{u"a"_s}, 5000);
    }

    void withoutAServerTheRequestIsDroppedWhenItExpires()
    {
        m_server->isThere = false;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->asked, 1);
        m_clock->set(noon + 60);
        m_server->isThere = true;
        Q_EMIT m_server->arrived();
        QTRY_VERIFY(m_keeper->isIdle());
        QVERIFY(m_server->handed.isEmpty());
        QVERIFY(logged(u"notification dropped identifier=\"a\""_s));
        QCOMPARE(onDisk(), QStringList());
    }

    void anAbsentServerIsLoggedOnce()
    {
        m_server->isThere = false;
        QVERIFY(add(request(u"a"_s, noon)));
        for (int tries = 1; tries <= 5; ++tries) {
            QTRY_COMPARE(m_server->asked, tries);
            settle();
            Q_EMIT m_server->arrived();
        }
        QCOMPARE(m_lines.filter(u"no notification server"_s).size(), 1);
    }

    void aRefusedRequestReturnsToDiskAndIsRetried()
    {
        m_server->outcome = Outcome::notShown;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        QTRY_COMPARE(onDisk(), QStringList{u"a"_s});
        m_server->outcome = Outcome::shown;
        // A new agent retries, too, if the first dies meanwhile.
        restart();
        QTRY_COMPARE(m_server->handed.size(), 2);
        QTRY_VERIFY(m_keeper->isIdle());
        QCOMPARE(onDisk(), QStringList());
    }

    void aRefusedRequestDoesNotBlockTheNext()
    {
        m_server->onDeliver = [this](const PendingRequest &delivered) {
            m_server->outcome = delivered.identifier == u"bad"_s ? Outcome::notShown : Outcome::shown;
        };
        QVERIFY(add(request(u"bad"_s, noon + 1)));
        QVERIFY(add(request(u"good"_s, noon + 1)));
        m_clock->tick();
        QTRY_COMPARE(m_server->handed, (QStringList{u"bad"_s, u"good"_s}));
        QTRY_COMPARE(onDisk(), QStringList{u"bad"_s});
    }

    void aSilentServerDoesNotGetTheRequestAgain()
    {
        m_server->outcome = Outcome::unknown;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        settle();
        QVERIFY(!m_keeper->isIdle());
        QCOMPARE(onDisk(), QStringList());
        Q_EMIT m_server->arrived();
        settle();
        QCOMPARE(m_server->handed.size(), 1);
        // A new agent does not hand it over again, either.
        restart();
        settle();
        QCOMPARE(m_server->handed.size(), 1);
    }

    void aRequestHeldByASilentServerIsRedeliveredWhenItLeaves()
    {
        m_server->outcome = Outcome::unknown;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        settle();
        m_server->outcome = Outcome::shown;
        m_server->isSilent = true;
        Q_EMIT m_server->left();
        QCOMPARE(onDisk(), QStringList{u"a"_s});
        m_server->answer();
        QTRY_COMPARE(m_server->handed.size(), 2);
        QTRY_VERIFY(m_keeper->isIdle());
    }

    void aRequestHeldByASilentServerIsDroppedWhenItExpires()
    {
        m_server->outcome = Outcome::unknown;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        settle();
        m_clock->set(noon + 60);
        Q_EMIT m_server->arrived();
        QTRY_VERIFY(m_keeper->isIdle());
        QVERIFY(logged(u"the server never answered"_s));
        Q_EMIT m_server->left();
        settle();
        QCOMPARE(m_server->handed.size(), 1);
    }

    void aRequestHeldByASilentServerIsNotRetriedWithItsReplacement()
    {
        m_server->outcome = Outcome::unknown;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        settle();
        Q_EMIT m_server->replaced();
        QVERIFY(m_keeper->isIdle());
        Q_EMIT m_server->left();
        settle();
        QCOMPARE(m_server->handed.size(), 1);
        QVERIFY(logged(u"the server that has it was replaced"_s));
    }

    void aRemovedRequestIsNotRetried()
    {
        m_server->outcome = Outcome::notShown;
        m_server->onDeliver = [this](const PendingRequest &) {
            m_keeper->remove({u"a"_s}, [](const std::expected<void, QString> &) {});
        };
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        QTRY_VERIFY(m_keeper->isIdle());
        QCOMPARE(onDisk(), QStringList());
    }

    void aReplacedRequestIsRetriedOnlyAsItsSuccessor()
    {
        m_server->outcome = Outcome::notShown;
        m_server->onDeliver = [this](const PendingRequest &) {
            m_keeper->add(request(u"a"_s, noon + 30), [](const std::expected<void, QString> &) {});
        };
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        settle();
        QCOMPARE(m_keeper->queue().requests().size(), 1U);
        QCOMPARE(m_keeper->queue().requests().front().fireDate, noon + 30);
    }

    // A request that returns to the queue because its successor could not be written is not lost.
    void aRequestWhoseReplacementFailedIsRetriedItself()
    {
        m_server->outcome = Outcome::notShown;
        std::unique_ptr<NoDisk> none;
        std::optional<bool> isReplaced;
        m_server->onDeliver = [&](const PendingRequest &) {
            if (!isReplaced) {
                none = std::make_unique<NoDisk>();
                m_keeper->add(request(u"a"_s, noon + 30), [&](const std::expected<void, QString> &answer) {
                    isReplaced = answer.has_value();
                });
                // Before the write.
                m_server->finishNow();
            }
        };
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_VERIFY(isReplaced.has_value());
        none.reset();
        QVERIFY(!*isReplaced);
        m_server->onDeliver = {};
        QCOMPARE(m_keeper->queue().requests().size(), 1U);
        QCOMPARE(m_keeper->queue().requests().front().fireDate, noon);
        m_server->outcome = Outcome::shown;
        QTRY_VERIFY_WITH_TIMEOUT(m_keeper->isIdle(), 10'000);
        QCOMPARE(m_server->handed.size(), 2);
    }

    // A caller whose removal failed may count on the request still being pending.
    void aRequestWhoseRemovalFailedIsStillRetried_data()
    {
        QTest::addColumn<bool>("isHeld");
        QTest::newRow("during the delivery") << false;
        QTest::newRow("while the outcome is unknown") << true;
    }

    void aRequestWhoseRemovalFailedIsStillRetried()
    {
        QFETCH(bool, isHeld);
        QVERIFY(add(request(u"other"_s, noon + 30)));
        const auto removeInVain = [this] {
            const NoDisk none;
            return !remove({u"a"_s, u"other"_s});
        };
        m_server->outcome = isHeld ? Outcome::unknown : Outcome::notShown;
        bool isRefused = false;
        if (!isHeld) {
            m_server->isSlow = true;
        }
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        if (isHeld) {
            settle();
        }
        isRefused = removeInVain();
        QVERIFY(isRefused);
        m_server->isSlow = false;
        if (isHeld) {
            m_server->outcome = Outcome::shown;
            Q_EMIT m_server->left();
        } else {
            m_server->outcome = Outcome::notShown;
            m_server->finishNow();
            m_server->outcome = Outcome::shown;
        }
        QTRY_COMPARE_WITH_TIMEOUT(m_server->handed, (QStringList{u"a"_s, u"a"_s}), 10'000);
    }

    void aRequestRemovedJustBeforeTheServerLeftIsNotRetried()
    {
        m_server->outcome = Outcome::unknown;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        settle();
        m_keeper->remove({u"a"_s}, [](const std::expected<void, QString> &) {});
        Q_EMIT m_server->left();
        settle();
        QVERIFY(m_keeper->isIdle());
        QCOMPARE(m_server->handed.size(), 1);
    }

    // --- the clock

    void aClockSetForwardDeliversUnexpiredRequestsInOrderAndDropsTheRest()
    {
        QVERIFY(add(request(u"over"_s, noon + 100)));
        QVERIFY(add(request(u"second"_s, noon + 1000)));
        QVERIFY(add(request(u"first"_s, noon + 990)));
        QVERIFY(add(request(u"later"_s, noon + 2000)));
        m_clock->set(noon + 1010);
        QTRY_COMPARE(m_server->handed, (QStringList{u"first"_s, u"second"_s}));
        QTRY_COMPARE(m_clock->alarm(), std::optional<qint64>(noon + 2000));
        QVERIFY(logged(u"notification dropped identifier=\"over\""_s));
        settle();
        QCOMPARE(onDisk(), QStringList{u"later"_s});
    }

    void aClockSetBackWaitsAgainAndDeliversNothingTwice()
    {
        QVERIFY(add(request(u"done"_s, noon)));
        QVERIFY(add(request(u"next"_s, noon + 10)));
        QTRY_COMPARE(m_server->handed, QStringList{u"done"_s});
        settle();
        m_clock->set(noon - 3600);
        QTRY_COMPARE(m_clock->alarm(), std::optional<qint64>(noon + 10));
        settle();
        QCOMPARE(m_server->handed, QStringList{u"done"_s});
        m_clock->set(noon + 10);
        QTRY_COMPARE(m_server->handed, (QStringList{u"done"_s, u"next"_s}));
        settle();
        m_clock->set(noon - 3600);
        settle();
        QCOMPARE(m_server->handed.size(), 2);
    }

    void aClockSetBackWhileTheServerIsAskedPostponesTheDelivery()
    {
        m_server->isSilent = true;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->asked, 1);
        m_clock->set(noon - 100);
        m_server->answer();
        settle();
        QVERIFY(m_server->handed.isEmpty());
        QCOMPARE(m_clock->alarm(), std::optional<qint64>(noon));
        QCOMPARE(onDisk(), QStringList{u"a"_s});
    }

    void aClockSetForwardWhileTheServerIsAskedDropsExpiredRequests()
    {
        m_server->isSilent = true;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->asked, 1);
        m_clock->set(noon + 60);
        m_server->answer();
        QTRY_VERIFY(m_keeper->isIdle());
        QVERIFY(m_server->handed.isEmpty());
    }

    // Fire dates are absolute: when an hour repeats on the wall clock, each of the two delivers its own
    // requests.
    void daylightSavingMovesNothing_data()
    {
        QTest::addColumn<QDateTime>("from");
        QTest::newRow("spring") << QDateTime({2027, 3, 28}, {0, 30}, QTimeZone::utc());
        QTest::newRow("autumn") << QDateTime({2027, 10, 31}, {0, 30}, QTimeZone::utc());
    }

    void daylightSavingMovesNothing()
    {
        QFETCH(QDateTime, from);
        const QTimeZone berlin("Europe/Berlin");
        QVERIFY(berlin.offsetFromUtc(from) != berlin.offsetFromUtc(from.addSecs(3600)));
        qputenv("TZ", "Europe/Berlin");
        ::tzset();
        const qint64 start = from.toSecsSinceEpoch();
        m_clock->set(start);
        QStringList expected;
        for (int number = 0; number < 6; ++number) {
            expected.append(QString::number(number));
            QVERIFY(add(request(expected.constLast(), start + qint64{number} * 600 + 1)));
        }
        m_server->onDeliver = [&](const PendingRequest &delivered) {
            QCOMPARE(m_clock->now(), delivered.fireDate);
        };
        for (int second = 0; second < 3600; ++second) {
            const bool rings = m_clock->alarm() == m_clock->now() + 1;
            m_clock->tick();
            if (rings) {
                QTRY_VERIFY(m_clock->alarm() || m_keeper->isIdle());
            }
        }
        qputenv("TZ", "UTC");
        ::tzset();
        QCOMPARE(m_server->handed, expected);
    }

    void missedRequestsAreDeliveredOnlyUntilTheyExpire()
    {
        QVERIFY(add(request(u"start"_s, noon + 100, 20)));
        QVERIFY(add(request(u"finish"_s, noon + 90, 600)));
        m_keeper.reset();
        m_clock->set(noon + 120);
        restart();
        QTRY_COMPARE(m_server->handed, QStringList{u"finish"_s});
        QTRY_VERIFY(m_keeper->isIdle());
        QVERIFY(logged(u"notification dropped identifier=\"start\""_s));
    }

    // --- disks

    void onAFullDiskARequestIsRefusedAndTheOthersStay()
    {
        QVERIFY(add(request(u"a"_s, noon + 5)));
        {
            const NoDisk none;
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
        {
            const NoDisk none;
            m_clock->tick();
            QTRY_VERIFY(logged(u"queue file cannot be"_s));
            settle();
            QVERIFY(m_server->handed.isEmpty());
            QCOMPARE(m_keeper->pendingRequests(), QStringList{u"a"_s});
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
            const NoDisk full(500);
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
        QFile file(m_path());
        QVERIFY(file.resize(file.size() - 20));
        restart();
        QVERIFY(logged(u"queue file is damaged"_s));
        m_clock->tick();
        QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
    }

    // --- the login entry

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

    void requestsThatArriveWhileDeliveryIsStoppedAreOnlyStored()
    {
        m_keeper->stopDelivering();
        QVERIFY(add(request(u"a"_s, noon)));
        settle();
        QCOMPARE(onDisk(), QStringList{u"a"_s});
        QCOMPARE(m_server->asked, 0);
        m_keeper->start();
        QTRY_COMPARE(m_server->handed, QStringList{u"a"_s});
    }

    void afterAllDeliveriesTheFileHoldsNoStudentName()
    {
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        QTRY_VERIFY(m_keeper->isIdle());
        m_keeper->tidyUp();
        QFile file(m_path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!file.readAll().contains("Anna"));
    }

    void thousandsOfSimultaneousRequestsAreDeliveredInOrder()
    {
        QStringList expected;
        for (int i = 0; i < 2'000; ++i) {
            expected.append(QString::number(i));
            m_keeper->add(request(expected.constLast(), noon + 1 + i, 100'000),
                          [](const std::expected<void, QString> &) {});
        }
        QTRY_COMPARE(onDisk().size(), 2'000);
        QElapsedTimer timer;
        timer.start();
        m_clock->set(noon + 20'000);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->handed.size(), 2'000, 60'000);
        qInfo() << "ms for two thousand that came due together" << timer.elapsed();
        QCOMPARE(m_server->handed, expected);
    }

private:
    // During its lifetime no file can be written beyond `bytes`.
    class NoDisk {
    public:
        explicit NoDisk(rlim_t bytes = 0)
        {
            ::signal(SIGXFSZ, SIG_IGN);
            ::getrlimit(RLIMIT_FSIZE, &m_before);
            const rlimit limit{bytes, m_before.rlim_max};
            ::setrlimit(RLIMIT_FSIZE, &limit);
        }
        ~NoDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
        NoDisk(const NoDisk &) = delete;
        NoDisk &operator=(const NoDisk &) = delete;

    private:
        rlimit m_before{};
    };

    [[nodiscard]] QString m_path() const { return m_folder->filePath(u"quillet/pending"_s); }

    // Replaces the agent, as if it had died and restarted.
    void restart()
    {
        m_keeper.reset();
        m_file = std::make_unique<RequestFile>(m_path());
        m_keeper = std::make_unique<RequestKeeper>(*m_file, *m_entry, *m_clock, *m_server,
                                                   [this](const QString &line) { m_lines.append(line); });
        QVERIFY(m_keeper->load());
        m_keeper->start();
    }

    bool add(const PendingRequest &request)
    {
        std::optional<bool> result;
        m_keeper->add(request,
                      [&](const std::expected<void, QString> &answer) { result = answer.has_value(); });
        return wait(result);
    }

    bool remove(const QStringList &identifiers)
    {
        std::optional<bool> result;
        m_keeper->remove(identifiers,
                         [&](const std::expected<void, QString> &answer) { result = answer.has_value(); });
        return wait(result);
    }

    static bool wait(const std::optional<bool> &result)
    {
        QElapsedTimer timer;
        timer.start();
        while (!result && timer.elapsed() < 10'000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
        return result.value_or(false);
    }

    // Processes all pending events, and those that they cause: keeper and fakes work by events of this
    // thread.
    static void settle()
    {
        for (int turn = 0; turn < 20; ++turn) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
    }

    [[nodiscard]] QStringList onDisk() const
    {
        QFile file(m_path());
        QStringList identifiers;
        if (file.open(QIODevice::ReadOnly)) {
            for (const PendingRequest &request : decodedRequests(file.readAll()).requests) {
                identifiers.append(request.identifier);
            }
        }
        return identifiers;
    }

    [[nodiscard]] bool logged(const QString &text) const { return !m_lines.filter(text).isEmpty(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FakeWallClock> m_clock;
    std::unique_ptr<FakeNotificationServer> m_server;
    std::unique_ptr<LoginEntry> m_entry;
    std::unique_ptr<RequestFile> m_file;
    std::unique_ptr<RequestKeeper> m_keeper;
    QStringList m_lines;
};

QUILLET_TEST(RequestKeeperTest, runTest<RequestKeeperTest>);
#include "RequestKeeperTest.moc"
