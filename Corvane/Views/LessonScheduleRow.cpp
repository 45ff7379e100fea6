// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/LessonScheduleRow.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Utilities/DateText.h"
#include "Corvane/Utilities/OneLine.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

using namespace look;

namespace {

using scheduleStatus::Background;

/// The width of the wider of the two statuses that every lesson reaches.
int widestStatus(const QFontMetrics &metrics)
{
    return std::max(metrics.horizontalAdvance(scheduleStatus::inProgressText()),
                    metrics.horizontalAdvance(scheduleStatus::completedText()));
}

QColor backgroundColour(Background background, const QPalette &palette)
{
    const double opacity = scheduleStatus::opacity(background);
    switch (background) {
    case Background::next:
        return color(Ink::red, palette, opacity);
    case Background::inProgress:
        return color(Ink::green, palette, opacity);
    case Background::completed:
        return color(Ink::secondary, palette, opacity);
    case Background::other:
        return color(Ink::primary, palette, opacity);
    }
    Q_UNREACHABLE();
}

QFont timeFont(bool isEmphasized)
{
    return withAlignedDigits(look::font(TextStyle::subheadline, isEmphasized ? QFont::Bold : QFont::Medium));
}

QFont badgeFont()
{
    return look::font(TextStyle::caption2, QFont::Bold);
}

QFont statusFont(bool isNext)
{
    return withAlignedDigits(look::font(TextStyle::caption, isNext ? QFont::Bold : QFont::Medium));
}

} // namespace

struct LessonScheduleRow::Fonts {
    QFont time;
    QFont student;
    QFont platform;
    QFont badge;
    QFont status;
};

/// The baselines of a row's texts, from the row's top.
struct LessonScheduleRow::Lines {
    int time = 0;
    int student = 0;
    int platform = 0;
    int badge = 0;
    int status = 0;
    int height = 0; ///< of the whole row
};

LessonScheduleRow::LessonScheduleRow(QWidget *parent) : QWidget(parent)
{
    setAccessibleRole(*this, QAccessible::ListItem);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

bool LessonScheduleRow::setLesson(const Lesson &lesson, Date now, bool isNext)
{
    QString student = m_texts.student;
    if (m_studentName != lesson.studentName || m_texts.time.isEmpty()) {
        m_studentName = lesson.studentName;
        student = oneLine(lesson.studentName);
    }
    const QLocale locale;
    const scheduleStatus::Badge badge = scheduleStatus::badge(lesson, now, isNext);
    Texts texts{.time = timeOfDayText(lesson.startTime, locale),
                .student = std::move(student),
                .platform = rawValue(lesson.platform),
                .badge = scheduleStatus::badgeText(badge),
                .status = scheduleStatus::statusText(lesson, now),
                .badgeKind = badge,
                .background = scheduleStatus::background(lesson, now, isNext),
                .isNext = isNext,
                .isEmphasized = scheduleStatus::isEmphasized(lesson, now, isNext)};
    if (texts == m_texts) {
        return false;
    }
    m_texts = std::move(texts);
    Lesson read = lesson;
    read.studentName = m_texts.student;
    setAccessibleName(scheduleStatus::rowText(read, now, isNext, locale));
    fit();
    update();
    return true;
}

void LessonScheduleRow::setColumns(Columns columns)
{
    if (m_columns != columns) {
        m_columns = columns;
        fit();
        updateGeometry();
        update();
    }
}

LessonScheduleRow::Fonts LessonScheduleRow::fonts() const
{
    return {.time = timeFont(m_texts.isEmphasized),
            .student = look::font(TextStyle::body, m_texts.isEmphasized ? QFont::DemiBold : QFont::Normal),
            .platform = look::font(TextStyle::caption),
            .badge = badgeFont(),
            .status = statusFont(m_texts.isNext)};
}

LessonScheduleRow::Lines LessonScheduleRow::lines(const Fonts &fonts) const
{
    const QFontMetrics time(fonts.time);
    const QFontMetrics student(fonts.student);
    const QFontMetrics platform(fonts.platform);
    const QFontMetrics badge(fonts.badge);
    const QFontMetrics status(fonts.status);
    Lines lines;
    // Time, name and badge share one baseline, platform and status another, so that texts align in lines and
    // columns.
    if (m_columns.areBeside) {
        const int first = std::max({time.ascent(), student.ascent(), badge.ascent()});
        const int firstHeight = first + std::max({time.descent(), student.descent(), badge.descent()});
        const int second = std::max(platform.ascent(), status.ascent());
        const int secondHeight = second + std::max(platform.descent(), status.descent());
        const int content = firstHeight + menu::rowLineSpacing + secondHeight;
        lines.height = std::max(menu::rowHeight, content + 2 * menu::rowVerticalPadding);
        const int top = (lines.height - content) / 2;
        lines.time = lines.student = lines.badge = top + first;
        lines.platform = lines.status = top + firstHeight + menu::rowLineSpacing + second;
        return lines;
    }
    int y = menu::rowVerticalPadding;
    lines.time = lines.badge = y + std::max({time.ascent(), badge.ascent(), status.ascent()});
    const bool hasBadge = !m_texts.badge.isEmpty();
    if (hasBadge) {
        lines.status = lines.badge + badge.descent() + menu::rowLineSpacing + status.ascent();
    } else {
        lines.status = lines.time;
    }
    y = std::max(lines.time + time.descent(), lines.status + status.descent()) + menu::rowLineSpacing;
    lines.student = y + student.ascent();
    y += student.height() + menu::rowLineSpacing;
    lines.platform = y + platform.ascent();
    lines.height = std::max(menu::rowHeight, y + platform.height() + menu::rowVerticalPadding);
    return lines;
}

int LessonScheduleRow::timeWidth() const
{
    // In bold, so that the column does not move when a lesson starts.
    return QFontMetrics(timeFont(true)).horizontalAdvance(m_texts.time);
}

bool LessonScheduleRow::fitsBeside(int width, int timeWidth) const
{
    const int room = width - 2 * menu::rowHorizontalPadding - 2 * menu::rowColumnSpacing - timeWidth;
    const int platform = QFontMetrics(look::font(TextStyle::caption)).horizontalAdvance(m_texts.platform);
    const int badge = QFontMetrics(badgeFont())
                          .horizontalAdvance(scheduleStatus::badgeText(scheduleStatus::Badge::inProgress));
    constexpr int minimumLetters = 6;
    const int least = minimumLetters * QFontMetrics(look::font(TextStyle::body)).averageCharWidth();
    return platform + widestStatus(QFontMetrics(statusFont(false))) <= room && least + badge <= room;
}

QSize LessonScheduleRow::sizeHint() const
{
    return {menu::width / 2, lines(fonts()).height};
}

void LessonScheduleRow::fit()
{
    const Fonts fonts = this->fonts();
    int first = width() - 2 * menu::rowHorizontalPadding;
    int second = first;
    if (m_columns.areBeside) {
        const auto taken = [](const QFont &font, const QString &text) {
            return text.isEmpty() ? 0 : menu::rowColumnSpacing + QFontMetrics(font).horizontalAdvance(text);
        };
        const int time = m_columns.time + menu::rowColumnSpacing;
        first -= time + taken(fonts.badge, m_texts.badge);
        second -= time + taken(fonts.status, m_texts.status);
    }
    const QFontMetrics student(fonts.student);
    m_shownStudent = student.elidedText(m_texts.student, Qt::ElideRight, std::max(first, 0));
    m_shownPlatform =
        QFontMetrics(fonts.platform).elidedText(m_texts.platform, Qt::ElideRight, std::max(second, 0));
    // Escaped in a paragraph: a tool tip renders text that looks like markup as markup.
    setToolTip(m_shownStudent != m_texts.student ? u"<p>"_s + m_texts.student.toHtmlEscaped() + u"</p>"_s
                                                 : QString());
}

void LessonScheduleRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(backgroundColour(m_texts.background, palette()));
    painter.drawRoundedRect(QRectF(rect()), menu::rowRadius, menu::rowRadius);

    const Fonts fonts = this->fonts();
    const Lines lines = this->lines(fonts);
    const int left = menu::rowHorizontalPadding;
    const int right = width() - menu::rowHorizontalPadding;
    // Measures from the row's start or end, which depend on the desktop's language. The text keeps its own
    // direction.
    const auto draw = [&](const QFont &font, Ink ink, const QString &text, int baseline, int fromBegin,
                          bool isAtEnd = false) {
        const int advance = QFontMetrics(font).horizontalAdvance(text);
        const bool isAtLeft = isLeftToRight() != isAtEnd;
        const int x = isAtLeft ? left + fromBegin : right - fromBegin - advance;
        painter.setFont(font);
        painter.setPen(color(ink, palette()));
        painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        painter.drawText(QPointF(x, baseline), text);
    };
    const int names = m_columns.areBeside ? m_columns.time + menu::rowColumnSpacing : 0;
    draw(fonts.time, Ink::primary, m_texts.time, lines.time, 0);
    draw(fonts.student, Ink::primary, m_shownStudent, lines.student, names);
    draw(fonts.platform, Ink::secondary, m_shownPlatform, lines.platform, names);
    draw(fonts.badge, m_texts.badgeKind == scheduleStatus::Badge::next ? Ink::red : Ink::green, m_texts.badge,
         lines.badge, 0, true);
    draw(fonts.status, Ink::primary, m_texts.status, lines.status, 0, true);
}

void LessonScheduleRow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fit();
}

void LessonScheduleRow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fit();
        updateGeometry();
    }
}

} // namespace corvane
