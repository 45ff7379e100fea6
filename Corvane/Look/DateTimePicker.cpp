// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/DateTimePicker.h"

#include "Corvane/Look/Buttons.h"
#include "Corvane/Look/Fields.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Symbols.h"

#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QFocusEvent>
#include <QFontInfo>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QSignalBlocker>
#include <QTableView>
#include <QTextCharFormat>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane::look {

namespace {

/// The toolkit's editor without a ground and without arrows of its own.
class Edit final : public QDateTimeEdit {
public:
    explicit Edit(const QString &format)
    {
        // First, or on a desktop that is read from the right "21 Nov" would be turned round.
        setLayoutDirection(locale().textDirection());
        setDisplayFormat(format);
        setButtonSymbols(QAbstractSpinBox::NoButtons);
        setFrame(false);
        setFont(look::font(TextStyle::body));
        setFocusPolicy(Qt::StrongFocus);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        setCurrentSection(QDateTimeEdit::HourSection);
        QPalette own;
        own.setColor(QPalette::Base, Qt::transparent);
        setPalette(own);
        lineEdit()->installEventFilter(this);
    }

    void stepBy(int steps) override
    {
        const Section section = currentSection();
        const QDateTime now = dateTime();
        switch (section) {
        case MSecSection:
            setDateTime(now.addMSecs(steps));
            break;
        case SecondSection:
            setDateTime(now.addSecs(steps));
            break;
        case MinuteSection:
            setDateTime(now.addSecs(steps * 60LL));
            break;
        case HourSection:
            setDateTime(now.addSecs(steps * 3600LL));
            break;
        case AmPmSection:
            setDateTime(now.addSecs(steps * 43200LL));
            break;
        case DaySection:
            setDateTime(now.addDays(steps));
            break;
        case MonthSection:
            setDateTime(now.addMonths(steps));
            break;
        case YearSection:
            setDateTime(now.addYears(steps));
            break;
        default:
            QDateTimeEdit::stepBy(steps);
            return;
        }
        setSelectedSection(section);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        // The widest day of the widest month, late in the morning and in the evening.
        const QFontMetrics metrics(font());
        int widest = 0;
        for (int month = 1; month <= 12; ++month) {
            for (const int hour : {10, 22}) {
                const QDateTime moment(QDate(2028, month, 28), QTime(hour, 58));
                widest = std::max(widest, metrics.horizontalAdvance(textFromDateTime(moment)));
            }
        }
        // Room for the cursor, and for a digit more while it is typed.
        return {widest + metrics.averageCharWidth() * 2, fieldHeight(font())};
    }

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

    /// A click chooses the unit under it: what is typed then takes its place. The toolkit would only put the
    /// cursor between its digits, where there is no room for another.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease &&
            static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
            // Only after the toolkit's own handling, which would put what is selected then on the clipboard.
            QMetaObject::invokeMethod(this, &Edit::selectClickedSection, Qt::QueuedConnection);
        }
        return QDateTimeEdit::eventFilter(watched, event);
    }

protected:
    bool event(QEvent *event) override
    {
        const bool isHandled = QDateTimeEdit::event(event);
        if (event->type() == QEvent::ApplicationFontChange) {
            setFont(look::font(TextStyle::body));
            updateGeometry();
        }
        return isHandled;
    }
    [[nodiscard]] StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    void paintEvent(QPaintEvent *) override {}
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
    void focusInEvent(QFocusEvent *event) override
    {
        QDateTimeEdit::focusInEvent(event);
        parentWidget()->update();
    }
    void focusOutEvent(QFocusEvent *event) override
    {
        QDateTimeEdit::focusOutEvent(event);
        parentWidget()->update();
    }

private:
    void selectClickedSection()
    {
        if (!lineEdit()->hasSelectedText()) { // by dragging, or by a double click
            setSelectedSection(currentSection());
        }
    }
};

/// Half of the stepper. The keyboard steps in the editor itself.
class StepButton final : public QAbstractButton {
public:
    StepButton(const QString &symbolName, const QString &purpose) : m_symbolName(symbolName)
    {
        setAccessibleName(purpose);
        setToolTip(purpose);
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_Hover);
        setAutoRepeat(true);
        setFont(look::font(TextStyle::body));
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        return {symbolSize() + 2 * space::small, symbolSize() + space::hair};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override
    {
        const bool isHandled = QAbstractButton::event(event);
        if (event->type() == QEvent::ApplicationFontChange) {
            setFont(look::font(TextStyle::body));
            updateGeometry();
        }
        return isHandled;
    }

    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const int side = symbolSize();
        const Ink ink = isDown() || underMouse() ? Ink::primary : Ink::secondary;
        painter.drawPixmap((width() - side) / 2, (height() - side) / 2,
                           symbolPixmap(m_symbolName, side, color(ink, palette()), devicePixelRatioF()));
    }

private:
    [[nodiscard]] int symbolSize() const
    {
        return static_cast<int>(std::lround(QFontInfo(font()).pixelSize() * control::stepperShare));
    }

    QString m_symbolName;
};

/// What the editor and the stepper stand on.
class Ground final : public QWidget {
public:
    Ground(QWidget *edit, QLayout *content) : m_edit(edit)
    {
        setLayout(content);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

protected:
    void paintEvent(QPaintEvent *) override { paintField(*this, m_edit->hasFocus()); }

private:
    QWidget *m_edit;
};

/// The toolkit's calendar in this program's colours, with a name for each of its parts.
QCalendarWidget *calendar(const QLocale &locale)
{
    auto *calendar = new QCalendarWidget;
    calendar->setLocale(locale);
    calendar->setFirstDayOfWeek(locale.firstDayOfWeek());
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setHorizontalHeaderFormat(QCalendarWidget::ShortDayNames);
    calendar->setFont(look::font(TextStyle::body));
    QPalette own;
    own.setColor(QPalette::Base, fieldColor(QGuiApplication::palette()));
    calendar->setPalette(own);
    const QPalette palette = calendar->palette();
    QTextCharFormat day;
    day.setForeground(color(Ink::primary, palette));
    for (int weekday = Qt::Monday; weekday <= Qt::Sunday; ++weekday) {
        calendar->setWeekdayTextFormat(static_cast<Qt::DayOfWeek>(weekday), day);
    }
    QTextCharFormat header;
    header.setForeground(color(Ink::secondary, palette));
    header.setBackground(palette.color(QPalette::Base));
    calendar->setHeaderTextFormat(header);
    if (auto *bar = calendar->findChild<QWidget *>(u"qt_calendar_navigationbar"_s)) {
        own.setColor(QPalette::Highlight, palette.color(QPalette::Base));
        own.setColor(QPalette::HighlightedText, color(Ink::primary, palette));
        bar->setPalette(own);
    }
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
        if (auto *part = calendar->findChild<QWidget *>(QString::fromUtf16(object))) {
            part->setAccessibleName(QString::fromUtf16(name));
            if (auto *button = qobject_cast<QToolButton *>(part); button != nullptr && symbol[0] != u'\0') {
                button->setIcon(symbolIcon(QString::fromUtf16(symbol), color(Ink::primary, palette)));
                button->setToolTip(QString::fromUtf16(name));
            }
        }
    }
    // Days that are easily hit.
    calendar->setMinimumSize(calendar->sizeHint() * control::calendarShare);
    return calendar;
}

/// Where a popup of `size` stands for `anchor`: below it, or above where the screen ends, and never beside
/// the screen.
QPoint popupPlace(const QWidget &anchor, const QSize &size)
{
    const QRect screen = anchor.screen()->availableGeometry();
    const QPoint top = anchor.mapToGlobal(QPoint(0, 0));
    const int right = top.x() + anchor.width();
    int y = top.y() + anchor.height() + space::tight;
    if (y + size.height() > screen.bottom() + 1) {
        y = top.y() - space::tight - size.height();
    }
    const int x = anchor.isLeftToRight() ? right - size.width() : top.x();
    return {std::clamp(x, screen.left(), std::max(screen.left(), screen.right() + 1 - size.width())),
            std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() + 1 - size.height()))};
}

/// Closes with Escape, and when something beside it is clicked.
class Popup final : public QFrame {
public:
    explicit Popup(QWidget *parent) : QFrame(parent, Qt::Popup)
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setFrameShape(QFrame::StyledPanel);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->matches(QKeySequence::Cancel)) {
            close();
        } else {
            QFrame::keyPressEvent(event);
        }
    }
};

} // namespace

DateTimePicker::DateTimePicker(const QString &label, const QString &format, QWidget *parent)
    : QWidget(parent)
    , m_edit(new Edit(format))
    , m_calendarButton(new Button({}, Button::Kind::bordered, u"calendar"_s))
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_edit->setAccessibleName(label);
    const QString purpose = u"Choose a day for %1"_s.arg(label);
    m_calendarButton->setAccessibleName(purpose);
    m_calendarButton->setToolTip(purpose);

    auto *later = new StepButton(u"chevron.up"_s, u"Later"_s);
    auto *earlier = new StepButton(u"chevron.down"_s, u"Earlier"_s);
    auto *ground =
        new Ground(m_edit, padded({space::small, 0, 0, 0}, row(0, {m_edit, column(0, {later, earlier})})));
    setLayout(row(space::tight, {ground, m_calendarButton}));
    setFocusProxy(m_edit);

    const auto step = [this](int steps) {
        // As a click into the editor would: the unit that was chosen last stays chosen.
        m_edit->setFocus(Qt::MouseFocusReason);
        m_edit->stepBy(steps);
    };
    connect(later, &QAbstractButton::clicked, this, [step] { step(1); });
    connect(earlier, &QAbstractButton::clicked, this, [step] { step(-1); });
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
    auto *popup = new Popup(this);
    // A press on the button closes it; passed on to the button, it would open it again.
    popup->setAttribute(Qt::WA_NoMouseReplay);
    popup->setAccessibleName(m_calendarButton->accessibleName());
    auto *days = calendar(locale());
    days->setAccessibleName(m_calendarButton->accessibleName());
    days->setSelectedDate(m_edit->date());
    popup->setLayout(column(0, {days}));
    const auto choose = [this, popup](QDate day) {
        m_edit->setDate(day);
        popup->close();
    };
    connect(days, &QCalendarWidget::clicked, popup, choose);
    connect(days, &QCalendarWidget::activated, popup, choose);
    m_popup = popup;
    popup->ensurePolished();
    popup->resize(popup->sizeHint());
    popup->move(popupPlace(*m_calendarButton, popup->size()));
    popup->show();
    days->setFocus(Qt::PopupFocusReason);
}

} // namespace corvane::look
