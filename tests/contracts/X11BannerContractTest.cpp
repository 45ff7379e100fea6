// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/ToolkitScreens.h"
#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"
#include "tests/contracts/CardBannerPanelsContract.h"
#include "tests/contracts/WidgetScreensContract.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QApplication>

using namespace corvane;

class X11BannerPanelsContractTest final : public CardBannerPanelsContract {
    Q_OBJECT

protected:
    BannerPanels &bannerPanels() override { return m_bannerPanels; }

private Q_SLOTS:
    void theEndOfTheLastCardIsReported()
    {
        QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty()); // the cards of earlier tests
        X11BannerPanels panels(closeButtons(), shape);
        int ends = 0;
        panels.setWhenGone([&] { ++ends; });
        const auto first = panels.makeBannerPanel(home, {}, {}, [] {});
        const QPointer<QWidget> firstCard = QApplication::topLevelWidgets().constFirst();
        const auto second = panels.makeBannerPanel(home, {}, {}, [] {});
        first->close();
        QTRY_VERIFY(!firstCard);
        QCOMPARE(ends, 0);
        second->close();
        QTRY_COMPARE(ends, 1);
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

private:
    X11BannerPanels m_bannerPanels{closeButtons(), shape};
};

class ToolkitScreensContractTest final : public WidgetScreensContract {
    Q_OBJECT

protected:
    Screens &screens() override { return m_screens; }

private:
    ToolkitScreens m_screens;
};

/// Runs both contracts on a private display or, with "--offscreen", without an X server.
static int runX11BannerContract(int argc, char *argv[])
{
    std::unique_ptr<TestDesktop> desktop;
    if (takeOption("--offscreen", argc, argv)) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    } else {
        desktop = std::make_unique<TestDesktop>(QSize(1280, 800));
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    X11BannerPanelsContractTest bannerPanels;
    ToolkitScreensContractTest screens;
    return QTest::qExec(&bannerPanels, argc, argv) + QTest::qExec(&screens, argc, argv);
}

QUILLET_TEST(X11BannerContractTest, runX11BannerContract);

#include "X11BannerContractTest.moc"
