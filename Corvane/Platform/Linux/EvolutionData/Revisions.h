// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/SeriesChanges.h"

namespace corvane {

/// Keeps one revision of the event, and one of each changed instance: that with the highest sequence number,
/// then the newest; of two that are alike the cancelled one, or the later one in the list. The cancellation
/// of a series takes the instances along that were changed before it.
void keepNewestRevisions(ComponentGroup &group, const EventTimes &times);

} // namespace corvane
