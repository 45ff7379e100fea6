// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"
#include "Corvane/Platform/Linux/Banners/BannerCard.h"

#include <functional>
#include <memory>
#include <vector>

namespace corvane {

/// Banner panels that are cards in a window of some window system, which the derived class makes.
///
/// The traits tell what this kind of window is by nature; nothing in them changes it.
class CardBannerPanels : public BannerPanels {
public:
    /// Makes the widget that a card shows, of the card's size; it calls the function when its close button is
    /// pressed.
    using ContentFactory = std::function<std::unique_ptr<QWidget>(const TeachingAction &action,
                                                                  std::function<void()> onDismiss)>;

    ~CardBannerPanels() override;
    CardBannerPanels(const CardBannerPanels &) = delete;
    CardBannerPanels &operator=(const CardBannerPanels &) = delete;

    [[nodiscard]] std::shared_ptr<BannerPanel> makeBannerPanel(Rect frame, const BannerPanelTraits &traits,
                                                               const TeachingAction &action,
                                                               std::function<void()> onDismiss) override;

    /// Hides the banner panels by unmapping them while the session is locked, and brings back at unlocking
    /// those that were not closed meanwhile. Frames, animations and their completions go on regardless.
    void setSessionLocked(bool isLocked);

    /// Whether animations take their time; else they are over at once. They do from the beginning.
    void setMoves(bool moves);

protected:
    /// `makeContent` must outlive nothing but this object; `shape` is that of the card it draws.
    CardBannerPanels(ContentFactory makeContent, const CardShape &shape);

    /// Makes the window of one banner; it deletes itself when it is finished.
    [[nodiscard]] virtual BannerCard *makeCard(BannerCard::Setting setting) = 0;

private:
    ContentFactory m_makeContent;
    CardShape m_shape;
    bool m_isLocked = false;
    bool m_moves = true;
    std::vector<QPointer<BannerCard>> m_cards;
};

} // namespace corvane
