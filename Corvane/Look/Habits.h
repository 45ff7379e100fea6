// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

#include <functional>
#include <utility>

namespace corvane::look {

/// What the toolkit's controls do here otherwise than elsewhere: Enter presses a button that has the
/// keyboard, Escape empties a search, the wheel scrolls the page and never chooses or steps, and what is
/// written small follows the desktop's font.
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
    /// Before the window of a picker's list is shown for the first time: later it cannot become transparent.
    void prepareListWindow(QObject *child) const;

    std::function<bool()> m_isComposited;
};

} // namespace corvane::look
