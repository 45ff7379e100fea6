// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace corvane {

/// What the events of calendar texts are on the tests' day (see CalendarRoom.h), for a user in UTC.
[[nodiscard]] ExpansionRequest testRequest();

/// The groups of the events of several texts.
[[nodiscard]] std::vector<ComponentGroup> groupsOfTexts(const std::vector<QByteArray> &texts);

[[nodiscard]] Expansion expandTexts(const std::vector<QByteArray> &texts,
                                    const ExpansionRequest &request = testRequest());

/// The titles of its events, in their order.
[[nodiscard]] QStringList titles(const Expansion &expansion);

} // namespace corvane
