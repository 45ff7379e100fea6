// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/LayerShellBannerPanels.h"
#include "Corvane/Platform/Linux/Wayland/WaylandConnection.h"
#include "Corvane/Platform/Linux/Wayland/WaylandScreens.h"
#include "Corvane/Utilities/DebugLogService.h"
#include "tests/contracts/CardBannerPanelsContract.h"
#include "tests/contracts/WidgetScreensContract.h"
#include "tests/support/TestCompositor.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QTemporaryDir>

using namespace corvane;

class LayerShellBannerPanelsContractTest final : public CardBannerPanelsContract {
    Q_OBJECT

public:
    explicit LayerShellBannerPanelsContractTest(WaylandConnection &connection)
        : m_bannerPanels(connection, closeButtons(), shape, m_logger)
    {
    }

protected:
    BannerPanels &bannerPanels() override { return m_bannerPanels; }

private:
    QTemporaryDir m_folder;
    DebugLogService m_logger{m_folder.path()};
    LayerShellBannerPanels m_bannerPanels;

private Q_SLOTS:
    void cleanup() { QCOMPARE(m_logger.latestLines(), QStringList()); }
};

class WaylandScreensContractTest final : public WidgetScreensContract {
    Q_OBJECT

public:
    explicit WaylandScreensContractTest(WaylandConnection &connection) : m_screens(connection) {}

protected:
    Screens &screens() override { return m_screens; }

private:
    WaylandScreens m_screens;
};

static int runLayerShellBannerContract(int argc, char *argv[])
{
    constexpr QSize size(1280, 800);
    TestDesktop desktop(size);
    TestCompositor compositor(size);
    compositor.enter();
    QApplication application(argc, argv);
    WaylandConnection connection;
    if (!connection.open() || !connection.offersOverlays()) {
        qFatal("the compositor offers no overlays");
    }
    LayerShellBannerPanelsContractTest bannerPanels(connection);
    WaylandScreensContractTest screens(connection);
    return QTest::qExec(&bannerPanels, argc, argv) + QTest::qExec(&screens, argc, argv);
}

QUILLET_TEST(LayerShellBannerContractTest, runLayerShellBannerContract);

#include "LayerShellBannerContractTest.moc"
