// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/StatusNotifierRoom.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The status item on hosts with the habits of certain desktops.
class StatusNotifierHostsTest final : public QObject, private StatusNotifierRoom {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup() { end(); }

    // GNOME's host.
    void aHostThatDrawsTheTextOnlyWhenItChangesDrawsItAtOnce()
    {
        make({.showsLabel = true});
        m_item->setTitle(u"Anna"_s);
        QTRY_COMPARE(m_host->drawnLabel, u"Anna"_s);
        QCOMPARE(m_host->properties(name()).value(u"XAyatanaLabel"_s).toString(), u"Anna"_s);
    }

    // GNOME unloads its host for the time that the screen is locked.
    void afterEachUnlockTheTextIsThereAgain()
    {
        make({.showsLabel = true});
        m_item->setTitle(u"Anna"_s);
        QTRY_COMPARE(m_host->drawnLabel, u"Anna"_s);
        for (int unlocks = 1; unlocks <= 2; ++unlocks) {
            m_host->stop();
            QCOMPARE(m_host->drawnLabel, QString());
            m_host->start();
            QTRY_COMPARE(m_host->drawnLabel, u"Anna"_s);
        }
    }

    void aHostThatReadsLateDrawsTheText()
    {
        m_host->readsLate = true;
        make({.showsLabel = true, .labelPause = pause});
        m_item->setTitle(u"Anna"_s);
        // A busy desktop takes its time.
        QTest::qWait(static_cast<int>(3 * pause.count()));
        QCOMPARE(m_host->labels, QStringList());
        m_host->readLabel(name());
        QTRY_COMPARE(m_host->drawnLabel, u"Anna"_s);
    }

    void aHostThatReadsBeforeItTakesTheItemDrawsTheText()
    {
        make({.showsLabel = true});
        m_item->setTitle(u"Anna"_s);
        QTRY_COMPARE(m_host->drawnLabel, u"Anna"_s);
        m_host->stop();
        // It looks for items by itself and finds this one with its text.
        m_host->readLabel(name());
        QTRY_COMPARE(m_host->labelReads, 2);
        m_host->start();
        QTRY_COMPARE(m_host->drawnLabel, u"Anna"_s);
    }

    void aHostThatComesBackToItsWatcherDrawsTheText()
    {
        make({.showsLabel = true});
        m_item->setTitle(u"Anna"_s);
        QTRY_COMPARE(m_host->drawnLabel, u"Anna"_s);
        m_host->setHasHost(false);
        QTRY_VERIFY(!m_item->isShown());
        m_host->setHasHost(true);
        QTRY_COMPARE(m_host->drawnLabel, u"Anna"_s);
    }

    void readingAgainAndAgainDelaysNothing()
    {
        make({.showsLabel = true});
        m_item->setTitle(u"Anna"_s);
        for (int reads = 0; reads < 20; ++reads) {
            (void)m_host->properties(name());
            QTest::qWait(static_cast<int>(pause.count()) / 5);
        }
        QCOMPARE(m_host->drawnLabel, u"Anna"_s);
    }

    void theTitleIsNeverWithheld()
    {
        m_host->readsLate = true;
        make({.showsLabel = true});
        m_item->setTitle(u"Anna"_s);
        QCOMPARE(m_host->properties(name()).value(u"Title"_s).toString(), u"Anna"_s);
        QCOMPARE(m_host->toolTip(name()), QStringList{u"Anna"_s});
    }

    // The hosts of MATE and LXQt take any path for that of a menu.
    void aRightClickOpensTheMenuOnEveryDesktop_data()
    {
        QTest::addColumn<bool>("showsLabel");
        QTest::newRow("a host with text") << true;
        QTest::newRow("a host without") << false;
    }

    void aRightClickOpensTheMenuOnEveryDesktop()
    {
        QFETCH(bool, showsLabel);
        make({.showsLabel = showsLabel});
        m_item->setMenu({{u"Today’s schedule"_s, [] {}}, {}, {u"Quit Quillet"_s, [] {}}});
        QCOMPARE(m_host->rightClick(name()), (QStringList{u"Today’s schedule"_s, {}, u"Quit Quillet"_s}));
    }

private:
    static constexpr std::chrono::milliseconds pause{50};

    void make(StatusNotifierItem::Desktop desktop)
    {
        desktop.labelPause = pause;
        create(desktop);
    }
};

QUILLET_TEST(StatusNotifierHostsTest, runTest<StatusNotifierHostsTest, QApplication>);
#include "StatusNotifierHostsTest.moc"
