// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"
#include "tests/adapters/StatusNotifierRoom.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Watchers and hosts that come and go, are silent or refuse.
class StatusNotifierWatcherTest final : public QObject, private StatusNotifierRoom {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    void aHostThatStartsLaterFindsTheItem()
    {
        m_host->stop();
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(),
                                                      StatusNotifierItem::Desktop{});
        QSignalSpy failures(m_item.get(), &StatusNotifierItem::registrationFailed);
        QCOMPARE(m_host->properties(name()).value(u"Status"_s).toString(), u"Active"_s);
        QVERIFY(m_host->registrations.isEmpty());
        m_host->start();
        QTRY_COMPARE(m_host->registrations, QStringList{name()});
        QVERIFY(failures.isEmpty());
    }

    void aHostThatRestartsFindsTheItemAgain()
    {
        make({false, true});
        for (int restarts = 1; restarts <= 3; ++restarts) {
            m_host->stop();
            m_host->start();
            QTRY_COMPARE(m_host->registrations.size(), restarts + 1);
        }
        QCOMPARE(m_host->registrations.constLast(), name());
    }

    void anItemRegisteredWithAHostIsShown()
    {
        m_host->stop();
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(),
                                                      StatusNotifierItem::Desktop{});
        QVERIFY(!m_item->isShown());
        QVERIFY(!m_item->isAbsent()); // not known yet
        QSignalSpy changes(m_item.get(), &StatusItem::shownChanged);
        QTRY_VERIFY(m_item->isAbsent());
        QVERIFY(!m_item->isShown());
        m_host->start();
        QTRY_VERIFY(m_item->isShown());
        QVERIFY(!m_item->isAbsent());
        m_host->stop();
        QTRY_VERIFY(m_item->isAbsent());
        QCOMPARE(changes, (QList<QVariantList>{{true}, {false}}));
    }

    void aWatcherWithoutAHostShowsNothing()
    {
        m_host->setHasHost(false);
        make({false, true});
        QTRY_VERIFY(m_item->isAbsent());
        QVERIFY(!m_item->isShown());
        QSignalSpy changes(m_item.get(), &StatusItem::shownChanged);
        QSignalSpy absences(m_item.get(), &StatusNotifierItem::absenceFound);
        m_host->setHasHost(true);
        QTRY_VERIFY(m_item->isShown());
        m_host->setHasHost(false);
        QTRY_VERIFY(!m_item->isShown());
        QCOMPARE(changes, (QList<QVariantList>{{true}, {false}}));
        QCOMPARE(absences.size(), 1);
        // The watcher keeps the item all the time.
        QCOMPARE(m_host->registrations.size(), 1);
    }

    void aSilentWatcherIsAskedAgainAndReportedOnce()
    {
        m_host->isSilent = true;
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(),
                                                      StatusNotifierItem::Desktop{});
        QSignalSpy failures(m_item.get(), &StatusNotifierItem::registrationFailed);
        QTRY_COMPARE_WITH_TIMEOUT(m_host->registrations.size(), 3, 20000);
        QCOMPARE(failures.size(), 1);
        QVERIFY(!m_item->isShown());
        QVERIFY(!m_item->isAbsent());
        m_host->isSilent = false;
        QTRY_VERIFY_WITH_TIMEOUT(m_item->isShown(), 10000);
        QCOMPARE(m_host->registrations.size(), 4);
        QCOMPARE(failures.size(), 1);
    }

    void aWatcherThatRefusesIsReportedAndNotAskedAgain()
    {
        m_host->refuses = true;
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(),
                                                      StatusNotifierItem::Desktop{});
        QSignalSpy failures(m_item.get(), &StatusNotifierItem::registrationFailed);
        QTRY_COMPARE(failures.size(), 1);
        QCOMPARE(failures.first().first().toString(), u"not here"_s);
        QVERIFY(!m_item->isShown());
        QCOMPARE(m_host->registrations.size(), 1);
        // A new watcher in its place is asked.
        m_host->refuses = false;
        m_host->stop();
        m_host->start();
        QTRY_VERIFY(m_item->isShown());
    }
};

QUILLET_TEST(StatusNotifierWatcherTest, runTest<StatusNotifierWatcherTest, QApplication>);
#include "StatusNotifierWatcherTest.moc"
