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

/// The year in which a component begins, the first time; nothing where it does not tell.
[[nodiscard]] std::optional<int> startYear(ICalComponent *component);

/// Whether the beginning and the end of a component, as far as it tells them, are days that there are.
[[nodiscard]] bool hasSoundTimes(ICalComponent *component);

/// The rules by which a component repeats, and those by which it does not.
[[nodiscard]] std::vector<RecurrenceRule> rulesOf(ICalComponent *component);

/// How many steps it takes to follow an event that begins at `start` through the window, or why that is too
/// much.
[[nodiscard]] std::expected<double, QString> stepsOf(ICalComponent *event, double start, double from,
                                                     double to, const ExpansionBudget &budget);

} // namespace corvane
