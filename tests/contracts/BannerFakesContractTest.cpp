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
    BannerPanels &bannerPanels() override { return m_bannerPanels; }
    void pressCloseButton() override { m_bannerPanels.records.back()->onDismiss(); }
    bool isOnScreen() override { return m_bannerPanels.records.back()->isVisible; }

private:
    FakeBannerPanels m_bannerPanels;
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
