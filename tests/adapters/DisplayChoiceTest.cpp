// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/DisplayChoice.h"

#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;

class DisplayChoiceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theXServerIsPreferredToTheCompositor_data()
    {
        QTest::addColumn<QByteArray>("asked");
        QTest::addColumn<QByteArray>("withBoth");
        QTest::addColumn<QByteArray>("withX11");
        QTest::addColumn<QByteArray>("withWayland");
        QTest::addColumn<QByteArray>("withNeither"); // empty: none
        const auto row = [](const QByteArray &asked, const QByteArray &withX11, const QByteArray &withWayland,
                            const QByteArray &withNeither) {
            QTest::newRow(asked.constData()) << asked << withX11 << withX11 << withWayland << withNeither;
        };
        row("", "xcb", "wayland", "");
        row("xcb", "xcb", "wayland", "");
        row("wayland", "xcb", "wayland", "");
        row("wayland;xcb", "xcb", "wayland;xcb", "");
        row("xcb;wayland", "xcb;wayland", "wayland", "");
        row("wayland-egl", "xcb", "wayland-egl", "");
        row("offscreen", "offscreen", "offscreen", "offscreen");
        row("vnc:port=5900", "vnc:port=5900", "vnc:port=5900", "vnc:port=5900");
    }

    void theXServerIsPreferredToTheCompositor()
    {
        QFETCH(QByteArray, asked);
        const auto choose = [&asked](bool hasX11, bool hasWayland) {
            return displayChoice::platform(
                       asked, [hasX11] { return hasX11; }, [hasWayland] { return hasWayland; })
                .value_or(QByteArray());
        };
        QTEST(choose(true, true), "withBoth");
        QTEST(choose(true, false), "withX11");
        QTEST(choose(false, true), "withWayland");
        QTEST(choose(false, false), "withNeither");
    }

    void missingServersDoNotAnswer()
    {
        qunsetenv("WAYLAND_DISPLAY");
        for (const char *display : {"", ":7777", "nonsense"}) {
            qputenv("DISPLAY", display);
            QVERIFY(!displayChoice::x11Answers());
        }
        qunsetenv("DISPLAY");
        QVERIFY(!displayChoice::x11Answers());
        QVERIFY(!displayChoice::waylandAnswers());
        qputenv("WAYLAND_DISPLAY", "wayland-7777");
        QVERIFY(!displayChoice::waylandAnswers());
        qunsetenv("WAYLAND_DISPLAY");
    }
};

QUILLET_TEST(DisplayChoiceTest, runTest<DisplayChoiceTest>);
#include "DisplayChoiceTest.moc"
