// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarPanelWindow.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"
#include "Corvane/Look/PopupPainting.h"
#include "Corvane/Views/ScreenGeometry.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {

namespace {

Qt::WindowFlags flagsOf(MenuBarPanelWindow::Kind kind)
{
    // Not a popup: under XWayland a popup is not told about clicks elsewhere.
    return kind == MenuBarPanelWindow::Kind::window
               ? Qt::WindowFlags(Qt::Window)
               : Qt::Tool | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint;
}

} // namespace

MenuBarPanelWindow::MenuBarPanelWindow(Kind kind, std::unique_ptr<QWidget> content, Placing place)
    : QWidget(nullptr, flagsOf(kind))
    , m_kind(kind)
    , m_place(std::move(place))
    , m_scroll(new QScrollArea)
    , m_content(content.release())
{
    setAttribute(Qt::WA_TranslucentBackground, kind == Kind::compositedCard);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    // The window alone paints the background, because of its rounded corners.
    m_scroll->setWidget(m_content);
    m_scroll->viewport()->setAutoFillBackground(false);
    m_content->setAutoFillBackground(false);
    m_content->installEventFilter(this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->addWidget(m_scroll);
    const auto *escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, &MenuBarPanelWindow::dismissed);
}

void MenuBarPanelWindow::fit()
{
    m_isFitting = true;
    const QSize wanted =
        m_content->sizeHint().expandedTo(m_content->minimumSize()).boundedTo(m_content->maximumSize());
    if (m_kind == Kind::window) {
        const QSize available = screen()->availableSize();
        resize(wanted.width(), std::min(wanted.height(), available.height()));
    } else {
        placeCard(m_place({double(wanted.width()), double(wanted.height())}));
    }
    m_isFitting = false;
}

void MenuBarPanelWindow::placeCard(const MenuBarPanelPlacement &placement)
{
    const Rect &frame = placement.frame;
    const Rect &visible = placement.visible;
    // The shadow stays inside the visible part: a desktop may push back a window that extends beyond it.
    const auto room = [](double free) {
        return static_cast<int>(std::floor(std::clamp<double>(free, 0, look::menuBarPanel::shadowReach)));
    };
    m_shadow = m_kind == Kind::compositedCard
                   ? QMargins(room(frame.minX() - visible.minX()), room(visible.maxY() - frame.maxY()),
                              room(visible.maxX() - frame.maxX()), room(frame.minY() - visible.minY()))
                   : QMargins();
    layout()->setContentsMargins(m_shadow);
    const QRect card = pointsDown(frame);
    const QRect area = card.marginsAdded(m_shadow);
    if (QGuiApplication::platformName().startsWith(u"wayland")) {
        setFixedSize(area.size()); // a tiling compositor would give a resizable window all available space
    }
    setGeometry(area);
    if (m_kind == Kind::card) {
        setMask(look::roundedRegion(card.size(), look::menuBarPanel::cornerRadius));
    }
    update();
}

QRectF MenuBarPanelWindow::card() const
{
    return QRectF(rect().marginsRemoved(m_shadow));
}

bool MenuBarPanelWindow::eventFilter(QObject *watched, QEvent *event)
{
    // The content changes its size while shown: an error line appears, the list gets longer.
    if (watched == m_content && event->type() == QEvent::LayoutRequest && !m_isFitting && isVisible()) {
        QMetaObject::invokeMethod(this, &MenuBarPanelWindow::fit, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

void MenuBarPanelWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_kind == Kind::window) {
        painter.fillRect(rect(), palette().window());
        return;
    }
    const QRectF card = this->card();
    constexpr double radius = look::menuBarPanel::cornerRadius;
    if (m_kind == Kind::compositedCard) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        look::paintShadow(painter, card, radius,
                          {.reach = look::menuBarPanel::shadowReach,
                           .rise = look::menuBarPanel::shadowRise,
                           .opacity = look::menuBarPanel::shadowOpacity});
    }
    // The edge is a translucent text colour, so that it is visible on dark and light desktops.
    QColor edge = palette().color(QPalette::WindowText);
    edge.setAlphaF(look::menuBarPanel::edgeOpacity);
    look::fillRounded(painter, card, radius, palette().color(QPalette::Window));
    look::strokeRounded(painter, card, radius, edge);
}

void MenuBarPanelWindow::mousePressEvent(QMouseEvent *event)
{
    if (!card().contains(event->position())) {
        Q_EMIT dismissed();
    }
}

void MenuBarPanelWindow::closeEvent(QCloseEvent *event)
{
    event->accept();
    Q_EMIT dismissed();
}

} // namespace corvane
