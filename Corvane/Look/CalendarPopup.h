// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDate>
#include <QFrame>

class QCalendarWidget;

namespace corvane::look {

/// A calendar that comes up to choose a day from. Closes when a day is chosen, with Escape, and when
/// something beside it is clicked; is destroyed then.
class CalendarPopup final : public QFrame {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader; `day` is chosen at first.
    CalendarPopup(const QString &label, QDate day, QWidget *parent);

    /// Comes up for `anchor`: below it, or above where the screen ends, and never beside the screen.
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
