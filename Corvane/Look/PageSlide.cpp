// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/PageSlide.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Motion.h"

#include <QPainter>
#include <QPixmap>
#include <QVariantAnimation>
#include <QWidget>

#include <utility>

namespace corvane::look {

namespace {

/// Pictures of both pages, drawn over the area, which already shows the second.
class PageSlide final : public QWidget {
public:
    PageSlide(QWidget &area, QPixmap before, QPixmap after, bool isLeftwards, int duration)
        : QWidget(&area)
        , m_before(std::move(before))
        , m_after(std::move(after))
        , m_distance(isLeftwards ? setup::slideDistance : -setup::slideDistance)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(area.size());
        m_progress.setStartValue(0.0);
        m_progress.setEndValue(1.0);
        m_progress.setDuration(duration);
        m_progress.setEasingCurve(QEasingCurve::OutCubic);
        connect(&m_progress, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
        connect(&m_progress, &QVariantAnimation::finished, this, [this] {
            hide();
            deleteLater();
        });
        m_progress.start();
        show();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const double progress = m_progress.currentValue().toDouble();
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.fillRect(rect(), palette().window());
        painter.setOpacity(1 - progress);
        painter.drawPixmap(QPointF(-progress * m_distance, 0), m_before);
        painter.setOpacity(progress);
        painter.drawPixmap(QPointF((1 - progress) * m_distance, 0), m_after);
    }

private:
    QPixmap m_before;
    QPixmap m_after;
    int m_distance;
    QVariantAnimation m_progress;
};

} // namespace

void slidePage(QWidget &area, bool isForward, const std::function<void()> &change)
{
    for (QWidget *earlier : area.findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (dynamic_cast<PageSlide *>(earlier) != nullptr) {
            delete earlier;
        }
    }
    const int duration = motionDuration(area, setup::slideDuration);
    if (duration == 0) {
        change();
        return;
    }
    const QPixmap before = area.grab();
    change();
    new PageSlide(area, before, area.grab(), isForward == area.isLeftToRight(), duration);
}

} // namespace corvane::look
