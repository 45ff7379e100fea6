// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"

namespace corvane {

/// Shows teaching actions to the teacher. Main thread only; called by the view model.
class TeachingNotificationPresenting {
public:
    virtual ~TeachingNotificationPresenting() = default;

    /// Shows one alert for `action`, replacing one that is still shown.
    virtual void present(const TeachingAction &action) = 0;
};

} // namespace corvane
