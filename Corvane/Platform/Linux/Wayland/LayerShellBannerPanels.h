// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Banners/CardBannerPanels.h"

namespace corvane {

class DebugLogService;
class WaylandConnection;

/// Banner panels as surfaces of a Wayland compositor's overlay layer, for compositors that offer it. A lost
/// connection is reopened for the next banner panel. Without a connection the banner panel is not visible,
/// and the log says so.
class LayerShellBannerPanels final : public CardBannerPanels {
public:
    /// `connection` and `logger` are borrowed.
    LayerShellBannerPanels(WaylandConnection &connection, ContentFactory makeContent, const CardShape &shape,
                           DebugLogService &logger);

protected:
    [[nodiscard]] BannerCard *makeCard(BannerCard::Setting setting) override;

private:
    WaylandConnection &m_connection;
    DebugLogService &m_logger;
};

} // namespace corvane
