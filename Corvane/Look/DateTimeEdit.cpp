// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/DateTimeEdit.h"

#include <QFontMetrics>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionSpinBox>

#include <algorithm>
#include <optional>

namespace corvane::look {

namespace {

/// `moment`, `steps` units of `section` later; nothing if `section` is not a unit of time.
std::optional<QDateTime> stepped(const QDateTime &moment, QDateTimeEdit::Section section, int steps)
{
    switch (section) {
    case QDateTimeEdit::MSecSection:
        return moment.addMSecs(steps);
    case QDateTimeEdit::SecondSection:
        return moment.addSecs(steps);
    case QDateTimeEdit::MinuteSection:
        return moment.addSecs(steps * 60LL);
    case QDateTimeEdit::HourSection:
        return moment.addSecs(steps * 3600LL);
    case QDateTimeEdit::AmPmSection:
        return moment.addSecs(steps * 43200LL);
    case QDateTimeEdit::DaySection:
        return moment.addDays(steps);
    case QDateTimeEdit::MonthSection:
        return moment.addMonths(steps);
    case QDateTimeEdit::YearSection:
        return moment.addYears(steps);
    default:
        return std::nullopt;
    }
}

} // namespace

DateTimeEdit::DateTimeEdit(const QString &format, QWidget *parent) : QDateTimeEdit(parent)
{
    // Before the format is set; otherwise a right-to-left desktop would reverse "21 Nov".
    setLayoutDirection(locale().textDirection());
    setDisplayFormat(format);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCurrentSection(QDateTimeEdit::HourSection);
    lineEdit()->installEventFilter(this);
}

void DateTimeEdit::stepBy(int steps)
{
    const Section section = currentSection();
    if (const std::optional<QDateTime> moment = stepped(dateTime(), section, steps)) {
        setDateTime(*moment);
        setSelectedSection(section);
    } else {
        QDateTimeEdit::stepBy(steps);
    }
}

QSize DateTimeEdit::sizeHint() const
{
    // Finds the widest month, in the morning and in the afternoon, with wide numbers.
    const QFontMetrics metrics(font());
    int widest = 0;
    for (int month = 1; month <= 12; ++month) {
        for (const int hour : {10, 22}) {
            const QDateTime moment(QDate(2028, month, 28), QTime(hour, 58));
            widest = std::max(widest, metrics.horizontalAdvance(textFromDateTime(moment)));
        }
    }
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    // Room for the cursor and for an extra digit while typing.
    const QSize text(widest + metrics.averageCharWidth() * 2, metrics.height());
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, text, this);
}

bool DateTimeEdit::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
        // Queued until the toolkit has handled the release: it puts the cursor between two digits, where no
        // other digit fits, and would copy to the clipboard what is selected by then.
        QMetaObject::invokeMethod(this, &DateTimeEdit::selectClickedSection, Qt::QueuedConnection);
    }
    return QDateTimeEdit::eventFilter(watched, event);
}

void DateTimeEdit::selectClickedSection()
{
    if (!lineEdit()->hasSelectedText()) { // by dragging, or by a double click
        setSelectedSection(currentSection());
    }
}

} // namespace corvane::look
