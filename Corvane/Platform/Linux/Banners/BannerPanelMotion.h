// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"

namespace corvane {

/// The course of one animation: a pure function of the time since its start.
struct BannerPanelMotion {
    /// What is drawn at one moment.
    struct Moment {
        Rect frame;
        double alpha = 1;

        friend bool operator==(const Moment &, const Moment &) = default;
    };

    Moment begin;
    BannerPanelAnimation animation;

    /// What is drawn `elapsed` after the start; the exact end state once the duration is over.
    [[nodiscard]] Moment at(Seconds elapsed) const;

    [[nodiscard]] bool isOver(Seconds elapsed) const { return !(elapsed < animation.duration); }
};

} // namespace corvane
