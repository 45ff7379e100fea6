// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Banners/CardBannerPanels.h"

#include <utility>

namespace corvane {

namespace {

class CardBannerPanel final : public BannerPanel {
public:
    explicit CardBannerPanel(BannerCard *card) : m_card(card), m_lastFrame(card->frame()) {}
    ~CardBannerPanel() override { removeFromScreen(); }
    CardBannerPanel(const CardBannerPanel &) = delete;
    CardBannerPanel &operator=(const CardBannerPanel &) = delete;

    [[nodiscard]] Rect frame() const override { return m_card ? m_card->frame() : m_lastFrame; }

    void setFrame(Rect frame) override
    {
        if (m_card) {
            m_card->setFrame(frame);
        }
    }

    void setAlpha(double alpha) override
    {
        if (m_card) {
            m_card->setAlpha(alpha);
        }
    }

    void orderFrontRegardless() override
    {
        if (m_card) {
            m_card->orderFront();
        }
    }

    void animate(const BannerPanelAnimation &animation, std::function<void()> completion) override
    {
        if (m_card) {
            m_card->animate(animation, std::move(completion));
        }
    }

    void close() override { removeFromScreen(); }

private:
    void removeFromScreen()
    {
        if (m_card) {
            m_lastFrame = m_card->frame();
            std::exchange(m_card, nullptr)->finish();
        }
    }

    QPointer<BannerCard> m_card;
    Rect m_lastFrame;
};

} // namespace

CardBannerPanels::CardBannerPanels(ContentFactory makeContent, const CardShape &shape)
    : m_makeContent(std::move(makeContent))
    , m_shape(shape)
{
}

CardBannerPanels::~CardBannerPanels() = default;

std::shared_ptr<BannerPanel> CardBannerPanels::makeBannerPanel(Rect frame, const BannerPanelTraits &,
                                                               const TeachingAction &action,
                                                               std::function<void()> onDismiss)
{
    BannerCard *card =
        makeCard({.frame = frame, .shape = m_shape, .isComposited = true, .isLocked = m_isLocked});
    card->setMoves(m_moves);
    card->setContent(m_makeContent(action, std::move(onDismiss)));
    std::erase(m_cards, nullptr);
    m_cards.emplace_back(card);
    // Queued, because a widget reports its end before it gives up its pictures.
    QObject::connect(
        card, &QObject::destroyed, &m_cardsContext, [this] { cardGone(); }, Qt::QueuedConnection);
    return std::make_shared<CardBannerPanel>(card);
}

void CardBannerPanels::cardGone()
{
    if (std::erase(m_cards, nullptr) > 0 && m_cards.empty() && m_whenGone) {
        m_whenGone();
    }
}

void CardBannerPanels::setSessionLocked(bool isLocked)
{
    m_isLocked = isLocked;
    for (const QPointer<BannerCard> &card : m_cards) {
        if (card) {
            card->setSessionLocked(isLocked);
        }
    }
}

void CardBannerPanels::setMoves(bool moves)
{
    m_moves = moves;
    for (const QPointer<BannerCard> &card : m_cards) {
        if (card) {
            card->setMoves(moves);
        }
    }
}

} // namespace corvane
