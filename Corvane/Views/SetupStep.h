// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <vector>

namespace corvane {

/// One page of the first-run setup.
struct SetupStep {
    QString title;
    QString symbolName; ///< shown above the title
    QString detail;
};

/// The pages, in order.
[[nodiscard]] const std::vector<SetupStep> &setupSteps();

/// What assistive tools say for the page indicator at page `index` (from 0) of `count`: "Page 1 of 5".
[[nodiscard]] QString pageText(int index, int count);

} // namespace corvane
