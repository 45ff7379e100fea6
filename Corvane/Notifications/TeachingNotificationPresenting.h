// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"

namespace corvane {

/// Whoever shows a teaching action to the teacher. Main thread only; called by the view model.
class TeachingNotificationPresenting {
public:
    virtual ~TeachingNotificationPresenting() = default;

    /// Shows one alert for `action`, in place of one that is still up.
    virtual void present(const TeachingAction &action) = 0;
};

} // namespace corvane
