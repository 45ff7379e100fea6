// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Banners/BannerPanelMotion.h"

#include <QEasingCurve>
#include <QPointF>

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

/// The fraction of the way covered after the fraction `time` of the duration.
double progress(TimingCurve curve, double time)
{
    // One control point coincides with its end point; the other eases the opposite end.
    constexpr double softness = 0.42;
    QEasingCurve easing(QEasingCurve::BezierSpline);
    switch (curve) {
    case TimingCurve::easeOut:
        easing.addCubicBezierSegment(QPointF(0, 0), QPointF(1 - softness, 1), QPointF(1, 1));
        break;
    case TimingCurve::easeIn:
        easing.addCubicBezierSegment(QPointF(softness, 0), QPointF(1, 1), QPointF(1, 1));
        break;
    }
    return std::clamp(easing.valueForProgress(time), 0.0, 1.0);
}

} // namespace

BannerPanelMotion::Moment BannerPanelMotion::at(Seconds elapsed) const
{
    if (isOver(elapsed)) {
        return {animation.frame, animation.alpha};
    }
    const double share = progress(animation.curve, std::max(elapsed / animation.duration, 0.0));
    const auto between = [share](double from, double to) { return std::lerp(from, to, share); };
    const Rect &from = begin.frame;
    const Rect &to = animation.frame;
    return {{between(from.x, to.x), between(from.y, to.y), between(from.width, to.width),
             between(from.height, to.height)},
            between(begin.alpha, animation.alpha)};
}

} // namespace corvane
