// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"
#include "tests/adapters/StatusNotifierHost.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The status item on hosts with the habits of certain desktops.
class StatusNotifierHostsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        m_host =
            std::make_unique<StatusNotifierHost>(QDBusConnection::connectToBus(m_bus->address(), u"host"_s));
        m_host->start();
    }

    void cleanup()
    {
        m_item.reset();
        m_host.reset();
        QDBusConnection::disconnectFromBus(u"item"_s);
        QDBusConnection::disconnectFromBus(u"host"_s);
        m_bus.reset();
    }

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
        m_item = std::make_unique<StatusNotifierItem>(
            QDBusConnection::connectToBus(m_bus->address(), u"item"_s), statusBellImages(), desktop);
        QTRY_COMPARE(m_host->registrations, QStringList{name()});
    }

    [[nodiscard]] static QString name() { return QDBusConnection(u"item"_s).baseService(); }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<StatusNotifierHost> m_host;
    std::unique_ptr<StatusNotifierItem> m_item;
};

QUILLET_TEST(StatusNotifierHostsTest, runTest<StatusNotifierHostsTest, QApplication>);
#include "StatusNotifierHostsTest.moc"
