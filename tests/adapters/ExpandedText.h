// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace corvane {

/// A request for the tests' day (see CalendarRoom.h) and a user in UTC.
[[nodiscard]] ExpansionRequest testRequest();

/// Parses the texts and groups their events. Ends the test program if a text cannot be read.
[[nodiscard]] std::vector<ComponentGroup> groupsOfTexts(const std::vector<QByteArray> &texts);

[[nodiscard]] Expansion expandTexts(const std::vector<QByteArray> &texts,
                                    const ExpansionRequest &request = testRequest());

/// The titles of the events, in order.
[[nodiscard]] QStringList titles(const Expansion &expansion);

} // namespace corvane
