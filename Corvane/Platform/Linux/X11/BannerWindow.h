// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"
#include "Corvane/Platform/Linux/X11/CardShape.h"
#include "Corvane/Platform/Linux/X11/PanelMotion.h"

#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>

namespace corvane {

/// The X11 window of one banner: it passes the window manager by, takes no focus, and stands on every
/// workspace above everything. Its size never changes; while it is animated it paints a picture of its
/// content, smaller and paler, and at rest it shows the content itself.
///
/// Under a compositing manager it is as much larger than the card as the shadow reaches, and clicks there
/// fall through to what lies behind. Without one it is cut to the card's shape, opaque, and throws no shadow.
class BannerWindow final : public QWidget {
    Q_OBJECT

public:
    BannerWindow(Rect frame, const CardShape &shape, bool isComposited, bool isLocked);
    ~BannerWindow() override;

    /// Hands over what the card shows, of the size of the frame; once, before the window is shown.
    void setContent(std::unique_ptr<QWidget> content);

    /// The card as drawn now, in points with y upwards.
    [[nodiscard]] Rect frame() const { return m_drawn.frame; }

    void setFrame(Rect frame);
    void setAlpha(double alpha);
    void orderFront();
    void animate(const PanelAnimation &animation, std::function<void()> completion);

    /// Ends everything and takes the window off the screen; it is deleted on a later turn of the event loop,
    /// since the call may come from a click on it.
    void finish();

    /// While the session is locked the window is unmapped, since it would cover the lock screen; everything
    /// else goes on.
    void setSessionLocked(bool isLocked);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void draw(const PanelMotion::Moment &moment);
    void drawShadow(QPainter &painter);
    void place();
    void updateVisibility();
    void updateShape();
    [[nodiscard]] bool isAtRest() const;
    [[nodiscard]] int margin() const { return m_isComposited ? m_shape.margin() : 0; }
    [[nodiscard]] QRectF cardRect() const;
    static QCoro::Task<void> run(QPointer<BannerWindow> window, std::uint64_t number, PanelMotion motion,
                                 std::function<void()> completion);

    CardShape m_shape;
    bool m_isComposited;
    bool m_isLocked;
    bool m_isOrdered = false; ///< on the screen, were the session not locked
    QSize m_cardSize;
    QWidget *m_content = nullptr;
    QPixmap m_shadow;
    QPixmap m_picture; ///< of the whole window at full size; made for an animation, dropped at rest
    PanelMotion::Moment m_drawn;
    std::uint64_t m_animation = 0; ///< tells the running animation from those it replaced
};

} // namespace corvane
