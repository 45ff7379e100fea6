// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/Expansion.h"

#include <vector>

namespace corvane {

/// Every occurrence of `groups` that overlaps the interval: changed instances in the place of those of the
/// series, cancelled ones left out, and one revision of each. Single events come first, then the series, the
/// cheapest first. What exceeds the budget is left out and named. Slow: runs on a worker thread, on
/// components that no other thread touches.
[[nodiscard]] Expansion expandGroups(const std::vector<ComponentGroup> &groups,
                                     const ExpansionRequest &request, ExpansionControl &control);

} // namespace corvane
