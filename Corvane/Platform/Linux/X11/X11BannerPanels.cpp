// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/X11BannerPanels.h"

#include "Corvane/Platform/Linux/X11/X11BannerWindow.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <utility>

namespace corvane {

X11BannerPanels::X11BannerPanels(ContentFactory makeContent, const CardShape &shape)
    : CardBannerPanels(std::move(makeContent), shape)
{
}

BannerCard *X11BannerPanels::makeCard(BannerCard::Setting setting)
{
    setting.isComposited = x11::connection() == nullptr || x11::isComposited();
    return new X11BannerWindow(setting);
}

} // namespace corvane
