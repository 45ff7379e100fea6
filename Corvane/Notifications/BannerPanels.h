// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"
#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/Geometry.h"

#include <functional>
#include <memory>

namespace corvane {

/// What kind of window a banner panel is: above everything, full screen included, on every workspace, out of
/// the window cycle, never taking the focus. An adapter for a window system that knows these numbers hands
/// them on; one for another window system gives the same effect by its own means.
struct BannerPanelTraits {
    int level = 0;                   ///< 1000 is above normal, floating and status windows
    unsigned collectionBehavior = 0; ///< a set of bits: which workspaces it joins, and how
    unsigned styleMask = 0;          ///< a set of bits: its frame, and whether it activates the program
    bool hasShadow = false;
    bool hidesOnDeactivate = false;
    bool ignoresMouseEvents = false;

    friend bool operator==(const BannerPanelTraits &, const BannerPanelTraits &) = default;
};

/// The course of an animation: fast first (`easeOut`) or slow first (`easeIn`).
enum class TimingCurve { easeOut, easeIn };

/// A change of a banner panel's opacity and frame over time.
struct BannerPanelAnimation {
    Seconds duration{};
    TimingCurve curve = TimingCurve::easeOut;
    double alpha = 1; ///< opacity at the end, 0 to 1
    Rect frame;       ///< frame at the end

    friend bool operator==(const BannerPanelAnimation &, const BannerPanelAnimation &) = default;
};

/// One banner on the screen, or on its way there or away. Main thread only. Destroying it closes it.
class BannerPanel {
public:
    virtual ~BannerPanel() = default;

    /// The card's rectangle as drawn at this moment, animation included; y upwards.
    [[nodiscard]] virtual Rect frame() const = 0;

    /// Sets the card's rectangle at once. The size may shrink or grow about the centre by a few per cent.
    virtual void setFrame(Rect frame) = 0;

    /// Sets the opacity at once, 0 to 1.
    virtual void setAlpha(double alpha) = 0;

    /// Puts the banner panel on the screen above everything, whether or not the program is active, without
    /// taking the keyboard focus.
    virtual void orderFrontRegardless() = 0;

    /// Starts the animation from the present frame and opacity and returns; a running one ends where it is,
    /// without its `completion`. `completion` runs on the main thread at the end, on a later turn of the
    /// event loop, and not at all when the banner panel is closed before.
    virtual void animate(const BannerPanelAnimation &animation, std::function<void()> completion) = 0;

    /// Takes the banner panel off the screen at once and lets go of a running animation's `completion`.
    /// Closing twice is harmless, and nothing that is asked of a closed banner panel has an effect.
    virtual void close() = 0;
};

/// Makes banner panels. Main thread only; called by the banner presenter.
class BannerPanels {
public:
    virtual ~BannerPanels() = default;

    /// Makes a banner panel that shows `action` in a card of `frame`, not yet on the screen. `onDismiss` is
    /// called on the main thread when the teacher presses the card's close button; the banner panel stays
    /// until it is closed.
    [[nodiscard]] virtual std::shared_ptr<BannerPanel> makeBannerPanel(Rect frame,
                                                                       const BannerPanelTraits &traits,
                                                                       const TeachingAction &action,
                                                                       std::function<void()> onDismiss) = 0;
};

} // namespace corvane
