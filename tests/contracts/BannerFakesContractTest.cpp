// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/contracts/BannerPanelsContract.h"
#include "tests/contracts/ScreensContract.h"
#include "tests/support/FakeBannerPanels.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/TestProgram.h"

using namespace corvane;

class FakeBannerPanelsContractTest final : public BannerPanelsContract {
    Q_OBJECT

protected:
    BannerPanels &panels() override { return m_panels; }
    void pressCloseButton() override { m_panels.records.back()->onDismiss(); }
    bool isOnScreen() override { return m_panels.records.back()->isVisible; }

private:
    FakeBannerPanels m_panels;
};

class FakeScreensContractTest final : public ScreensContract {
    Q_OBJECT

protected:
    Screens &screens() override { return m_screens; }
    void openKeyWindow() override { m_screens.keyWindow = m_screens.main; }
    void closeKeyWindow() override { m_screens.keyWindow.reset(); }

private:
    FakeScreens m_screens;
};

QUILLET_TEST(FakeBannerPanelsContractTest, runTest<FakeBannerPanelsContractTest>);
QUILLET_TEST(FakeScreensContractTest, runTest<FakeScreensContractTest>);

#include "BannerFakesContractTest.moc"
