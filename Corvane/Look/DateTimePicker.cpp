// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/DateTimePicker.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/CalendarPopup.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/DateTimeEdit.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"

#include <QPushButton>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace corvane::look {

DateTimePicker::DateTimePicker(const QString &label, const QString &format, QWidget *parent)
    : QWidget(parent)
    , m_edit(new DateTimeEdit(format, this))
    , m_calendarButton(pushButton({}, Role::bordered, u"calendar"_s))
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_edit->setAccessibleName(label);
    const QString purpose = u"Choose a day for %1"_s.arg(label);
    m_calendarButton->setAccessibleName(purpose);
    m_calendarButton->setToolTip(purpose);
    setAccessibleRole(*m_calendarButton, QAccessible::Button);
    setLayout(row(space::tight, {m_edit, m_calendarButton}));
    setFocusProxy(m_edit);
    connect(m_edit, &QDateTimeEdit::dateTimeChanged, this, &DateTimePicker::edited);
    connect(m_calendarButton, &QAbstractButton::clicked, this, &DateTimePicker::showCalendar);
}

QDateTime DateTimePicker::dateTime() const
{
    return m_edit->dateTime();
}

void DateTimePicker::setDateTime(const QDateTime &dateTime)
{
    const QSignalBlocker blocker(m_edit);
    m_edit->setDateTime(dateTime.toLocalTime());
}

void DateTimePicker::showCalendar()
{
    if (m_popup && m_popup->isVisible()) {
        return;
    }
    m_popup = new CalendarPopup(m_calendarButton->accessibleName(), m_edit->date(), this);
    connect(m_popup, &CalendarPopup::chosen, m_edit, &QDateTimeEdit::setDate);
    m_popup->popUp(*m_calendarButton);
}

} // namespace corvane::look
