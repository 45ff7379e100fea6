// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <functional>
#include <utility>

namespace corvane::look {

/// How the toolkit's controls behave differently here: Enter presses the focused button, Escape clears a
/// search field, the wheel scrolls the page and never changes a value, and small text follows the desktop's
/// font.
class Habits final : public QObject {
    Q_OBJECT

public:
    Habits(std::function<bool()> isComposited, QObject *parent)
        : QObject(parent)
        , m_isComposited(std::move(isComposited))
    {
    }

    void adopt(QWidget &control);
    void release(QWidget &control) { control.removeEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Called before a picker's list window is first shown: it cannot become translucent later.
    void prepareListWindow(QObject *child) const;

    std::function<bool()> m_isComposited;
};

} // namespace corvane::look
