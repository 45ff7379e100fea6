// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Banners/CardBannerPanels.h"

namespace corvane {

/// Banner panels as X11 windows above all others (also under XWayland). A compositing manager that starts or
/// stops takes effect with the next banner panel. Without an X server they are ordinary windows.
class X11BannerPanels final : public CardBannerPanels {
public:
    X11BannerPanels(ContentFactory makeContent, const CardShape &shape);

protected:
    [[nodiscard]] BannerCard *makeCard(BannerCard::Setting setting) override;
};

} // namespace corvane
