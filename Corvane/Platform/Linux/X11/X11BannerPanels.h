// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Banners/CardBannerPanels.h"

namespace corvane {

/// Banner panels as X11 windows that stand above everything (also under XWayland). Follows a compositing
/// manager that comes or goes from the next banner panel on. Without an X server the windows are ordinary
/// ones.
class X11BannerPanels final : public CardBannerPanels {
public:
    X11BannerPanels(ContentFactory makeContent, const CardShape &shape);

protected:
    [[nodiscard]] BannerCard *makeCard(BannerCard::Setting setting) override;
};

} // namespace corvane
