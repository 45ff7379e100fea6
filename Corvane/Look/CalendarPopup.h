// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDate>
#include <QFrame>

class QCalendarWidget;

namespace corvane::look {

/// A calendar popup to choose a day from. It closes when a day is chosen, on Escape, and on a click outside,
/// and deletes itself then.
class CalendarPopup final : public QFrame {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader; `day` is selected at first.
    CalendarPopup(const QString &label, QDate day, QWidget *parent);

    /// Opens below `anchor`, or above it where the screen has no room below, and always within the screen.
    void popUp(const QWidget &anchor);

Q_SIGNALS:
    void chosen(QDate day);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QCalendarWidget *m_days;
};

} // namespace corvane::look
