// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/DesktopStatusItem.h"

#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "tests/adapters/StatusNotifierHost.h"
#include "tests/adapters/Tray.h"
#include "tests/adapters/WindowManagement.h"
#include "tests/contracts/StatusItemContract.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// Milliseconds.
constexpr int timeout = 10'000;
constexpr int twiceTheGrace = std::chrono::milliseconds(2 * DesktopStatusItem::grace).count();
constexpr QSize screenSize(800, 400);

} // namespace

class DesktopStatusItemTest final : public StatusItemContract {
    Q_OBJECT

public:
    /// `bus` is the session bus, on which the toolkit looks for hosts as well.
    explicit DesktopStatusItemTest(const PrivateBus &bus) : m_address(bus.address()) {}

protected:
    StatusItem &item() override
    {
        if (!m_item) {
            m_host->start();
            make({.showsLabel = true, .tellsPointer = false, .labelPause = std::chrono::milliseconds(0)});
            [this] { QTRY_VERIFY(m_item->isShown() && m_host->labelReads > 0); }();
        }
        return *m_item;
    }

    QStringList published() override { return m_host->labels; }
    QStringList toolTip() override { return m_host->toolTip(name()); }

    void click(const QString &token) override
    {
        item();
        if (!token.isEmpty()) {
            m_host->giveToken(name(), token);
        }
        m_host->activate(name(), 10, 20);
    }

    std::optional<Point> placeOfClick() override { return Point{10, screenSize.height() - 20.0}; }
    void setHostThere(bool isThere) override { isThere ? m_host->start() : m_host->stop(); }
    void openMenu() override { m_host->openMenu(name()); }
    void chooseLine(int index) override { m_host->chooseLine(name(), index + 1); }

private Q_SLOTS:
    void init()
    {
        m_host = std::make_unique<StatusNotifierHost>(QDBusConnection::connectToBus(m_address, u"host"_s));
    }

    void cleanup()
    {
        m_item.reset();
        m_host.reset();
        m_tray.reset();
        QDBusConnection::disconnectFromBus(u"item"_s);
        QDBusConnection::disconnectFromBus(u"host"_s);
        // Wait until the tray has released its place, so that the next test starts without one.
        QTRY_COMPARE_WITH_TIMEOUT(x11::selectionOwner("_NET_SYSTEM_TRAY_S0"), 0U, timeout);
    }

    void withoutAHostTheIconIsEmbedded_data()
    {
        QTest::addColumn<QColor>("tray");
        QTest::newRow("dark") << QColor(0x22, 0x24, 0x28);
        QTest::newRow("light") << QColor(0xf2, 0xf2, 0xf0);
    }

    void withoutAHostTheIconIsEmbedded()
    {
        QFETCH(QColor, tray);
        startTray(tray);
        QElapsedTimer since;
        since.start();
        make({});
        QSignalSpy changes(m_item.get(), &StatusItem::shownChanged);
        QVERIFY(!m_item->isShown());
        QTRY_COMPARE_WITH_TIMEOUT(changes, (QList<QVariantList>{{true}}), timeout);
        QVERIFY(m_item->isShown());
        // A coarse timer may fire 5% early.
        QVERIFY(since.hasExpired(std::chrono::milliseconds(DesktopStatusItem::grace).count() * 9 / 10));
        QVERIFY(m_tray->settlesWithOneIcon());
        keepPicture(u"embedded-"_s + QString::fromLatin1(QTest::currentDataTag()));
    }

    void aClickOnTheEmbeddedIconReportsItsPosition()
    {
        embed();
        QSignalSpy clicks(m_item.get(), &StatusItem::activated);
        const QPoint bell = m_tray->shown().center();
        for (const auto *button : {"1", "3"}) {
            TestDesktop::xdotool({u"mousemove"_s, QString::number(bell.x()), QString::number(bell.y()),
                                  u"click"_s, QString::fromLatin1(button)});
        }
        QTRY_COMPARE_WITH_TIMEOUT(clicks.size(), 2, timeout);
        for (const QList<QVariant> &told : clicks) {
            const auto place = told.constFirst().value<std::optional<Point>>();
            QVERIFY(place.has_value());
            QVERIFY2(std::abs(place->x - bell.x()) <= 4, qPrintable(QString::number(place->x)));
            QVERIFY2(std::abs(place->y - (screenSize.height() - bell.y())) <= 4,
                     qPrintable(QString::number(place->y)));
            QCOMPARE(told.at(1).toString(), QString());
        }
    }

    void aHostThatStartsReplacesTheEmbeddedIcon()
    {
        embed();
        QSignalSpy changes(m_item.get(), &StatusItem::shownChanged);
        m_host->start();
        QTRY_COMPARE(m_host->registrations, QStringList{name()});
        QTRY_VERIFY_WITH_TIMEOUT(m_tray->isEmpty(), timeout);
        QVERIFY(m_item->isShown());
        QVERIFY(changes.isEmpty());
        m_host->stop();
        QTRY_COMPARE_WITH_TIMEOUT(changes, (QList<QVariantList>{{false}, {true}}), timeout);
        QVERIFY(m_tray->settlesWithOneIcon());
    }

    void aHostBackWithinTheGracePeriodLeavesTheTrayEmpty()
    {
        startTray(QColor(0x22, 0x24, 0x28));
        m_host->start();
        make({});
        QTRY_VERIFY(m_item->isShown());
        QSignalSpy changes(m_item.get(), &StatusItem::shownChanged);
        m_host->stop();
        QTRY_COMPARE(changes, (QList<QVariantList>{{false}}));
        m_host->start();
        QTRY_COMPARE(changes, (QList<QVariantList>{{false}, {true}}));
        QVERIFY(!QTest::qWaitFor([this] { return !m_tray->isEmpty(); }, twiceTheGrace));
    }

    void aWatcherWithoutAHostLeavesTheIconEmbedded()
    {
        startTray(QColor(0x22, 0x24, 0x28));
        m_host->setHasHost(false);
        m_host->start();
        make({});
        // From 6.8 on, the toolkit embeds nothing while there is a watcher; then there is no bell, and
        // isShown() says so.
        constexpr bool isEmbedded = QT_VERSION < QT_VERSION_CHECK(6, 8, 0);
        QCOMPARE(m_tray->settlesWithOneIcon(isEmbedded ? timeout : twiceTheGrace), isEmbedded);
        QCOMPARE(m_item->isShown(), isEmbedded);
        m_host->setHasHost(true);
        QTRY_VERIFY_WITH_TIMEOUT(m_tray->isEmpty() && m_item->isShown(), timeout);
        if (isEmbedded) {
            // Only our item: the toolkit has not registered one.
            QCOMPARE(m_host->registrations, QStringList{name()});
        }
    }

    void aTrayThatStartsLateOrRestartsGetsTheIcon()
    {
        make({});
        QSignalSpy changes(m_item.get(), &StatusItem::shownChanged);
        for (int times = 0; times < 2; ++times) {
            startTray(QColor(0x22, 0x24, 0x28));
            QTRY_COMPARE_WITH_TIMEOUT(changes, (QList<QVariantList>{{true}}), timeout);
            QVERIFY(m_item->isShown());
            QVERIFY(m_tray->settlesWithOneIcon());
            m_tray.reset();
            QTRY_COMPARE_WITH_TIMEOUT(changes, (QList<QVariantList>{{true}, {false}}), timeout);
            QVERIFY(!m_item->isShown());
            changes.clear();
        }
    }

    void theTitleMovesAlongWithTheItem()
    {
        embed();
        m_item->setTitle(u"one"_s);
        m_item->setNotice(u"missing"_s);
        m_host->start();
        QTRY_COMPARE(m_host->registrations.size(), 1);
        QCOMPARE(m_host->properties(name()).value(u"Title"_s).toString(), u"one"_s);
        QCOMPARE(m_host->properties(name()).value(u"IconAccessibleDesc"_s).toString(), u"one. missing"_s);
    }

private:
    QDBusConnection connection() { return QDBusConnection(u"item"_s); }
    [[nodiscard]] QString name() { return connection().baseService(); }

    void make(StatusNotifierItem::Desktop desktop)
    {
        m_item = std::make_unique<DesktopStatusItem>(QDBusConnection::connectToBus(m_address, u"item"_s),
                                                     statusBellImages(), desktop);
    }

    void startTray(const QColor &colour)
    {
        m_tray = std::make_unique<Tray>(screenSize, colour);
        QTRY_VERIFY_WITH_TIMEOUT(x11::selectionOwner("_NET_SYSTEM_TRAY_S0") != 0, timeout);
        QVERIFY(QTest::qWaitFor([this] { return m_tray->isEmpty() || m_tray->hasOneIcon(); }, timeout));
    }

    void embed()
    {
        startTray(QColor(0x22, 0x24, 0x28));
        make({});
        QVERIFY(m_tray->settlesWithOneIcon());
    }

    QString m_address;
    std::unique_ptr<StatusNotifierHost> m_host;
    std::unique_ptr<Tray> m_tray;
    std::unique_ptr<DesktopStatusItem> m_item;
};

static int runDesktopStatusItem(int argc, char *argv[])
{
    TestDesktop desktop(screenSize);
    desktop.startWindowManager(TestDesktop::WindowManager::openbox);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (!isManagerServing()) {
        qFatal("the window manager does not serve");
    }
    DesktopStatusItemTest test(desktop.bus());
    return QTest::qExec(&test, argc, argv);
}

QUILLET_TEST(DesktopStatusItemTest, runDesktopStatusItem);

#include "DesktopStatusItemTest.moc"
