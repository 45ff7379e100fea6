// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"
#include "Corvane/Platform/Linux/X11/X11Screens.h"
#include "tests/contracts/CardPanelsContract.h"
#include "tests/contracts/WidgetScreensContract.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QApplication>

using namespace corvane;

class X11BannerPanelsContractTest final : public CardPanelsContract {
    Q_OBJECT

protected:
    BannerPanels &panels() override { return m_panels; }

private:
    X11BannerPanels m_panels{closeButtons(), shape};
};

class X11ScreensContractTest final : public WidgetScreensContract {
    Q_OBJECT

protected:
    Screens &screens() override { return m_screens; }

private:
    X11Screens m_screens;
};

/// Runs both contracts: on a display of its own or, called with "--offscreen", without any X server.
static int run(int argc, char *argv[])
{
    std::unique_ptr<TestDesktop> desktop;
    if (takeOption("--offscreen", argc, argv)) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else {
        desktop = std::make_unique<TestDesktop>(QSize(1280, 800));
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    X11BannerPanelsContractTest panels;
    X11ScreensContractTest screens;
    return QTest::qExec(&panels, argc, argv) + QTest::qExec(&screens, argc, argv);
}

QUILLET_TEST(X11BannerContractTest, run);

#include "X11BannerContractTest.moc"
