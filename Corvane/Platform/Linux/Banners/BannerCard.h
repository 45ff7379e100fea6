// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/BannerPanels.h"
#include "Corvane/Platform/Linux/Banners/BannerPanelMotion.h"
#include "Corvane/Platform/Linux/Banners/CardShape.h"

#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace corvane {

/// One banner as a widget, whatever window system shows it: the card with its content, the shadow about it,
/// and their animation. Each window system derives its own kind of window from it.
///
/// The widget's size never changes; while it is animated it paints a picture of its content, smaller and
/// paler, and at rest it shows the content itself. Where windows may be partly transparent it is as much
/// larger than the card as the shadow reaches; else it is as large as the card and throws no shadow.
class BannerCard : public QWidget {
    Q_OBJECT

public:
    struct Setting {
        Rect frame;
        CardShape shape;
        bool isComposited = true; ///< whether windows that are partly transparent look so
        bool isLocked = false;
    };

    ~BannerCard() override;

    /// Hands over what the card shows, of the size of the frame; once, before the card is shown.
    void setContent(std::unique_ptr<QWidget> content);

    /// The card as drawn now, in points with y upwards.
    [[nodiscard]] Rect frame() const { return m_drawn.frame; }

    void setFrame(Rect frame);
    void setAlpha(double alpha);
    void orderFront();
    void animate(const BannerPanelAnimation &animation, std::function<void()> completion);

    /// Ends everything and takes the banner off the screen; it is deleted on a later turn of the event loop,
    /// since the call may come from a click on it.
    void finish();

    /// While the session is locked the window is unmapped, since it would cover the lock screen; everything
    /// else goes on.
    void setSessionLocked(bool isLocked);

    /// Whether the animations that begin from now on take their time; else they are over at once.
    void setMoves(bool moves) { m_moves = moves; }

protected:
    BannerCard(const Setting &setting, Qt::WindowFlags flags);

    /// Puts the window where the card as drawn now wants it. Called by the derived class once it is made, and
    /// here from then on.
    void place();

    /// The rectangle in the window system's own points, y downwards.
    [[nodiscard]] virtual QRectF onDesktop(const Rect &points) const = 0;
    /// Moves the window so that its upper left corner is at `corner`; the card's middle is then at `centre`.
    virtual void moveWindow(QPoint corner, QPoint centre) = 0;
    /// How many pixels a point has, each way.
    [[nodiscard]] virtual double drawingRatio() const = 0;
    /// Maps or unmaps the window. Called again while it is shown to have it above all others.
    virtual void setOnScreen(bool isOnScreen) = 0;
    /// What is drawn has changed.
    virtual void drawn() = 0;

    [[nodiscard]] const BannerPanelMotion::Moment &drawnMoment() const { return m_drawn; }
    [[nodiscard]] const CardShape &shape() const { return m_shape; }
    [[nodiscard]] QSize cardSize() const { return m_cardSize; }
    [[nodiscard]] bool isComposited() const { return m_isComposited; }
    [[nodiscard]] bool isAtRest() const;
    [[nodiscard]] int margin() const { return m_isComposited ? m_shape.margin() : 0; }
    /// The card as drawn now, and at rest, within the widget.
    [[nodiscard]] QRectF cardRect() const;
    [[nodiscard]] QRect restingCard() const { return {QPoint(margin(), margin()), m_cardSize}; }

    void paintEvent(QPaintEvent *event) override;

private:
    void draw(const BannerPanelMotion::Moment &moment);
    void drawShadow(QPainter &painter);
    void updateVisibility();
    [[nodiscard]] QPixmap takePicture();
    static QCoro::Task<void> run(QPointer<BannerCard> card, std::uint64_t number, BannerPanelMotion motion,
                                 std::function<void()> completion);

    CardShape m_shape;
    bool m_isComposited;
    bool m_isLocked;
    bool m_moves = true;
    bool m_isOrdered = false; ///< on the screen, were the session not locked
    QSize m_cardSize;
    std::optional<QPoint> m_corner; ///< of the window on the desktop, once it is placed
    QWidget *m_content = nullptr;
    QPixmap m_shadow;
    QPixmap m_picture; ///< of the whole window at full size; made for an animation, dropped at rest
    BannerPanelMotion::Moment m_drawn;
    std::uint64_t m_animation = 0; ///< tells the running animation from those it replaced
};

} // namespace corvane
