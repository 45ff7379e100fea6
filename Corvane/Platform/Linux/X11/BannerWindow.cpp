// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/BannerWindow.h"

#include "Corvane/Platform/Linux/X11/DesktopGeometry.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "Corvane/Utilities/Spawn.h"

#include <xcb/shape.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace corvane {

BannerWindow::BannerWindow(Rect frame, const CardShape &shape, bool isComposited, bool isLocked)
    : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint |
                           Qt::WindowDoesNotAcceptFocus)
    , m_shape(shape)
    , m_isComposited(isComposited)
    , m_isLocked(isLocked)
    , m_cardSize(static_cast<int>(std::lround(frame.width)), static_cast<int>(std::lround(frame.height)))
    , m_drawn{.frame = frame, .alpha = 1}
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips); // the program is never the active one when a banner is up
    if (m_isComposited) {
        setAttribute(Qt::WA_TranslucentBackground);
    } else {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }
    place();
    setFixedSize(m_cardSize + 2 * QSize(margin(), margin()));
}

BannerWindow::~BannerWindow() = default;

void BannerWindow::setContent(std::unique_ptr<QWidget> content)
{
    m_content = content.release();
    m_content->setParent(this);
    m_content->move(margin(), margin());
    m_content->show();
}

void BannerWindow::setFrame(Rect frame)
{
    ++m_animation;
    draw({frame, m_drawn.alpha});
}

void BannerWindow::setAlpha(double alpha)
{
    ++m_animation;
    draw({m_drawn.frame, alpha});
}

void BannerWindow::orderFront()
{
    m_isOrdered = true;
    updateVisibility();
}

void BannerWindow::animate(const PanelAnimation &animation, std::function<void()> completion)
{
    // The task ends by itself with the animation or at its first frame after it is replaced or the window
    // gone.
    spawn(run(this, ++m_animation, {.begin = m_drawn, .animation = animation}, std::move(completion)));
}

QCoro::Task<void> BannerWindow::run(QPointer<BannerWindow> window, std::uint64_t number, PanelMotion motion,
                                    std::function<void()> completion)
{
    constexpr Seconds frameTime{1.0 / 60};
    const Seconds begin = uptime();
    Seconds elapsed{};
    do {
        co_await wait(std::min(frameTime, std::max(motion.animation.duration - elapsed, Seconds::zero())));
        if (!window || window->m_animation != number) {
            co_return;
        }
        elapsed = uptime() - begin;
        window->draw(motion.at(elapsed));
    } while (!motion.isOver(elapsed));
    if (completion) {
        completion();
    }
}

void BannerWindow::finish()
{
    ++m_animation;
    m_isOrdered = false;
    updateVisibility();
    deleteLater();
}

void BannerWindow::setSessionLocked(bool isLocked)
{
    m_isLocked = isLocked;
    updateVisibility();
}

void BannerWindow::updateVisibility()
{
    const bool isWanted = m_isOrdered && !m_isLocked;
    if (!isWanted) {
        hide();
        return;
    }
    if (!isVisible()) {
        show();
        updateShape();
    }
    if (x11::connection() != nullptr) {
        raise(); // a window that is mapped again stands where it stood before
    }
}

bool BannerWindow::isAtRest() const
{
    return m_drawn.alpha >= 1 && std::lround(m_drawn.frame.width) == m_cardSize.width() &&
           std::lround(m_drawn.frame.height) == m_cardSize.height();
}

void BannerWindow::place()
{
    // The frame grows and shrinks about its centre; only where that moves does the window.
    const QPointF centre = desktopRect(m_drawn.frame).center();
    const QPoint corner(static_cast<int>(std::lround(centre.x() - m_cardSize.width() / 2.0)) - margin(),
                        static_cast<int>(std::lround(centre.y() - m_cardSize.height() / 2.0)) - margin());
    if (corner == pos() && testAttribute(Qt::WA_Moved)) {
        return;
    }
    if (QScreen *screen = QGuiApplication::screenAt(centre.toPoint())) {
        setScreen(screen);
    }
    move(corner);
}

QRectF BannerWindow::cardRect() const
{
    if (isAtRest()) {
        return QRectF(QPointF(margin(), margin()), QSizeF(m_cardSize));
    }
    return desktopRect(m_drawn.frame).translated(-pos());
}

void BannerWindow::draw(const PanelMotion::Moment &moment)
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
            const double ratio = devicePixelRatioF();
            m_picture = QPixmap((QSizeF(size()) * ratio).toSize());
            m_picture.setDevicePixelRatio(ratio);
            m_picture.fill(m_isComposited ? Qt::transparent : Qt::black);
            QPainter painter(&m_picture);
            drawShadow(painter);
            painter.drawPixmap(margin(), margin(), m_content->grab());
        }
        m_content->hide();
    }
    if (!m_isComposited) {
        updateShape();
    }
    update();
}

void BannerWindow::drawShadow(QPainter &painter)
{
    if (!m_isComposited) {
        return;
    }
    const double ratio = devicePixelRatioF();
    if (m_shadow.isNull() || m_shadow.devicePixelRatio() != ratio) {
        m_shadow = QPixmap::fromImage(cardShadow(m_shape, m_cardSize, ratio));
    }
    painter.drawPixmap(0, 0, m_shadow);
}

void BannerWindow::paintEvent(QPaintEvent *)
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

void BannerWindow::updateShape()
{
    xcb_connection_t *server = x11::connection();
    // Qt makes the X window anew while it shows it: the id that counts is that of the shown one.
    if (server == nullptr || !isVisible() || windowHandle() == nullptr) {
        return;
    }
    // Under a compositing manager only clicks are cut to the card; they are to the card at rest, so that it
    // can be pressed while it still grows. Else the window is, and nothing is left of it where it is
    // invisible.
    const double ratio = devicePixelRatioF();
    const QRectF card = m_isComposited ? QRectF(QPointF(margin(), margin()), QSizeF(m_cardSize)) : cardRect();
    std::vector<xcb_rectangle_t> rectangles;
    if (m_isComposited || m_drawn.alpha > 0) {
        for (const QRect &row :
             roundedRows(QRectF(card.topLeft() * ratio, card.size() * ratio), m_shape.cornerRadius * ratio)) {
            rectangles.push_back({static_cast<std::int16_t>(row.x()), static_cast<std::int16_t>(row.y()),
                                  static_cast<std::uint16_t>(row.width()),
                                  static_cast<std::uint16_t>(row.height())});
        }
    }
    xcb_shape_rectangles(server, XCB_SHAPE_SO_SET,
                         m_isComposited ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_UNSORTED, static_cast<xcb_window_t>(windowHandle()->winId()), 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
    xcb_flush(server);
}

} // namespace corvane
