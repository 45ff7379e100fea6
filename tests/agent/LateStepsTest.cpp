// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/agent/RequestKeeperFixture.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 lateStart = 1'800'000'000;

QString identifier(const QString &kind)
{
    return u"quillet.backup.%1.%2.Anna"_s.arg(kind).arg(lateStart);
}

} // namespace

/// Late steps of a lesson: the machine slept, or the notification server hung.
class LateStepsTest final : public RequestKeeperFixture {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        begin(lateStart - 1000);
        add(u"prepare"_s, lateStart - 240, lateStart);
        add(u"one-minute"_s, lateStart - 60, lateStart);
        add(u"join"_s, lateStart - 30, lateStart);
        add(u"start"_s, lateStart - 20, lateStart);
        add(u"finish"_s, lateStart + 1440, lateStart + 1500);
    }

    void cleanup() { end(); }

    void inTimeEachStepIsDelivered()
    {
        for (const qint64 moment :
             {lateStart - 240, lateStart - 60, lateStart - 30, lateStart - 20, lateStart + 1440}) {
            m_clock->set(moment);
            settle();
        }
        QCOMPARE(m_server->handed,
                 (QStringList{identifier(u"prepare"_s), identifier(u"one-minute"_s), identifier(u"join"_s),
                              identifier(u"start"_s), identifier(u"finish"_s)}));
    }

    void afterSleepOnlyTheNewestStepIsDelivered()
    {
        m_clock->set(lateStart - 25);
        settle();
        QCOMPARE(m_server->handed, QStringList{identifier(u"join"_s)});
        QCOMPARE(m_lines.filter(u"a later step of its lesson is due"_s).size(), 2);
        // Dropped steps are off the disk; later steps still come.
        QCOMPARE(onDisk(), (QStringList{identifier(u"start"_s), identifier(u"finish"_s)}));
        m_clock->set(lateStart - 20);
        settle();
        QCOMPARE(m_server->handed.last(), identifier(u"start"_s));
    }

    void afterAMissingServerOnlyTheNewestStepIsDelivered()
    {
        m_server->isThere = false;
        for (const qint64 moment : {lateStart - 240, lateStart - 60}) {
            m_clock->set(moment);
            settle();
        }
        m_server->isThere = true;
        Q_EMIT m_server->arrived();
        settle();
        QCOMPARE(m_server->handed, QStringList{identifier(u"one-minute"_s)});
    }

    void aStepThatIsAddedLateReplacesTheOneBeforeItInTheSameSecond()
    {
        m_server->isThere = false;
        m_clock->set(lateStart - 55);
        settle();
        QCOMPARE(onDisk().first(), identifier(u"one-minute"_s));
        add(u"changed"_s, lateStart - 57, lateStart);
        settle();
        QVERIFY(!onDisk().contains(identifier(u"one-minute"_s)));
        QVERIFY(onDisk().contains(identifier(u"changed"_s)));
    }

    void aStepThatBecomesDueWhileTheServerIsAskedIsDeliveredAlone()
    {
        m_server->isSilent = true;
        m_clock->set(lateStart - 240);
        settle();
        m_clock->set(lateStart - 60);
        m_server->answer();
        settle();
        QCOMPARE(m_server->handed, QStringList{identifier(u"one-minute"_s)});
    }

    void aStepHeldByASilentServerGivesWayToALaterStep()
    {
        m_server->outcome = Outcome::unknown;
        m_clock->set(lateStart - 240);
        settle();
        m_clock->set(lateStart - 60);
        m_server->outcome = Outcome::shown;
        Q_EMIT m_server->left();
        settle();
        QCOMPARE(m_server->handed, (QStringList{identifier(u"prepare"_s), identifier(u"one-minute"_s)}));
    }

    void aStepHeldByASilentServerDoesNotFollowALaterStep()
    {
        m_server->outcome = Outcome::unknown;
        m_clock->set(lateStart - 240);
        settle();
        m_server->outcome = Outcome::shown;
        m_clock->set(lateStart - 60);
        settle();
        Q_EMIT m_server->left();
        settle();
        QCOMPARE(m_server->handed, (QStringList{identifier(u"prepare"_s), identifier(u"one-minute"_s)}));
    }

    void anotherLessonsStepIsDeliveredToo()
    {
        bool isAdded = false;
        const QString ben = u"quillet.backup.finish.%1.Ben"_s.arg(lateStart - 1800);
        m_keeper->add({ben, {}, {}, u"quillet.lesson"_s, lateStart - 240, lateStart - 180},
                      [&](const std::expected<void, QString> &result) { isAdded = result.has_value(); });
        QTRY_VERIFY(isAdded);
        m_clock->set(lateStart - 200);
        settle();
        QCOMPARE(m_server->handed, (QStringList{identifier(u"prepare"_s), ben}));
    }

private:
    void add(const QString &kind, qint64 fireDate, qint64 expirationDate)
    {
        QVERIFY(RequestKeeperFixture::add(
            {identifier(kind), {}, {}, u"quillet.lesson"_s, fireDate, expirationDate}));
    }
};

QUILLET_TEST(LateStepsTest, runTest<LateStepsTest>);
#include "LateStepsTest.moc"
