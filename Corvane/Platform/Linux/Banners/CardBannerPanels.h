// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"
#include "Corvane/Platform/Linux/Banners/BannerCard.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace corvane {

/// Banner panels that are cards in windows of some window system, which the derived class makes.
///
/// The traits are ignored: these windows always have them.
class CardBannerPanels : public BannerPanels {
public:
    /// Makes the widget that a card shows, in the card's size. The widget calls `onDismiss` when its close
    /// button is pressed.
    using ContentFactory = std::function<std::unique_ptr<QWidget>(const TeachingAction &action,
                                                                  std::function<void()> onDismiss)>;

    ~CardBannerPanels() override;
    CardBannerPanels(const CardBannerPanels &) = delete;
    CardBannerPanels &operator=(const CardBannerPanels &) = delete;

    [[nodiscard]] std::shared_ptr<BannerPanel> makeBannerPanel(Rect frame, const BannerPanelTraits &traits,
                                                               const TeachingAction &action,
                                                               std::function<void()> onDismiss) override;

    /// While the session is locked, banner panels are unmapped; unlocking maps those that have not been
    /// closed. Frames, animations and completions go on meanwhile.
    void setSessionLocked(bool isLocked);

    /// If false, animations that start from now on have no duration. Default: true.
    void setMoves(bool moves);

    /// `whenGone` is called each time the last banner panel's window and pictures have been deleted.
    void setWhenGone(std::function<void()> whenGone) { m_whenGone = std::move(whenGone); }

protected:
    /// `makeContent` is called only during this object's lifetime; `shape` is that of the card it makes.
    CardBannerPanels(ContentFactory makeContent, const CardShape &shape);

    /// Makes the window of one banner. It deletes itself after finish().
    [[nodiscard]] virtual BannerCard *makeCard(BannerCard::Setting setting) = 0;

private:
    void cardGone();

    ContentFactory m_makeContent;
    CardShape m_shape;
    bool m_isLocked = false;
    bool m_moves = true;
    std::vector<QPointer<BannerCard>> m_cards;
    std::function<void()> m_whenGone;
    QObject m_cardsContext; ///< ends the connections of cards that outlive this object
};

} // namespace corvane
