// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/CalendarPopup.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Painting.h"
#include "Corvane/Look/PopupPainting.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Style.h"
#include "Corvane/Look/Symbols.h"
#include "Corvane/Utilities/DateText.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QTextCharFormat>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace corvane::look {

namespace {

bool isComposited()
{
    const auto *style = qobject_cast<const Style *>(QApplication::style());
    return style == nullptr || style->isComposited();
}

/// The toolkit's calendar, with the chosen day on an accent disc and a ring round today.
class Days final : public QCalendarWidget {
public:
    explicit Days(const QLocale &locale)
    {
        setLocale(locale);
        setFirstDayOfWeek(locale.firstDayOfWeek());
        setVerticalHeaderFormat(NoVerticalHeader);
        setHorizontalHeaderFormat(ShortDayNames);
        nameParts();
        colour();
        // Makes the days large enough to hit easily.
        setMinimumSize(sizeHint() * control::calendarShare);
    }

protected:
    void paintCell(QPainter *painter, const QRect &cell, QDate day) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const QPalette colors = QApplication::palette();
        const double side = std::min(cell.width(), cell.height()) - 2.0;
        QRectF disc(0, 0, side, side);
        disc.moveCenter(QRectF(cell).center());
        const bool isChosen = day == selectedDate();
        const bool isToday = day == toDateTime(currentDate()).toLocalTime().date();
        if (isChosen) {
            const double inset = isToday ? todayWidth + 1 : 0; // inside today's ring
            fillRounded(*painter, disc.adjusted(inset, inset, -inset, -inset), side / 2,
                        accentGround(colors));
        }
        if (isToday) {
            strokeRounded(*painter, disc, side / 2, color(Ink::accent, colors), todayWidth);
        }
        const bool isOfMonth = day.month() == monthShown() && day.year() == yearShown();
        painter->setPen(color(isChosen    ? Ink::onAccent
                              : isOfMonth ? Ink::primary
                                          : Ink::secondary,
                              colors, isOfMonth || isChosen ? 1 : otherMonthOpacity));
        painter->drawText(cell, Qt::AlignCenter, locale().toString(day.day()));
        painter->restore();
    }

private:
    static constexpr double todayWidth = 1.5;
    static constexpr double otherMonthOpacity = 0.7;

    void colour()
    {
        const QPalette palette = QApplication::palette();
        QPalette own;
        own.setColor(QPalette::Base, fieldColor(palette));
        own.setColor(QPalette::AlternateBase, fieldColor(palette));
        setPalette(own);
        QTextCharFormat day;
        day.setForeground(color(Ink::primary, palette));
        for (int weekday = Qt::Monday; weekday <= Qt::Sunday; ++weekday) {
            setWeekdayTextFormat(static_cast<Qt::DayOfWeek>(weekday), day);
        }
        QTextCharFormat header;
        header.setForeground(color(Ink::secondary, palette));
        header.setBackground(fieldColor(palette));
        setHeaderTextFormat(header);
        if (auto *bar = findChild<QWidget *>(u"qt_calendar_navigationbar"_s)) {
            own.setColor(QPalette::Highlight, fieldColor(palette));
            own.setColor(QPalette::HighlightedText, color(Ink::primary, palette));
            bar->setPalette(own);
        }
    }

    void nameParts()
    {
        struct Part {
            const char16_t *object;
            const char16_t *symbol;
            const char16_t *name;
        };
        for (const auto &[object, symbol, name] :
             {Part{u"qt_calendar_prevmonth", u"chevron.left", u"Previous Month"},
              Part{u"qt_calendar_nextmonth", u"chevron.right", u"Next Month"},
              Part{u"qt_calendar_monthbutton", u"", u"Month"}, Part{u"qt_calendar_yearbutton", u"", u"Year"},
              Part{u"qt_calendar_yearedit", u"", u"Year"}, Part{u"qt_calendar_calendarview", u"", u"Days"}}) {
            auto *part = findChild<QWidget *>(QString::fromUtf16(object));
            if (part == nullptr) {
                continue;
            }
            part->setAccessibleName(QString::fromUtf16(name));
            if (auto *button = qobject_cast<QToolButton *>(part); button != nullptr && symbol[0] != u'\0') {
                button->setIcon(symbolIcon(QString::fromUtf16(symbol), Ink::primary));
                button->setToolTip(QString::fromUtf16(name));
            }
        }
    }
};

QPoint placeFor(const QWidget &anchor, const QSize &size, const QMargins &shadow)
{
    const QRect screen = anchor.screen()->availableGeometry();
    const QPoint top = anchor.mapToGlobal(QPoint(0, 0));
    int y = top.y() + anchor.height() + space::tight - shadow.top();
    if (y + size.height() > screen.bottom() + 1) {
        y = top.y() - space::tight - size.height() + shadow.bottom();
    }
    const int x = anchor.isLeftToRight() ? top.x() + anchor.width() - size.width() + shadow.right()
                                         : top.x() - shadow.left();
    return {std::clamp(x, screen.left(), std::max(screen.left(), screen.right() + 1 - size.width())),
            std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() + 1 - size.height()))};
}

} // namespace

CalendarPopup::CalendarPopup(const QString &label, QDate day, QWidget *parent)
    : QFrame(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint)
    , m_days(new Days(parent->locale()))
{
    setAttribute(Qt::WA_DeleteOnClose);
    // A press on the anchor closes the popup. Replayed to the anchor, it would open the popup again.
    setAttribute(Qt::WA_NoMouseReplay);
    setAttribute(Qt::WA_TranslucentBackground, isComposited());
    setAccessibleName(label);
    m_days->setAccessibleName(label);
    m_days->setSelectedDate(day);
    setLayout(padded(popupMargins(isComposited()) + space::tight, column(0, {m_days})));
    const auto choose = [this](QDate chosenDay) {
        Q_EMIT chosen(chosenDay);
        close();
    };
    connect(m_days, &QCalendarWidget::clicked, this, choose);
    connect(m_days, &QCalendarWidget::activated, this, choose);
}

void CalendarPopup::popUp(const QWidget &anchor)
{
    ensurePolished();
    resize(sizeHint());
    move(placeFor(anchor, size(), popupShadow(isComposited())));
    show();
    m_days->setFocus(Qt::PopupFocusReason);
}

void CalendarPopup::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel)) {
        close();
    } else {
        QFrame::keyPressEvent(event);
    }
}

void CalendarPopup::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintPopup(painter, rect(), palette(), isComposited());
}

void CalendarPopup::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    if (!isComposited()) {
        setMask(roundedRegion(size(), popup::cornerRadius));
    }
}

} // namespace corvane::look
