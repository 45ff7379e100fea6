// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace corvane::look {

/// A highlight behind something new, which fades and then deletes itself.
class Glow final : public QWidget {
    Q_OBJECT

public:
    /// Highlights `target`. `ground` is an ancestor of `target` that paints the background. Does nothing if
    /// nobody sees it or the desktop wants no motion.
    static void behind(QWidget &target, QWidget &ground);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Glow(QWidget &target, QWidget &ground, int duration);
    void follow();

    QWidget &m_target;
    QVariantAnimation m_strength; ///< 1 to 0
};

} // namespace corvane::look
