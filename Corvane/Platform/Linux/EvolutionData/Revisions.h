// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/EvolutionData/SeriesChanges.h"

namespace corvane {

/// Keeps one revision of the event, and one of each changed instance: the one with the highest sequence
/// number, then the newest; of two equal ones the cancelled one, or the later one in the list. Cancelling a
/// series also cancels the instances that were changed before.
void keepNewestRevisions(ComponentGroup &group, const EventTimes &times);

} // namespace corvane
