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

/// Shows the large banner of each changeover, above everything, with a sound, and takes it away again after
/// the time that the teacher chose.
///
/// Main thread only; one instance for the whole run. Everything handed in is borrowed. Position and duration
/// are read at each presentation, so a change in the settings holds from the next banner on.
class FloatingBannerPresenter final : public QObject, public TeachingNotificationPresenting {
    Q_OBJECT

public:
    FloatingBannerPresenter(const SoundPlaying &soundPlayer, DebugLogService &logger,
                            const AppSettings &settings, Screens &screens, BannerPanels &bannerPanels,
                            QObject *parent = nullptr);

    void present(const TeachingAction &action) override;

    /// The banner panels shown now, in order of creation: those made and not yet dismissed or replaced.
    [[nodiscard]] const std::vector<std::shared_ptr<BannerPanel>> &visibleWindows() const
    {
        return m_visibleWindows;
    }

    /// The lower-left corner of a banner of `size` at `position` in the area `visible`. In an area that is
    /// too small the banner keeps the right and the top margin and may run off the left and the bottom edge.
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
    /// Dismissed and on their way out; kept here until they are closed.
    std::vector<std::shared_ptr<BannerPanel>> m_leavingWindows;
};

} // namespace corvane
