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

/// One banner as a widget, for any window system: the card with its content, its shadow, and their animation.
/// Each window system derives its own kind of window.
///
/// The widget's size is fixed. During an animation it paints a scaled and faded picture of its content; at
/// rest it shows the content itself. If windows can be translucent, the widget is larger than the card by the
/// shadow's margin; otherwise it has the card's size and no shadow.
class BannerCard : public QWidget {
    Q_OBJECT

public:
    struct Setting {
        Rect frame;
        CardShape shape;
        bool isComposited = true; ///< whether windows can be translucent
        bool isLocked = false;
    };

    ~BannerCard() override;

    /// Sets the card's content, which has the frame's size. Called once, before the card is shown.
    void setContent(std::unique_ptr<QWidget> content);

    /// The card as currently drawn, in points, y upwards.
    [[nodiscard]] Rect frame() const { return m_drawn.frame; }

    void setFrame(Rect frame);
    void setAlpha(double alpha);
    void orderFront();
    void animate(const BannerPanelAnimation &animation, std::function<void()> completion);

    /// Stops the animation and takes the banner off the screen. The object is deleted on a later turn of the
    /// event loop, because the call may come from a click on it.
    void finish();

    /// Unmaps the window while the session is locked, because it would cover the lock screen. Everything else
    /// goes on.
    void setSessionLocked(bool isLocked);

    /// If false, animations that start from now on have no duration.
    void setMoves(bool moves) { m_moves = moves; }

protected:
    BannerCard(const Setting &setting, Qt::WindowFlags flags);

    /// Puts the window where the card as currently drawn belongs. The derived class calls it once it is
    /// constructed; from then on this class does.
    void place();

    /// The rectangle in the window system's points, y downwards.
    [[nodiscard]] virtual QRectF onDesktop(const Rect &points) const = 0;
    /// Moves the window's upper left corner to `corner`; `centre` is then the card's centre.
    virtual void moveWindow(QPoint corner, QPoint centre) = 0;
    /// Pixels per point.
    [[nodiscard]] virtual double drawingRatio() const = 0;
    /// Maps or unmaps the window. Called while it is already mapped to raise it above all others.
    virtual void setOnScreen(bool isOnScreen) = 0;
    /// Called after what is drawn has changed.
    virtual void drawn() = 0;

    [[nodiscard]] const BannerPanelMotion::Moment &drawnMoment() const { return m_drawn; }
    [[nodiscard]] const CardShape &shape() const { return m_shape; }
    [[nodiscard]] QSize cardSize() const { return m_cardSize; }
    [[nodiscard]] bool isComposited() const { return m_isComposited; }
    [[nodiscard]] bool isAtRest() const;
    [[nodiscard]] int margin() const { return m_isComposited ? m_shape.margin() : 0; }
    /// The card within the widget: as currently drawn, and at rest.
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
    bool m_isOrdered = false; ///< whether it is on the screen while the session is not locked
    QSize m_cardSize;
    std::optional<QPoint> m_corner; ///< of the window on the desktop, once placed
    QWidget *m_content = nullptr;
    QPixmap m_shadow;
    QPixmap m_picture; ///< of the whole window at full size; exists during animations only
    BannerPanelMotion::Moment m_drawn;
    std::uint64_t m_animation = 0; ///< number of the current animation; older ones end when it has changed
};

} // namespace corvane
