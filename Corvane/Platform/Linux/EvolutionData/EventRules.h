// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include "Corvane/Calendar/RuleCost.h"
#include "Corvane/Platform/Linux/EvolutionData/ExpansionBudget.h"

#include <QString>

#include <expected>
#include <optional>
#include <vector>

namespace corvane {

/// The children of one kind.
[[nodiscard]] std::vector<GObjectRef<ICalComponent>> children(ICalComponent *parent, ICalComponentKind kind);

[[nodiscard]] bool has(ICalComponent *component, ICalPropertyKind kind);

/// The properties of one kind.
[[nodiscard]] std::vector<GObjectRef<ICalProperty>> properties(ICalComponent *component,
                                                               ICalPropertyKind kind);

/// Whether a component may occur more than once.
[[nodiscard]] bool repeats(ICalComponent *component);

/// The year in which a component first begins; none if it has no start.
[[nodiscard]] std::optional<int> startYear(ICalComponent *component);

/// Whether the start and the end of a component, if given, are on days that exist. On 31 February the library
/// begins a single event on 3 March, but no further event of a series.
[[nodiscard]] bool hasSoundTimes(ICalComponent *component);

/// The rules by which a component repeats, and those that exclude occurrences.
[[nodiscard]] std::vector<RecurrenceRule> rulesOf(ICalComponent *component);

/// How many steps it takes to follow an event that begins at `start` through the window from `from` to `to`
/// (seconds since 1970), or why that exceeds `budget`.
[[nodiscard]] std::expected<double, QString> stepsOf(ICalComponent *event, double start, double from,
                                                     double to, const ExpansionBudget &budget);

} // namespace corvane
