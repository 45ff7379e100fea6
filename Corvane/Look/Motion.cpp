// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Motion.h"

#include <QStyle>
#include <QWidget>

namespace corvane::look {

int motionDuration(const QWidget &widget, int wanted)
{
    const bool moves = widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget) > 0;
    return moves && widget.isVisible() ? wanted : 0;
}

} // namespace corvane::look
