// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"
#include "Corvane/Notifications/Screens.h"
#include "Corvane/Notifications/SoundPlaying.h"
#include "Corvane/Notifications/TeachingNotificationPresenting.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Utilities/DebugLogService.h"

#include <QObject>

#include <memory>
#include <vector>

namespace corvane {

/// Shows the large banner of each changeover above everything, with a sound, and removes it after the time
/// that the teacher chose.
///
/// Main thread only; one instance per run. Borrows everything passed in. Reads position and duration at each
/// presentation, so a change in the settings applies from the next banner on.
class FloatingBannerPresenter final : public QObject, public TeachingNotificationPresenting {
    Q_OBJECT

public:
    FloatingBannerPresenter(const SoundPlaying &soundPlayer, DebugLogService &logger,
                            const AppSettings &settings, Screens &screens, BannerPanels &bannerPanels,
                            QObject *parent = nullptr);

    void present(const TeachingAction &action) override;

    /// The banner panels shown now, in creation order: those created and not yet dismissed or replaced.
    [[nodiscard]] const std::vector<std::shared_ptr<BannerPanel>> &visibleWindows() const
    {
        return m_visibleWindows;
    }

    /// The lower-left corner of a banner of `size` at `position` within `visible`. If the area is too small,
    /// the banner keeps the right and top margins and may extend beyond the left and bottom edges.
    [[nodiscard]] static Point origin(Size size, Rect visible, NotificationPosition position);

private:
    void dismissExistingWindows();
    [[nodiscard]] Screen activeScreen() const;
    [[nodiscard]] std::shared_ptr<BannerPanel> makeWindow(const TeachingAction &action, const Screen &screen);
    [[nodiscard]] double displayDuration(const TeachingAction &action) const;
    QCoro::Task<void> scheduleDismissal(std::weak_ptr<BannerPanel> bannerPanel, double seconds);
    void dismiss(const std::shared_ptr<BannerPanel> &bannerPanel);

    const SoundPlaying &m_soundPlayer;
    DebugLogService &m_logger;
    const AppSettings &m_settings;
    Screens &m_screens;
    BannerPanels &m_bannerPanels;
    std::vector<std::shared_ptr<BannerPanel>> m_visibleWindows;
    /// Dismissed and still animating; kept here until they are closed.
    std::vector<std::shared_ptr<BannerPanel>> m_leavingWindows;
};

} // namespace corvane
