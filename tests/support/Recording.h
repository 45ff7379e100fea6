// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SoundPlaying.h"
#include "Corvane/Notifications/TeachingNotificationPresenting.h"
#include "Corvane/Utilities/Clock.h"

#include <vector>

namespace corvane {

/// Counts the sounds played.
class RecordingSoundPlayer final : public SoundPlaying {
public:
    mutable int played = 0;

    void playNotificationSound() const override { ++played; }
};

/// Records the presented actions and when they were presented.
class RecordingPresenter final : public TeachingNotificationPresenting {
public:
    struct Presented {
        TeachingAction action;
        Date moment;
    };
    std::vector<Presented> presented;

    void present(const TeachingAction &action) override { presented.push_back({action, currentDate()}); }
};

} // namespace corvane
