// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Banners/BannerCard.h"

#include "Corvane/Utilities/Spawn.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {

BannerCard::BannerCard(const Setting &setting, Qt::WindowFlags flags)
    : QWidget(nullptr, flags)
    , m_shape(setting.shape)
    , m_isComposited(setting.isComposited)
    , m_isLocked(setting.isLocked)
    , m_cardSize(static_cast<int>(std::lround(setting.frame.width)),
                 static_cast<int>(std::lround(setting.frame.height)))
    , m_drawn{.frame = setting.frame, .alpha = 1}
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAccessibleName(QStringLiteral("Quillet reminder"));
    if (m_isComposited) {
        setAttribute(Qt::WA_TranslucentBackground);
    } else {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }
    setFixedSize(m_cardSize + 2 * QSize(margin(), margin()));
}

BannerCard::~BannerCard() = default;

void BannerCard::setContent(std::unique_ptr<QWidget> content)
{
    m_content = content.release();
    m_content->setParent(this);
    m_content->move(margin(), margin());
    m_content->show();
}

void BannerCard::setFrame(Rect frame)
{
    ++m_animation;
    draw({frame, m_drawn.alpha});
}

void BannerCard::setAlpha(double alpha)
{
    ++m_animation;
    draw({m_drawn.frame, alpha});
}

void BannerCard::orderFront()
{
    m_isOrdered = true;
    updateVisibility();
}

void BannerCard::animate(const BannerPanelAnimation &animation, std::function<void()> completion)
{
    // The task ends with the animation, or at its next frame once the animation is replaced or the card is
    // gone.
    BannerPanelMotion motion{.begin = m_drawn, .animation = animation};
    if (!m_moves) {
        motion.animation.duration = Seconds::zero();
    }
    spawn(run(this, ++m_animation, motion, std::move(completion)));
}

QCoro::Task<void> BannerCard::run(QPointer<BannerCard> card, std::uint64_t number, BannerPanelMotion motion,
                                  std::function<void()> completion)
{
    constexpr Seconds frameTime{1.0 / 60};
    const Seconds begin = uptime();
    Seconds elapsed{};
    do {
        co_await wait(std::min(frameTime, std::max(motion.animation.duration - elapsed, Seconds::zero())));
        if (!card || card->m_animation != number) {
            co_return;
        }
        elapsed = uptime() - begin;
        card->draw(motion.at(elapsed));
    } while (!motion.isOver(elapsed));
    if (completion) {
        completion();
    }
}

void BannerCard::finish()
{
    ++m_animation;
    m_isOrdered = false;
    updateVisibility();
    deleteLater();
}

void BannerCard::setSessionLocked(bool isLocked)
{
    m_isLocked = isLocked;
    updateVisibility();
}

void BannerCard::updateVisibility()
{
    setOnScreen(m_isOrdered && !m_isLocked);
}

bool BannerCard::isAtRest() const
{
    return m_drawn.alpha >= 1 && std::lround(m_drawn.frame.width) == m_cardSize.width() &&
           std::lround(m_drawn.frame.height) == m_cardSize.height();
}

void BannerCard::place()
{
    // The frame grows and shrinks about its centre, so the window moves only when the centre does.
    const QPointF centre = onDesktop(m_drawn.frame).center();
    const QPoint corner(static_cast<int>(std::lround(centre.x() - m_cardSize.width() / 2.0)) - margin(),
                        static_cast<int>(std::lround(centre.y() - m_cardSize.height() / 2.0)) - margin());
    if (corner != m_corner) {
        m_corner = corner;
        moveWindow(corner, centre.toPoint());
    }
}

QRectF BannerCard::cardRect() const
{
    return isAtRest() ? QRectF(restingCard())
                      : onDesktop(m_drawn.frame).translated(-m_corner.value_or(QPoint()));
}

void BannerCard::draw(const BannerPanelMotion::Moment &moment)
{
    m_drawn = moment;
    place();
    if (m_content == nullptr) {
        return;
    }
    if (isAtRest()) {
        m_picture = {};
        m_content->show();
    } else {
        if (m_picture.isNull()) {
            m_picture = takePicture();
        }
        m_content->hide();
    }
    drawn();
}

QPixmap BannerCard::takePicture()
{
    const double ratio = drawingRatio();
    QPixmap picture((QSizeF(size()) * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(m_isComposited ? Qt::transparent : Qt::black);
    QPainter painter(&picture);
    drawShadow(painter);
    m_content->render(&painter, QPoint(margin(), margin()), {}, QWidget::DrawChildren);
    return picture;
}

void BannerCard::drawShadow(QPainter &painter)
{
    if (!m_isComposited) {
        return;
    }
    const double ratio = drawingRatio();
    if (m_shadow.isNull() || m_shadow.devicePixelRatio() != ratio) {
        m_shadow = QPixmap::fromImage(cardShadow(m_shape, m_cardSize, ratio));
    }
    painter.drawPixmap(0, 0, m_shadow);
}

void BannerCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!m_isComposited) {
        painter.fillRect(rect(), Qt::black);
    }
    if (isAtRest()) {
        drawShadow(painter);
        return;
    }
    const QRectF card = cardRect();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setOpacity(m_isComposited ? std::clamp(m_drawn.alpha, 0.0, 1.0) : 1);
    painter.translate(card.topLeft());
    painter.scale(card.width() / m_cardSize.width(), card.height() / m_cardSize.height());
    painter.drawPixmap(-margin(), -margin(), m_picture);
}

} // namespace corvane
