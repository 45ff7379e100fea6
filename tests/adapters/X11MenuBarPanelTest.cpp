// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/WindowManagement.h"
#include "tests/adapters/X11WindowsFixture.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr int dockThickness = 30;

/// A dock on one edge of the desktop.
class Dock final : public QWidget {
public:
    Dock(Qt::Edge edge, QSize screen)
    {
        setAttribute(Qt::WA_X11NetWmWindowTypeDock);
        setAttribute(Qt::WA_ShowWithoutActivating);
        setWindowFlag(Qt::WindowDoesNotAcceptFocus);
        setPalette(QPalette(QColor(60, 64, 72)));
        const int w = screen.width();
        const int h = screen.height();
        constexpr int t = dockThickness;
        QString strut;
        switch (edge) {
        case Qt::TopEdge:
            setGeometry(0, 0, w, t);
            strut = u"0,0,%1,0,0,0,0,0,0,%2,0,0"_s.arg(t).arg(w - 1);
            break;
        case Qt::BottomEdge:
            setGeometry(0, h - t, w, t);
            strut = u"0,0,0,%1,0,0,0,0,0,0,0,%2"_s.arg(t).arg(w - 1);
            break;
        case Qt::LeftEdge:
            setGeometry(0, 0, t, h);
            strut = u"%1,0,0,0,0,%2,0,0,0,0,0,0"_s.arg(t).arg(h - 1);
            break;
        case Qt::RightEdge:
            setGeometry(w - t, 0, t, h);
            strut = u"0,%1,0,0,0,0,0,%2,0,0,0,0"_s.arg(t).arg(h - 1);
            break;
        }
        show();
        TestDesktop::run(u"xprop"_s, {u"-id"_s, QString::number(winId()), u"-f"_s, u"_NET_WM_STRUT_PARTIAL"_s,
                                      u"32c"_s, u"-set"_s, u"_NET_WM_STRUT_PARTIAL"_s, strut});
    }
};

} // namespace

/// The menu bar panel under window managers: its place, its keyboard, what closes it.
class X11MenuBarPanelTest final : public X11WindowsFixture {
    Q_OBJECT

public:
    using X11WindowsFixture::X11WindowsFixture;

private Q_SLOTS:
    void theMenuBarPanelTakesTheKeyboardFromAnotherProgram_data() { everyManager(); }
    void theMenuBarPanelTakesTheKeyboardFromAnotherProgram()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        oppose();
        clickBell({640, 790});
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        TestDesktop::xdotool({u"key"_s, u"Escape"_s});
        QTRY_VERIFY_WITH_TIMEOUT(!m_menuBarPanel->isOpen(), windowTimeout);
        // Open and close it again: each click counts with its own time.
        clickBell({640, 790});
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        TestDesktop::xdotool({u"mousemove"_s, u"100"_s, u"700"_s, u"click"_s, u"1"_s});
        QTRY_VERIFY_WITH_TIMEOUT(!m_menuBarPanel->isOpen(), windowTimeout);
    }

    void theMenuBarPanelOpensAtTheBellOnEveryEdge_data()
    {
        QTest::addColumn<WindowManager>("manager");
        QTest::addColumn<Qt::Edge>("edge");
        QTest::addColumn<Point>("bell"); // y upwards
        QTest::addColumn<QRect>("card"); // y downwards; the height is not compared
        constexpr int gap = 6;
        const std::initializer_list<std::pair<const char *, WindowManager>> managers{
            {"openbox", WindowManager::openbox},
            {"xfwm4", WindowManager::xfwm4},
            {"xfwm4 with compositing", WindowManager::xfwm4WithCompositing}};
        for (const auto &[name, manager] : managers) {
            QTest::addRow("%s top", name)
                << manager << Qt::TopEdge << Point{1200, 785} << QRect(1280 - gap - 320, 30 + gap, 320, 0);
            QTest::addRow("%s bottom", name)
                << manager << Qt::BottomEdge << Point{640, 15} << QRect(480, 800 - 30 - gap, 320, 0);
            QTest::addRow("%s left", name)
                << manager << Qt::LeftEdge << Point{15, 400} << QRect(30 + gap, 400, 320, 0);
            QTest::addRow("%s right", name)
                << manager << Qt::RightEdge << Point{1265, 400} << QRect(1280 - 30 - gap - 320, 400, 320, 0);
        }
    }

    void theMenuBarPanelOpensAtTheBellOnEveryEdge()
    {
        QFETCH(WindowManager, manager);
        QFETCH(Qt::Edge, edge);
        QFETCH(Point, bell);
        QFETCH(QRect, card);
        use(manager);
        const Dock dock(edge, screenSize);
        QTRY_VERIFY_WITH_TIMEOUT(
            m_screens.screens().front().visibleFrame != m_screens.screens().front().frame, windowTimeout);
        clickBell(bell);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        const QWidget *shown = m_menuBarPanel->window()->findChild<QPushButton *>()->parentWidget();
        const auto place = [shown] { return QRect(shown->mapToGlobal(QPoint()), shown->size()); };
        QCOMPARE(place().width(), 320);
        QCOMPARE(place().left(), card.left());
        switch (edge) {
        case Qt::TopEdge:
            QCOMPARE(place().top(), card.top());
            break;
        case Qt::BottomEdge:
            QCOMPARE(place().bottom() + 1, card.top());
            break;
        case Qt::LeftEdge:
        case Qt::RightEdge:
            QVERIFY(std::abs(place().center().y() - card.top()) <= 1);
            break;
        }
        // The X server agrees with the toolkit: the manager has not moved the window.
        const QString told = TestDesktop::xdotool(
            {u"getwindowgeometry"_s, QString::number(m_menuBarPanel->window()->winId())});
        const QPoint corner = m_menuBarPanel->window()->geometry().topLeft();
        QVERIFY2(told.contains(u"Position: %1,%2 "_s.arg(corner.x()).arg(corner.y())), qPrintable(told));
        keepPicture(QString::fromLatin1(QTest::currentDataTag()).replace(u' ', u'-'));
    }

    void aClickElsewhereClosesTheMenuBarPanel_data() { everyManager(); }
    void aClickElsewhereClosesTheMenuBarPanel()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        oppose();
        clickBell({640, 790});
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        TestDesktop::xdotool({u"mousemove"_s, u"100"_s, u"700"_s, u"click"_s, u"1"_s});
        QTRY_VERIFY_WITH_TIMEOUT(!m_menuBarPanel->isOpen(), windowTimeout);
        // If the same click was on the bell, it does not open the panel again; a click at another place does.
        clickBell({100, 100});
        QVERIFY(!m_menuBarPanel->isOpen());
        clickBell({640, 790});
        QVERIFY(m_menuBarPanel->isOpen());
    }

    void theMenuBarPanelStaysUsableBesideAWindowThatItOpened_data() { everyManager(); }
    void theMenuBarPanelStaysUsableBesideAWindowThatItOpened()
    {
        QFETCH(WindowManager, manager);
        use(manager);
        oppose();
        clickBell({640, 790});
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_menuBarPanel->window()), windowTimeout);
        m_menuBarPanel->stayOpenBesideWindows();
        open(u"setup"_s, u"Welcome to Quillet"_s);
        QTRY_VERIFY_WITH_TIMEOUT(hasFocus(m_scenes->window(u"setup"_s)), windowTimeout);
        QVERIFY(m_menuBarPanel->isOpen());
        m_scenes->window(u"setup"_s)->move(10, 60);
        QTRY_COMPARE_WITH_TIMEOUT(m_scenes->window(u"setup"_s)->pos(), QPoint(10, 60), windowTimeout);
        auto *button = m_menuBarPanel->window()->findChild<QPushButton *>();
        QSignalSpy clicks(button, &QAbstractButton::clicked);
        m_menuBarPanel->window()->raise();
        // Where the window covers the panel, the panel stays behind it until it is clicked.
        const auto isClicked = [&] {
            if (clicks.isEmpty() && m_menuBarPanel->isOpen()) {
                click(button);
                QCoreApplication::processEvents();
            }
            return !clicks.isEmpty();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isClicked() || !m_menuBarPanel->isOpen(), windowTimeout);
        QVERIFY(m_menuBarPanel->isOpen());
        QVERIFY(m_scenes->window(u"setup"_s) != nullptr);
        keepPicture(u"beside-"_s + QString::fromLatin1(QTest::currentDataTag()).replace(u' ', u'-'));
    }
};

QUILLET_TEST(X11MenuBarPanelTest, runX11Windows<X11MenuBarPanelTest>);

#include "X11MenuBarPanelTest.moc"
