// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/EmbeddedTrayIcon.h"

#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "tests/adapters/Tray.h"
#include "tests/adapters/WindowManagement.h"
#include "tests/contracts/StatusItemContract.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QMenu>
#include <QRegularExpression>
#include <QScreen>
#include <QTextDocumentFragment>
#include <QWidget>

#include <algorithm>
#include <cstdlib>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr int trayTimeout = 30'000; // milliseconds; a busy tray draws late
constexpr QSize trayScreenSize(800, 400);

/// The window that the toolkit embeds into the tray; nullptr without a tray.
QWidget *embeddedWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(
        windows, [](const QWidget *window) { return window->inherits("QSystemTrayIconSys"); });
    return found != windows.end() ? *found : nullptr;
}

/// Saves a screenshot for inspection if QUILLET_KEEP_PICTURES names a folder.
void keepTrayPicture(const QString &name)
{
    const QString folder = qEnvironmentVariable("QUILLET_KEEP_PICTURES");
    if (!folder.isEmpty()) {
        QVERIFY(QGuiApplication::primaryScreen()->grabWindow(0).save(folder + u'/' + name + u".png"_s));
    }
}

} // namespace

/// The icon in a tray, which shows the text as a tool tip and has no tokens.
class EmbeddedTrayIconTest final : public StatusItemContract {
    Q_OBJECT

protected:
    StatusItem &item() override { return *m_item; }

    QStringList published() override
    {
        const QWidget *window = embeddedWindow();
        return window != nullptr
                   ? QStringList{QTextDocumentFragment::fromHtml(window->toolTip()).toPlainText()}
                   : QStringList();
    }

    QStringList toolTip() override
    {
        // The window's tool tip has a line for each of ours.
        return published().value(0).split(u'\n');
    }

    QStringList seenOf(const QStringList &texts) override { return {texts.constLast()}; }

    void click(const QString &) override
    {
        // Two clicks in a row would be a double click.
        QTest::qWait(QApplication::doubleClickInterval());
        press(u"1"_s);
    }
    QString given(const QString &) override { return {}; }

    std::optional<Point> placeOfClick() override
    {
        const QPoint bell = place().center();
        return Point{static_cast<double>(bell.x()), static_cast<double>(trayScreenSize.height() - bell.y())};
    }

    void openMenu() override
    {
        closeMenu();
        // Two presses in a row would be a double click.
        QTest::qWait(QApplication::doubleClickInterval());
        press(u"3"_s);
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activePopupWidget() != nullptr, trayTimeout);
    }

    void chooseLine(int index) override
    {
        openMenu();
        const auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu != nullptr);
        const QPoint line = menu->mapToGlobal(menu->actionGeometry(menu->actions().at(index)).center());
        TestDesktop::xdotool(
            {u"mousemove"_s, QString::number(line.x()), QString::number(line.y()), u"click"_s, u"1"_s});
        // A click on a separator leaves the menu open.
        QTest::qWait(QApplication::doubleClickInterval());
        closeMenu();
    }

    void setHostThere(bool isThere) override
    {
        if (isThere) {
            startTray();
        } else {
            m_tray.reset();
        }
    }

private Q_SLOTS:
    void init()
    {
        startTray();
        m_item = std::make_unique<EmbeddedTrayIcon>(statusBellImages());
        QTRY_VERIFY_WITH_TIMEOUT(isInTheTray(), trayTimeout);
        QVERIFY(m_tray->settlesWithOneIcon());
    }

    void cleanup()
    {
        closeMenu();
        m_item.reset();
        m_tray.reset();
        // A tray that ends releases its place before its window is gone; wait for both.
        QTRY_COMPARE_WITH_TIMEOUT(x11::selectionOwner("_NET_SYSTEM_TRAY_S0"), 0U, trayTimeout);
        QTRY_VERIFY_WITH_TIMEOUT(!isTrayManaged(), trayTimeout);
    }

    void withoutAMenuARightClickIsAClick()
    {
        QSignalSpy clicks(m_item.get(), &StatusItem::activated);
        press(u"3"_s);
        QTRY_COMPARE_WITH_TIMEOUT(clicks.size(), 1, trayTimeout);
    }

    void menuEntriesAreShownLiterally()
    {
        m_item->setMenu({{u"a & b"_s, [] {}}, {}, {u"<b>c</b>"_s, [] {}}});
        openMenu();
        const QList<QAction *> lines = QApplication::activePopupWidget()->actions();
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines.at(0)->text(), u"a && b"_s);
        QVERIFY(lines.at(1)->isSeparator());
        QCOMPARE(lines.at(2)->text(), u"<b>c</b>"_s);
        keepTrayPicture(u"embedded-menu"_s);
    }

    void theTitleIsShownLiterally()
    {
        m_item->setTitle(u"<b>Anna</b> & Ben"_s);
        QCOMPARE(published(), QStringList{u"<b>Anna</b> & Ben"_s});
    }

private:
    static void closeMenu()
    {
        if (QWidget *menu = QApplication::activePopupWidget()) {
            menu->close();
        }
    }

    /// Whether the window manager manages the tray's window.
    [[nodiscard]] static bool isTrayManaged()
    {
        return !x11::property(x11::rootWindow(), "_NET_CLIENT_LIST").empty();
    }

    void startTray()
    {
        m_tray = std::make_unique<Tray>(trayScreenSize, QColor(0x22, 0x24, 0x28));
        QTRY_VERIFY_WITH_TIMEOUT(x11::selectionOwner("_NET_SYSTEM_TRAY_S0") != 0, trayTimeout);
        QTRY_VERIFY_WITH_TIMEOUT(isTrayManaged(), trayTimeout);
    }

    /// The icon's geometry according to the X server; empty while it is not visible.
    [[nodiscard]] static QRect place()
    {
        const QWidget *window = embeddedWindow();
        if (window == nullptr) {
            return {};
        }
        const QString told = TestDesktop::run(u"xwininfo"_s, {u"-id"_s, QString::number(window->winId())});
        if (!told.contains(u"Map State: IsViewable"_s)) {
            return {};
        }
        const auto number = [&told](const QString &name) {
            return QRegularExpression(name + u": +(-?\\d+)"_s).match(told).captured(1).toInt();
        };
        return {number(u"Absolute upper-left X"_s), number(u"Absolute upper-left Y"_s), number(u"Width"_s),
                number(u"Height"_s)};
    }

    [[nodiscard]] static bool isInTheTray()
    {
        const QRect tray(0, trayScreenSize.height() - Tray::thickness, trayScreenSize.width(),
                         Tray::thickness);
        constexpr int smallest = 12;
        return tray.contains(place()) && place().width() >= smallest;
    }

    void press(const QString &button)
    {
        // A tray that is still drawing may move the icon again.
        const auto isPointerOnIt = [] {
            const QPoint bell = place().center();
            TestDesktop::xdotool({u"mousemove"_s, QString::number(bell.x()), QString::number(bell.y())});
            return embeddedWindow() != nullptr && windowUnderPointer() == embeddedWindow()->winId();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isPointerOnIt(), trayTimeout);
        TestDesktop::xdotool({u"click"_s, button});
    }

    [[nodiscard]] static std::uint32_t windowUnderPointer()
    {
        std::uint32_t window = x11::rootWindow();
        for (;;) {
            const std::unique_ptr<xcb_query_pointer_reply_t, decltype(&::free)> pointer(
                xcb_query_pointer_reply(x11::connection(), xcb_query_pointer(x11::connection(), window),
                                        nullptr),
                &::free);
            if (!pointer || pointer->child == XCB_NONE) {
                return window;
            }
            window = pointer->child;
        }
    }

    std::unique_ptr<Tray> m_tray;
    std::unique_ptr<EmbeddedTrayIcon> m_item;
};

static int runEmbeddedTrayIcon(int argc, char *argv[])
{
    TestDesktop desktop(trayScreenSize);
    desktop.startWindowManager(TestDesktop::WindowManager::openbox);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (!isManagerServing()) {
        qFatal("the window manager does not serve");
    }
    EmbeddedTrayIconTest test;
    return QTest::qExec(&test, argc, argv);
}

QUILLET_TEST(EmbeddedTrayIconTest, runEmbeddedTrayIcon);

#include "EmbeddedTrayIconTest.moc"
