// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTime>
#include <QPointer>
#include <QWidget>

class QCalendarWidget;
class QDateTimeEdit;

namespace corvane::look {

class Button;

/// A day and a time of day: typed, stepped with the arrow keys or the two arrows, or the day clicked in a
/// calendar. A step goes on into the next larger unit: a minute after 10:59 it is 11:00. The wheel scrolls
/// the page that it stands on and never steps.
class DateTimePicker final : public QWidget {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader, `format` a display format of Qt's, in the locale of `parent`.
    DateTimePicker(const QString &label, const QString &format, QWidget *parent = nullptr);

    [[nodiscard]] QDateTime dateTime() const;

    /// Shows `dateTime`, in the time zone of the machine. edited() is not emitted.
    void setDateTime(const QDateTime &dateTime);

Q_SIGNALS:
    /// The user chose another moment.
    void edited(const QDateTime &dateTime);

private:
    void showCalendar();

    QDateTimeEdit *m_edit;
    Button *m_calendarButton;
    QPointer<QWidget> m_popup;
};

} // namespace corvane::look
