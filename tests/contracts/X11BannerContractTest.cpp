// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"
#include "Corvane/Platform/Linux/X11/X11Screens.h"
#include "tests/contracts/BannerPanelsContract.h"
#include "tests/contracts/WidgetScreensContract.h"
#include "tests/support/TestDesktop.h"

#include <QApplication>
#include <QPushButton>

using namespace corvane;

class X11BannerPanelsContractTest final : public BannerPanelsContract {
    Q_OBJECT

protected:
    BannerPanels &panels() override { return m_panels; }
    void pressCloseButton() override { m_button->click(); }
    bool isOnScreen() override { return m_button && m_button->window()->isVisible(); }

private:
    QPointer<QPushButton> m_button;
    X11BannerPanels m_panels{[this](const TeachingAction &action, std::function<void()> onDismiss) {
                                 auto content = std::make_unique<QWidget>();
                                 content->setFixedSize(1000, 280);
                                 m_button = new QPushButton(action.message, content.get());
                                 QObject::connect(m_button, &QPushButton::clicked, m_button,
                                                  std::move(onDismiss));
                                 return content;
                             },
                             {.cornerRadius = 40, .shadowBlur = 28, .shadowOpacity = 0.55}};
};

class X11ScreensContractTest final : public WidgetScreensContract {
    Q_OBJECT

protected:
    Screens &screens() override { return m_screens; }

private:
    X11Screens m_screens;
};

/// Runs both contracts: on a display of its own or, called with "--offscreen", without any X server.
int main(int argc, char *argv[])
{
    std::unique_ptr<TestDesktop> desktop;
    const bool isOffscreen = argc > 1 && qstrcmp(argv[1], "--offscreen") == 0;
    if (isOffscreen) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        --argc;
        ++argv;
    } else {
        desktop = std::make_unique<TestDesktop>(QSize(1280, 800));
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    X11BannerPanelsContractTest panels;
    X11ScreensContractTest screens;
    return QTest::qExec(&panels, argc, argv) + QTest::qExec(&screens, argc, argv);
}

#include "X11BannerContractTest.moc"
