// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Balance.h"

#include <QFont>
#include <QFontMetrics>
#include <QString>
#include <QWidget>

namespace corvane::look {

int balancedWidth(const QString &text, const QFont &font, int width)
{
    const QFontMetrics metrics(font);
    const auto area = [&](int room) {
        return metrics.boundingRect(0, 0, room, QWIDGETSIZE_MAX, Qt::TextWordWrap, text);
    };
    const int height = area(width).height();
    int low = 1;
    int high = width;
    while (low < high) {
        const int middle = (low + high) / 2;
        const QRect taken = area(middle);
        if (taken.height() <= height && taken.width() <= middle) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return high;
}

} // namespace corvane::look
