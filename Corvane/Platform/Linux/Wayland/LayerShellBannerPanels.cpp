// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/LayerShellBannerPanels.h"

#include "Corvane/Platform/Linux/Wayland/LayerShellBanner.h"

#include <utility>

namespace corvane {

LayerShellBannerPanels::LayerShellBannerPanels(WaylandConnection &connection, ContentFactory makeContent,
                                               const CardShape &shape, DebugLogService &logger)
    : CardBannerPanels(std::move(makeContent), shape)
    , m_connection(connection)
    , m_logger(logger)
{
}

BannerCard *LayerShellBannerPanels::makeCard(BannerCard::Setting setting)
{
    m_connection.open();
    setting.isComposited = true; // like every surface
    return new LayerShellBanner(setting, m_connection, m_logger);
}

} // namespace corvane
