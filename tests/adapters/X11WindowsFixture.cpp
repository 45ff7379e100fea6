// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/X11WindowsFixture.h"

#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "Corvane/Utilities/WindowPresentation.h"
#include "tests/adapters/WindowManagement.h"

#include <QBoxLayout>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// A stand-in for the real content.
std::unique_ptr<QWidget> content()
{
    auto widget = std::make_unique<QWidget>();
    widget->setFixedWidth(320);
    auto *layout = new QVBoxLayout(widget.get());
    for (const QString &text : {u"10:00  Anna"_s, u"10:30  Ben"_s, u"11:00  Cem"_s, u"11:30  Dora"_s}) {
        layout->addWidget(new QLabel(text));
    }
    layout->addWidget(new QPushButton(u"Test Notification"_s));
    return widget;
}

} // namespace

void X11WindowsFixture::initTestCase()
{
    // With this setting xfwm4 keeps windows from taking the keyboard focus unasked.
    const QString folder = qEnvironmentVariable("XDG_CONFIG_HOME") + u"/xfce4/xfconf/xfce-perchannel-xml"_s;
    QVERIFY(QDir().mkpath(folder));
    QFile settings(folder + u"/xfwm4.xml"_s);
    QVERIFY(settings.open(QIODevice::WriteOnly));
    settings.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                   "<channel name=\"xfwm4\" version=\"1.0\">\n"
                   "  <property name=\"general\" type=\"empty\">\n"
                   "    <property name=\"prevent_focus_stealing\" type=\"bool\" value=\"true\"/>\n"
                   "  </property>\n</channel>\n");
}

void X11WindowsFixture::init()
{
    m_menuBarPanel = std::make_unique<MenuBarPanel>(content, m_screens, m_windowSystem);
    m_scenes = std::make_unique<WindowScenes>(m_windowSystem, m_screens);
    const auto add = [this](const QString &identifier, const QString &title, QSize size) {
        m_scenes->add({identifier, title, size, [] { return std::make_unique<QLabel>(u"content"_s); }});
    };
    add(u"setup"_s, u"Welcome to Quillet"_s, {680, 500});
    add(u"help"_s, u"Quillet Help"_s, {920, 620});
}

void X11WindowsFixture::cleanup()
{
    m_menuBarPanel.reset();
    m_scenes.reset();
    if (m_opponent) {
        m_opponent->terminate();
        QVERIFY(m_opponent->state() == QProcess::NotRunning || m_opponent->waitForFinished());
        m_opponent.reset();
    }
}

QColor X11WindowsFixture::pixel(QPoint at)
{
    return QGuiApplication::primaryScreen()->grabWindow(0, at.x(), at.y(), 1, 1).toImage().pixelColor(0, 0);
}

void X11WindowsFixture::use(WindowManager manager)
{
    m_desktop.startWindowManager(manager);
    QVERIFY(isManagerServing());
    QTRY_COMPARE_WITH_TIMEOUT(x11::isComposited(), manager == WindowManager::xfwm4WithCompositing,
                              windowTimeout);
}

void X11WindowsFixture::oppose()
{
    m_opponent = m_desktop.startOpponent();
    QTRY_COMPARE_WITH_TIMEOUT(pixel({640, 400}), QColor(u"#a0c0e0"_s), 2 * windowTimeout);
    TestDesktop::xdotool({u"mousemove"_s, u"640"_s, u"700"_s, u"click"_s, u"1"_s});
    QTRY_VERIFY_WITH_TIMEOUT(m_opponent->canReadLine() ||
                                 (m_opponent->waitForReadyRead(100), m_opponent->canReadLine()),
                             windowTimeout);
    QTRY_VERIFY_WITH_TIMEOUT(activeWindow() != 0, windowTimeout);
}

bool X11WindowsFixture::hasFocus(const QWidget *window)
{
    return window != nullptr && window->isActiveWindow() && activeWindow() == window->winId();
}

void X11WindowsFixture::click(const QWidget *widget)
{
    const QPoint at = widget->mapToGlobal(widget->rect().center());
    TestDesktop::xdotool(
        {u"mousemove"_s, QString::number(at.x()), QString::number(at.y()), u"click"_s, u"1"_s});
}

void X11WindowsFixture::clickBell(Point item)
{
    m_windowSystem.userAsked({});
    m_menuBarPanel->toggle(item);
}

void X11WindowsFixture::open(const QString &id, const QString &title)
{
    WindowPresentation::open(
        id, title, [this](const QString &identifier) { m_scenes->open(identifier); }, m_windowSystem);
}

void X11WindowsFixture::everyManager()
{
    QTest::addColumn<WindowManager>("manager");
    QTest::newRow("openbox") << WindowManager::openbox;
    QTest::newRow("xfwm4") << WindowManager::xfwm4;
    QTest::newRow("xfwm4 with compositing") << WindowManager::xfwm4WithCompositing;
}

} // namespace corvane
