// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Banners/CardBannerPanels.h"
#include "tests/contracts/BannerPanelsContract.h"

#include <QPushButton>

namespace corvane {

/// The BannerPanels contract for card banner panels; the cards contain only a close button.
class CardBannerPanelsContract : public BannerPanelsContract {
    Q_OBJECT

protected:
    void pressCloseButton() override { m_button->click(); }
    bool isOnScreen() override { return m_button && m_button->window()->isVisible(); }

    [[nodiscard]] CardBannerPanels::ContentFactory closeButtons()
    {
        return [this](const TeachingAction &action, std::function<void()> onDismiss) {
            auto content = std::make_unique<QWidget>();
            content->setFixedSize(1000, 280);
            m_button = new QPushButton(action.message, content.get());
            connect(m_button, &QPushButton::clicked, m_button, std::move(onDismiss));
            return content;
        };
    }

    static constexpr CardShape shape{.cornerRadius = 40, .shadowBlur = 28, .shadowOpacity = 0.55};

private:
    QPointer<QPushButton> m_button;
};

} // namespace corvane
