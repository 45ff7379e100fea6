// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"
#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/Geometry.h"

#include <functional>
#include <memory>

namespace corvane {

/// The window properties of a banner panel: above everything, even full-screen windows, on every workspace,
/// excluded from the window cycle, never taking the focus. The numbers are those of one window system. The
/// adapters here are for others: they achieve the same effect by other means and ignore the numbers.
struct BannerPanelTraits {
    int level = 0;                   ///< 1000: above normal, floating and status windows
    unsigned collectionBehavior = 0; ///< bit set: which workspaces it joins, and how
    unsigned styleMask = 0;          ///< bit set: its frame, and whether it activates the program
    bool hasShadow = false;
    bool hidesOnDeactivate = false;
    bool ignoresMouseEvents = false;

    friend bool operator==(const BannerPanelTraits &, const BannerPanelTraits &) = default;
};

/// The course of an animation: fast at first (`easeOut`) or slow at first (`easeIn`).
enum class TimingCurve { easeOut, easeIn };

/// A change of a banner panel's opacity and frame over time.
struct BannerPanelAnimation {
    Seconds duration{};
    TimingCurve curve = TimingCurve::easeOut;
    double alpha = 1; ///< opacity at the end, 0 to 1
    Rect frame;       ///< frame at the end

    friend bool operator==(const BannerPanelAnimation &, const BannerPanelAnimation &) = default;
};

/// One banner on the screen, or animating on or off it. Main thread only. Destroying it closes it.
class BannerPanel {
public:
    virtual ~BannerPanel() = default;

    /// The card's rectangle as currently drawn, animation included; y points up.
    [[nodiscard]] virtual Rect frame() const = 0;

    /// Sets the card's rectangle at once. The size may change by a few per cent, about the centre.
    virtual void setFrame(Rect frame) = 0;

    /// Sets the opacity at once, 0 to 1.
    virtual void setAlpha(double alpha) = 0;

    /// Shows the banner panel above everything, whether or not the program is active, without taking the
    /// keyboard focus.
    virtual void orderFrontRegardless() = 0;

    /// Starts an animation from the current frame and opacity and returns. It replaces a running animation,
    /// whose `completion` is dropped. `completion` runs on the main thread at the end, in a later turn of the
    /// event loop; never if the banner panel is closed before.
    virtual void animate(const BannerPanelAnimation &animation, std::function<void()> completion) = 0;

    /// Removes the banner panel from the screen at once and drops the `completion` of a running animation.
    /// Closing twice is harmless; later calls on a closed banner panel have no effect.
    virtual void close() = 0;
};

/// Creates banner panels. Main thread only; called by the banner presenter.
class BannerPanels {
public:
    virtual ~BannerPanels() = default;

    /// Creates a banner panel that shows `action` in a card of `frame`, not yet on the screen. `onDismiss` is
    /// called on the main thread when the teacher presses the card's close button; the banner panel stays
    /// open until it is closed.
    [[nodiscard]] virtual std::shared_ptr<BannerPanel> makeBannerPanel(Rect frame,
                                                                       const BannerPanelTraits &traits,
                                                                       const TeachingAction &action,
                                                                       std::function<void()> onDismiss) = 0;
};

} // namespace corvane
