// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"
#include "Corvane/Platform/Linux/X11/CardShape.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace corvane {

class BannerWindow;

/// Banner panels as X11 windows that stand above everything (also under XWayland). Follows a compositing
/// manager that comes or goes from the next panel on. Without an X server the windows are ordinary ones.
///
/// The traits tell what this kind of window is by nature; nothing in them changes it.
class X11BannerPanels final : public BannerPanels {
public:
    /// Makes the widget that a card shows, of the card's size; it calls the function when its close button is
    /// pressed.
    using ContentFactory = std::function<std::unique_ptr<QWidget>(const TeachingAction &action,
                                                                  std::function<void()> onDismiss)>;

    /// `makeContent` must outlive nothing but this object; `shape` is that of the card it draws.
    X11BannerPanels(ContentFactory makeContent, const CardShape &shape);
    ~X11BannerPanels() override;

    [[nodiscard]] std::shared_ptr<BannerPanel> makePanel(Rect frame, const PanelTraits &traits,
                                                         const TeachingAction &action,
                                                         std::function<void()> onDismiss) override;

    /// Hides the panels by unmapping them while the session is locked, and brings back at unlocking those
    /// that were not closed meanwhile. Frames, animations and their completions go on regardless.
    void setSessionLocked(bool isLocked);

private:
    ContentFactory m_makeContent;
    CardShape m_shape;
    bool m_isLocked = false;
    std::vector<QPointer<BannerWindow>> m_windows;
};

} // namespace corvane
