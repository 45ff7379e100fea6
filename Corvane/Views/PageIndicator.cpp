// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/PageIndicator.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Views/SetupStep.h"

#include <QPainter>
#include <QStyle>

namespace corvane {

using namespace look;

PageIndicator::PageIndicator(int count, QWidget *parent) : QLabel(parent), m_count(count)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setPage(0);
}

void PageIndicator::setPage(int page)
{
    Q_ASSERT(page >= 0 && page < m_count);
    if (page != m_page) {
        m_page = page;
        setAccessibleName(pageText(page, m_count));
        update();
    }
}

QSize PageIndicator::sizeHint() const
{
    return {setup::currentCapsuleWidth + (m_count - 1) * (setup::capsuleWidth + setup::capsuleSpacing),
            setup::capsuleHeight};
}

void PageIndicator::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    constexpr double radius = setup::capsuleHeight / 2.0;
    int left = 0;
    for (int page = 0; page < m_count; ++page) {
        const bool isCurrent = page == m_page;
        const QRect capsule(left, 0, isCurrent ? setup::currentCapsuleWidth : setup::capsuleWidth,
                            setup::capsuleHeight);
        painter.setBrush(isCurrent ? color(Ink::accent, palette())
                                   : color(Ink::secondary, palette(), setup::capsuleOpacity));
        painter.drawRoundedRect(QStyle::visualRect(layoutDirection(), rect(), capsule), radius, radius);
        left += capsule.width() + setup::capsuleSpacing;
    }
}

} // namespace corvane
