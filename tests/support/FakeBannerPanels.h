// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace corvane {

/// Banner panels without a screen, which record each call. Animations use wait(), so a ManualClock steps
/// them; until an animation ends, frame and opacity stay as they were at its start.
class FakeBannerPanels final : public BannerPanels {
public:
    /// The state of one banner panel. It outlives the panel, so that a test can inspect a closed one.
    struct Record {
        Rect initialFrame;
        BannerPanelTraits traits;
        TeachingAction action;
        std::function<void()> onDismiss; ///< the close button's action; a test calls it to press the button

        Rect frame; ///< as drawn now
        double alpha = 1;
        bool isVisible = false; ///< ordered front and not closed
        bool isClosed = false;
        int closeCalls = 0;                           ///< calls of close(), not counting destruction
        std::vector<BannerPanelAnimation> animations; ///< all started animations
        QStringList calls; ///< "setFrame", "setAlpha", "orderFrontRegardless", "animate", "close", "destroy"
        std::uint64_t animationNumber = 0; ///< distinguishes the running animation from replaced ones
    };

    [[nodiscard]] std::shared_ptr<BannerPanel> makeBannerPanel(Rect frame, const BannerPanelTraits &traits,
                                                               const TeachingAction &action,
                                                               std::function<void()> onDismiss) override;

    /// The banner panels on the screen now, oldest first.
    [[nodiscard]] std::vector<std::shared_ptr<Record>> visibleBannerPanels() const;

    std::vector<std::shared_ptr<Record>> records; ///< every banner panel ever made, oldest first
};

} // namespace corvane
