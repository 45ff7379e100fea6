// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Views/MenuBarPanelPlacement.h"

#include <QScrollArea>
#include <QWidget>

#include <functional>
#include <memory>

namespace corvane {

/// The window of the menu bar panel, around a content that has its own width and height. It follows its
/// content's size, and lets it scroll where the screen is too small for it.
class MenuBarPanelWindow final : public QWidget {
    Q_OBJECT

public:
    enum class Kind {
        card,           ///< a card without a frame, placed by the program
        compositedCard, ///< the same with round corners and a shadow, which take partly transparent windows
        window          ///< an ordinary window, placed by the desktop
    };

    /// Tells where a card of a size belongs.
    using Placing = std::function<MenuBarPanelPlacement(Size)>;

    /// `place` is asked whenever the size has changed; not for an ordinary window.
    MenuBarPanelWindow(Kind kind, std::unique_ptr<QWidget> content, Placing place);

    /// Sizes the window to its content, and places it.
    void fit();

    /// Part of the window, at its left, top, right and bottom, is shadow; a click there is not on the menu
    /// bar panel.
    [[nodiscard]] QMargins shadowMargins() const { return m_shadow; }

Q_SIGNALS:
    /// Escape was pressed, the shadow was clicked, or the window closed by the desktop.
    void dismissed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    [[nodiscard]] QRectF card() const;
    void placeCard(const MenuBarPanelPlacement &placement);

    Kind m_kind;
    Placing m_place;
    QScrollArea *m_scroll;
    QWidget *m_content;
    QMargins m_shadow;
    bool m_isFitting = false;
};

} // namespace corvane
