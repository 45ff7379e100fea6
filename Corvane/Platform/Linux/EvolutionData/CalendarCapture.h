// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include <QByteArray>

#include <optional>
#include <set>
#include <vector>

namespace corvane {

/// `groups` as calendar text, with the zones that their calendars define. Slow: for a worker thread.
[[nodiscard]] QByteArray captureGroups(const std::vector<ComponentGroup> &groups);

/// The same for the groups that occur in `span`, and those in `shared` in any case. `request` is that of a
/// complete expansion of the same groups. None if it takes too long. Slow: for a worker thread.
[[nodiscard]] std::optional<QByteArray> captureSpan(const std::vector<ComponentGroup> &groups,
                                                    const std::set<IdentifierKey> &shared,
                                                    ExpansionRequest request, DateInterval span,
                                                    ExpansionControl &control);

} // namespace corvane
