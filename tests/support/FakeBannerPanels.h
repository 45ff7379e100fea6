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

/// Banner panels without a screen: they record what they are told. An animation ends by wait(), so a manual
/// clock steps it; until then the frame and the opacity are those of its beginning.
class FakeBannerPanels final : public BannerPanels {
public:
    /// All that is known of one banner panel. It outlives the banner panel, so that a test can look at a
    /// closed one.
    struct Record {
        Rect initialFrame;
        BannerPanelTraits traits;
        TeachingAction action;
        std::function<void()> onDismiss; ///< what the close button calls; a test presses it by calling this

        Rect frame; ///< as drawn now
        double alpha = 1;
        bool isVisible = false; ///< ordered to the front and not closed
        bool isClosed = false;
        int closeCalls = 0;                           ///< calls of close(); the destructor's is not counted
        std::vector<BannerPanelAnimation> animations; ///< all that were started
        QStringList calls; ///< "setFrame", "setAlpha", "orderFrontRegardless", "animate", "close", "destroy"
        std::uint64_t animationNumber = 0; ///< tells the running animation from those it replaced
    };

    [[nodiscard]] std::shared_ptr<BannerPanel> makeBannerPanel(Rect frame, const BannerPanelTraits &traits,
                                                               const TeachingAction &action,
                                                               std::function<void()> onDismiss) override;

    /// The banner panels that are on the screen now, oldest first.
    [[nodiscard]] std::vector<std::shared_ptr<Record>> visibleBannerPanels() const;

    std::vector<std::shared_ptr<Record>> records; ///< every banner panel ever made, oldest first
};

} // namespace corvane
