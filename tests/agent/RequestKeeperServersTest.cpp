// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/agent/FullDisk.h"
#include "tests/agent/RequestKeeperFixture.h"
#include "tests/support/TestProgram.h"

#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Servers that are absent, refuse or hang.
class RequestKeeperServersTest final : public RequestKeeperFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

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

    // The server gives no sign of life that could wake the agent.
    void aSilentServerDoesNotKeepTheAgentRunning()
    {
        m_server->outcome = Outcome::unknown;
        QVERIFY(add(request(u"a"_s, noon)));
        QTRY_COMPARE(m_server->handed.size(), 1);
        settle();
        m_clock->set(noon + 60);
        QTRY_VERIFY(m_keeper->isIdle());
        QVERIFY(logged(u"the server never answered"_s));
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

    void aRequestRefusedAfterARemovedOneIsRetried()
    {
        m_server->outcome = Outcome::notShown;
        m_server->onDeliver = [this](const PendingRequest &delivered) {
            if (delivered.identifier == u"a"_s) {
                m_keeper->remove({u"a"_s}, [](const std::expected<void, QString> &) {});
            }
        };
        QVERIFY(add(request(u"a"_s, noon)));
        QVERIFY(add(request(u"b"_s, noon)));
        QTRY_COMPARE(m_server->handed, (QStringList{u"a"_s, u"b"_s}));
        QTRY_COMPARE(onDisk(), QStringList{u"b"_s});
        m_server->outcome = Outcome::shown;
        QTRY_COMPARE_WITH_TIMEOUT(m_server->handed, (QStringList{u"a"_s, u"b"_s, u"b"_s}), 10'000);
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
        std::unique_ptr<FullDisk> none;
        std::optional<bool> isReplaced;
        m_server->onDeliver = [&](const PendingRequest &) {
            if (!isReplaced) {
                none = std::make_unique<FullDisk>();
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
            const FullDisk none;
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
};

QUILLET_TEST(RequestKeeperServersTest, runTest<RequestKeeperServersTest>);
#include "RequestKeeperServersTest.moc"
