// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Notifications/FloatingBannerPresenter.h"

#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/DateText.h"
#include "Corvane/Utilities/PlainText.h"
#include "Corvane/Utilities/Spawn.h"

#include <QPointer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr Size bannerSize{1000, 280};
constexpr double margin = 48; ///< to the edges of the visible area

constexpr BannerPanelTraits bannerTraits{
    .level = 1000, // the level of screen savers: above normal, floating and status windows
    .collectionBehavior =
        329,          // on every space, transient, excluded from the window cycle, beside full-screen windows
    .styleMask = 128, // borderless, never activating the program
    .hasShadow = true,
    .hidesOnDeactivate = false,
    .ignoresMouseEvents = false, // the close button takes clicks
};

constexpr Seconds appearDuration{0.22};
constexpr double appearScale = 0.95;
constexpr Seconds disappearDuration{0.24};
constexpr double disappearScale = 0.97;
constexpr double shortestTimeOnScreen = 1.0;

QString rectangleText(Rect rect)
{
    return u"(%1, %2, %3, %4)"_s.arg(defaultDoubleText(rect.x), defaultDoubleText(rect.y),
                                     defaultDoubleText(rect.width), defaultDoubleText(rect.height));
}

} // namespace

FloatingBannerPresenter::FloatingBannerPresenter(const SoundPlaying &soundPlayer, DebugLogService &logger,
                                                 const AppSettings &settings, Screens &screens,
                                                 BannerPanels &bannerPanels, QObject *parent)
    : QObject(parent)
    , m_soundPlayer(soundPlayer)
    , m_logger(logger)
    , m_settings(settings)
    , m_screens(screens)
    , m_bannerPanels(bannerPanels)
{
}

void FloatingBannerPresenter::present(const TeachingAction &action)
{
    dismissExistingWindows();
    m_logger.log(u"notification actually fires state="_s + rawValue(action.state) + u" message=\""_s +
                 plainText(action.message) + u'"');
    m_soundPlayer.playNotificationSound();

    const Screen screen = activeScreen();
    const std::shared_ptr<BannerPanel> bannerPanel = makeWindow(action, screen);
    m_visibleWindows.push_back(bannerPanel);

    const Rect finalFrame = bannerPanel->frame();
    bannerPanel->setFrame(finalFrame.scaledAboutCentre(appearScale));
    bannerPanel->setAlpha(0);
    bannerPanel->orderFrontRegardless();
    bannerPanel->animate(
        {.duration = appearDuration, .curve = TimingCurve::easeOut, .alpha = 1, .frame = finalFrame}, {});

    m_logger.log(u"popup shown screenFrame="_s + rectangleText(screen.frame) + u" windowFrame="_s +
                 rectangleText(bannerPanel->frame()));
    spawn(scheduleDismissal(bannerPanel, displayDuration(action)));
}

Point FloatingBannerPresenter::origin(Size size, Rect visible, NotificationPosition position)
{
    const double left = visible.minX() + margin;
    const double right = visible.maxX() - size.width - margin;
    const double middle = visible.midX() - size.width / 2;
    const double low = visible.minY() + margin;
    const double high = visible.maxY() - size.height - margin;

    Point point;
    switch (position) {
    case NotificationPosition::center:
        point = {middle, visible.midY() - size.height / 2};
        break;
    case NotificationPosition::top:
        point = {middle, high};
        break;
    case NotificationPosition::bottom:
        point = {middle, low};
        break;
    case NotificationPosition::topLeft:
        point = {left, high};
        break;
    case NotificationPosition::topRight:
        point = {right, high};
        break;
    case NotificationPosition::bottomLeft:
        point = {left, low};
        break;
    case NotificationPosition::bottomRight:
        point = {right, low};
        break;
    }
    // The upper bound is applied last, so it wins if the area is too small.
    return {std::min(std::max(point.x, left), right), std::min(std::max(point.y, low), high)};
}

void FloatingBannerPresenter::dismissExistingWindows()
{
    for (const auto &bannerPanel : m_visibleWindows) {
        bannerPanel->close();
    }
    m_visibleWindows.clear();
}

Screen FloatingBannerPresenter::activeScreen() const
{
    if (const auto screen = m_screens.keyWindowScreen()) {
        return *screen;
    }
    const Point pointer = m_screens.pointerLocation();
    const std::vector<Screen> screens = m_screens.screens();
    const auto underPointer =
        std::ranges::find_if(screens, [&](const Screen &screen) { return screen.frame.contains(pointer); });
    if (underPointer != screens.end()) {
        return *underPointer;
    }
    if (const auto screen = m_screens.mainScreen()) {
        return *screen;
    }
    return screens.empty() ? Screen() : screens.front();
}

std::shared_ptr<BannerPanel> FloatingBannerPresenter::makeWindow(const TeachingAction &action,
                                                                 const Screen &screen)
{
    const Point corner = origin(bannerSize, screen.visibleFrame, m_settings.notificationPosition());
    const Rect frame{corner.x, corner.y, bannerSize.width, bannerSize.height};
    // The handler needs the banner panel, which is created with the handler; a shared pointer that is filled
    // in afterwards connects them.
    const auto shown = std::make_shared<std::weak_ptr<BannerPanel>>();
    auto bannerPanel =
        m_bannerPanels.makeBannerPanel(frame, bannerTraits, action, [self = QPointer(this), shown] {
            if (const auto bannerPanel = shown->lock(); bannerPanel != nullptr && self != nullptr) {
                self->dismiss(bannerPanel);
            }
        });
    *shown = bannerPanel;
    return bannerPanel;
}

double FloatingBannerPresenter::displayDuration(const TeachingAction &action) const
{
    const double chosen = m_settings.notificationDuration();
    if (action.state == LessonState::joinPlatform && action.lessonOrNext()) {
        // The join banner stays until the lesson starts, plus the chosen time.
        return std::max(0.0, (action.lessonOrNext()->startTime - action.effectiveDate).count()) + chosen;
    }
    return chosen;
}

QCoro::Task<void> FloatingBannerPresenter::scheduleDismissal(std::weak_ptr<BannerPanel> bannerPanel,
                                                             double seconds)
{
    const QPointer self(this);
    // Written so that NaN becomes the shortest time.
    co_await wait(Seconds{seconds > shortestTimeOnScreen ? seconds : shortestTimeOnScreen});
    const auto shown = bannerPanel.lock();
    if (self != nullptr && shown != nullptr) {
        self->dismiss(shown);
    }
}

void FloatingBannerPresenter::dismiss(const std::shared_ptr<BannerPanel> &bannerPanel)
{
    if (bannerPanel == nullptr) {
        return;
    }
    bannerPanel->animate({.duration = disappearDuration,
                          .curve = TimingCurve::easeIn,
                          .alpha = 0,
                          .frame = bannerPanel->frame().scaledAboutCentre(disappearScale)},
                         [self = QPointer(this), leaving = std::weak_ptr(bannerPanel)] {
                             if (const auto bannerPanel = leaving.lock();
                                 bannerPanel != nullptr && self != nullptr) {
                                 bannerPanel->close();
                                 std::erase(self->m_leavingWindows, bannerPanel);
                             }
                         });
    // The timer and the close button may both dismiss a banner.
    if (std::ranges::find(m_leavingWindows, bannerPanel) == m_leavingWindows.end()) {
        m_leavingWindows.push_back(bannerPanel);
    }
    std::erase(m_visibleWindows, bannerPanel);
}

} // namespace corvane
