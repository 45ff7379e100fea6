// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Views/MenuBarPanelPlacement.h"

#include <QScrollArea>
#include <QWidget>

#include <functional>
#include <memory>

namespace corvane {

/// The window of the menu bar panel. It follows the size of its content, and scrolls it if the screen is too
/// small.
class MenuBarPanelWindow final : public QWidget {
    Q_OBJECT

public:
    enum class Kind {
        card,           ///< a frameless card, placed by the program
        compositedCard, ///< the same with antialiased corners and a shadow; needs translucent windows
        window          ///< an ordinary window, placed by the desktop
    };

    /// Returns the placement for a card of this size.
    using Placing = std::function<MenuBarPanelPlacement(Size)>;

    /// `place` is called after each change of size; not for an ordinary window.
    MenuBarPanelWindow(Kind kind, std::unique_ptr<QWidget> content, Placing place);

    /// Resizes the window to its content and places it.
    void fit();

    /// The part of the window that is only shadow; a click there is outside the menu bar panel.
    [[nodiscard]] QMargins shadowMargins() const { return m_shadow; }

Q_SIGNALS:
    /// Escape was pressed, the shadow was clicked, or the desktop closed the window.
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
