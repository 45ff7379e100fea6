// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/Expansion.h"

#include <vector>

namespace corvane {

/// Every occurrence of `groups` that overlaps the interval: with changed instances in place of those of the
/// series, without cancelled ones, and with one revision of each. Expands single events first, then the
/// series, the cheapest first. What exceeds the budget is left out and named. Slow: runs on a worker thread,
/// on components that no other thread touches.
[[nodiscard]] Expansion expandGroups(const std::vector<ComponentGroup> &groups,
                                     const ExpansionRequest &request, ExpansionControl &control);

} // namespace corvane
