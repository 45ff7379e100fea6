// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTime>
#include <QPointer>
#include <QWidget>

class QPushButton;

namespace corvane::look {

class CalendarPopup;
class DateTimeEdit;

/// A day and a time of day: typed, stepped with the arrow keys or the stepper, or the day chosen from a
/// calendar.
class DateTimePicker final : public QWidget {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader; `format` is a display format of the toolkit, in the locale of
    /// `parent`.
    DateTimePicker(const QString &label, const QString &format, QWidget *parent = nullptr);

    [[nodiscard]] QDateTime dateTime() const;

    /// Shows `dateTime` in the machine's time zone. Does not emit edited().
    void setDateTime(const QDateTime &dateTime);

Q_SIGNALS:
    /// The user chose another moment.
    void edited(const QDateTime &dateTime);

private:
    void showCalendar();

    DateTimeEdit *m_edit;
    QPushButton *m_calendarButton;
    QPointer<CalendarPopup> m_popup;
};

} // namespace corvane::look
