// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Buttons.h"

#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/Symbols.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>

#include <algorithm>
#include <cmath>

namespace corvane::look {

namespace {

/// How the ground of a control answers to the pointer: an opacity of the text's colour.
double groundOpacity(const QAbstractButton &button, double atRest)
{
    if (button.isDown()) {
        return atRest + control::pressedOpacity;
    }
    return button.isEnabled() && button.underMouse() ? atRest + control::hoverOpacity : atRest;
}

/// The palette of a widget that can be used, also for one that cannot: the toolkit's own of the latter is
/// faint already, and would be seen no more once it is drawn faintly.
QPalette inkPalette(const QWidget &widget)
{
    QPalette palette = widget.palette();
    if (!widget.isEnabled()) {
        palette.setCurrentColorGroup(QPalette::Inactive);
    }
    return palette;
}

void fillRounded(QPainter &painter, const QRectF &area, double cornerRadius, const QColor &color)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(area, cornerRadius, cornerRadius);
}

} // namespace

Button::Button(const QString &text, Kind kind, const QString &symbolName, QWidget *parent)
    : QPushButton(text, parent)
    , m_kind(kind)
    , m_symbolName(symbolName)
{
    setAttribute(Qt::WA_Hover);
    setFont(look::font(textStyle()));
    setFocusPolicy(Qt::TabFocus);
    setAutoDefault(false);
    setSizePolicy(kind == Kind::plain ? QSizePolicy::Expanding : QSizePolicy::Fixed,
                  kind == Kind::plain ? QSizePolicy::Minimum : QSizePolicy::Fixed);
    if (isLink()) {
        setCursor(Qt::PointingHandCursor);
    }
}

TextStyle Button::textStyle() const
{
    return m_kind == Kind::quietLink ? TextStyle::caption : TextStyle::body;
}

int Button::symbolGap() const
{
    return text().isEmpty() ? 0 : control::symbolSpacing;
}

void Button::setKeys(const QKeySequence &keys)
{
    // Not the button's own shortcut: that one holds it down for a while before it acts.
    auto *shortcut = new QShortcut(keys, this);
    // Also while a window beside it has the keyboard; it is silent while the button cannot be seen.
    shortcut->setContext(Qt::ApplicationShortcut);
    connect(shortcut, &QShortcut::activated, this, &QAbstractButton::click);
    m_keys = keys.toString(QKeySequence::NativeText);
    updateGeometry();
    update();
}

int Button::symbolSize() const
{
    return static_cast<int>(std::lround(QFontInfo(font()).pixelSize() * control::symbolShare));
}

QSize Button::sizeHint() const
{
    const QFontMetrics metrics(font());
    const bool isTight = isLink();
    const int inset = isTight                 ? space::tight
                      : m_kind == Kind::plain ? control::rowInset
                                              : control::horizontalPadding;
    int width = metrics.horizontalAdvance(text()) + 2 * inset;
    if (m_kind == Kind::plain && !m_keys.isEmpty()) {
        width += space::large + metrics.horizontalAdvance(m_keys);
    }
    if (!m_symbolName.isEmpty()) {
        width += symbolSize() + symbolGap();
    }
    const int padding = isTight                 ? space::hair
                        : m_kind == Kind::plain ? control::rowPadding
                                                : control::verticalPadding;
    return {width, metrics.height() + 2 * padding};
}

QSize Button::minimumSizeHint() const
{
    return m_kind == Kind::plain ? QSize(0, sizeHint().height()) : sizeHint();
}

int Button::heightForWidth(int width) const
{
    if (m_kind != Kind::plain || sizeHint().width() <= width) {
        return sizeHint().height();
    }
    const QRect room(0, 0, width - 2 * control::rowInset, 0);
    return QFontMetrics(font()).boundingRect(room, Qt::TextWordWrap, text()).height() +
           2 * control::rowPadding;
}

void Button::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QPalette colors = inkPalette(*this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) {
        painter.setOpacity(control::disabledOpacity);
    }
    const QRectF area = rect();
    Ink ink = Ink::primary;
    switch (m_kind) {
    case Kind::plain:
        if (const double opacity = groundOpacity(*this, 0); opacity > 0) {
            fillRounded(painter, area, control::cornerRadius, color(Ink::primary, colors, opacity));
        }
        break;
    case Kind::bordered: {
        fillRounded(painter, area, control::cornerRadius, separatorColor(colors));
        const QRectF inside = area.adjusted(1, 1, -1, -1);
        fillRounded(painter, inside, control::cornerRadius - 1, cardColor(colors));
        fillRounded(painter, inside, control::cornerRadius - 1,
                    color(Ink::primary, colors, groundOpacity(*this, 0.03)));
        break;
    }
    case Kind::prominent:
        ink = Ink::onAccent;
        fillRounded(painter, area, control::cornerRadius, accentGround(colors));
        fillRounded(painter, area, control::cornerRadius, black(groundOpacity(*this, 0)));
        break;
    case Kind::link:
        ink = Ink::accent;
        break;
    case Kind::quietLink:
        ink = Ink::secondary;
        break;
    }

    QFont textFont = font();
    if (isLink()) {
        textFont.setUnderline(m_kind == Kind::quietLink || underMouse() || showsFocus(*this));
    }
    painter.setFont(textFont);
    painter.setPen(color(ink, colors));
    const QFontMetrics metrics(textFont);
    const int symbolRoom = m_symbolName.isEmpty() ? 0 : symbolSize() + symbolGap();
    const int textWidth = metrics.horizontalAdvance(text());
    double left = (width() - symbolRoom - textWidth) / 2.0;
    if (m_kind == Kind::plain) {
        left = isLeftToRight() ? control::rowInset : width() - control::rowInset - symbolRoom - textWidth;
    }
    const double symbolLeft = isLeftToRight() ? left : left + textWidth + symbolGap();
    if (!m_symbolName.isEmpty()) {
        painter.drawPixmap(QPointF(std::round(symbolLeft), std::round((height() - symbolSize()) / 2.0)),
                           symbolPixmap(m_symbolName, symbolSize(), color(ink, colors), devicePixelRatioF()));
    }
    const double textLeft = isLeftToRight() ? left + symbolRoom : left;
    const bool breaks = m_kind == Kind::plain && sizeHint().width() > width();
    painter.drawText(breaks ? QRectF(rect()).adjusted(control::rowInset, 0, -control::rowInset, 0)
                            : QRectF(std::round(textLeft), 0, textWidth + 1.0, height()),
                     static_cast<int>(breaks ? Qt::TextWordWrap : Qt::TextSingleLine) | Qt::AlignLeft |
                         Qt::AlignVCenter,
                     text());
    if (m_kind == Kind::plain && !m_keys.isEmpty()) {
        painter.setPen(color(Ink::secondary, colors));
        painter.drawText(rect().adjusted(control::rowInset, 0, -control::rowInset, 0),
                         static_cast<int>(isLeftToRight() ? Qt::AlignRight : Qt::AlignLeft) |
                             Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                         m_keys);
    }

    if (showsFocus(*this)) {
        if (m_kind == Kind::prominent) {
            paintFocusRingOnAccent(painter, area, control::cornerRadius, colors);
        } else {
            paintFocusRing(painter, area, control::cornerRadius, colors);
        }
    }
}

bool Button::event(QEvent *event)
{
    const bool isHandled = QPushButton::event(event);
    if (event->type() == QEvent::ApplicationFontChange) {
        setFont(look::font(textStyle()));
        updateGeometry();
    }
    return isHandled;
}

void Button::keyPressEvent(QKeyEvent *event)
{
    // Outside of dialogues the toolkit leaves Enter alone; here it presses what has the keyboard.
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat()) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

bool Switch::event(QEvent *event)
{
    const bool isHandled = QCheckBox::event(event);
    if (event->type() == QEvent::ApplicationFontChange) {
        setFont(look::font(TextStyle::body));
        updateGeometry();
    }
    return isHandled;
}

Switch::Switch(const QString &text, QWidget *parent) : QCheckBox(text, parent)
{
    setAttribute(Qt::WA_Hover);
    setFont(look::font(TextStyle::body));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize Switch::knobArea() const
{
    const int height = static_cast<int>(std::lround(QFontMetrics(font()).height() * 1.15));
    return {static_cast<int>(std::lround(height * 1.75)), height};
}

QSize Switch::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + space::medium + knobArea().width(),
            std::max(metrics.height(), knobArea().height()) + 2 * space::tight};
}

bool Switch::hitButton(const QPoint &position) const
{
    return rect().contains(position);
}

void Switch::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QPalette colors = inkPalette(*this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) {
        painter.setOpacity(control::disabledOpacity);
    }
    painter.setFont(font());
    painter.setPen(color(Ink::primary, colors));
    // The text at the beginning of the line, the switch at its end, as in a list of settings.
    painter.drawText(rect(),
                     static_cast<int>(isLeftToRight() ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignAbsolute |
                         Qt::AlignVCenter,
                     text());

    const QSize knob = knobArea();
    const QRectF track(isLeftToRight() ? width() - knob.width() : 0, (height() - knob.height()) / 2.0,
                       knob.width(), knob.height());
    const double radius = track.height() / 2;
    fillRounded(painter, track, radius, isChecked() ? accentEdge(colors) : edgeColor(colors));
    constexpr double gap = 2;
    const double side = track.height() - 2 * gap;
    const bool isAtRight = isChecked() == isLeftToRight();
    painter.setPen(Qt::NoPen);
    painter.setBrush(white(1));
    painter.drawEllipse(
        QRectF(isAtRight ? track.right() - gap - side : track.left() + gap, track.top() + gap, side, side));
    if (showsFocus(*this)) {
        paintFocusRing(painter, rect(), control::cornerRadius, colors);
    }
}

namespace {

class Segment final : public QRadioButton {
public:
    using QRadioButton::QRadioButton;

    [[nodiscard]] QSize sizeHint() const override
    {
        const QFontMetrics metrics(font());
        return {metrics.horizontalAdvance(text()) + 2 * space::small, metrics.height() + 2 * space::tight};
    }

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override
    {
        const bool isHandled = QRadioButton::event(event);
        if (event->type() == QEvent::ApplicationFontChange) {
            setFont(look::font(TextStyle::caption));
            updateGeometry();
        }
        return isHandled;
    }

    [[nodiscard]] bool hitButton(const QPoint &position) const override { return rect().contains(position); }

    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF area = QRectF(rect()).adjusted(space::hair, space::hair, -space::hair, -space::hair);
        if (isChecked()) {
            // Nearer to the light than its neighbours, in the dark as well.
            if (isDark(palette())) {
                fillRounded(painter, area, control::cornerRadius - 1, color(Ink::primary, palette(), 0.24));
            } else {
                fillRounded(painter, area, control::cornerRadius - 1,
                            color(Ink::primary, palette(), control::pressedOpacity));
                fillRounded(painter, area.adjusted(0.5, 0.5, -0.5, -0.5), control::cornerRadius - 1,
                            cardColor(palette()));
            }
        } else if (underMouse()) {
            fillRounded(painter, area, control::cornerRadius - 1,
                        color(Ink::primary, palette(), control::hoverOpacity));
        }
        painter.setFont(font());
        painter.setPen(color(Ink::primary, palette()));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
        if (showsFocus(*this)) {
            paintFocusRing(painter, rect(), control::cornerRadius, palette());
        }
    }
};

} // namespace

SegmentedPicker::SegmentedPicker(const QString &label, const QStringList &segments, QWidget *parent)
    : QWidget(parent)
{
    setAccessibleName(label);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    for (const QString &text : segments) {
        auto *segment = new Segment(text);
        segment->setAttribute(Qt::WA_Hover);
        segment->setFont(look::font(TextStyle::caption));
        segment->setFocusPolicy(Qt::TabFocus);
        segment->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        line->addWidget(segment, 1);
        const int index = static_cast<int>(m_segments.size());
        m_segments.push_back(segment);
        connect(segment, &QRadioButton::toggled, this, [this, index](bool isChosen) {
            if (isChosen && index != m_selection) {
                m_selection = index;
                Q_EMIT selectionChanged(index);
            }
        });
    }
    if (!m_segments.isEmpty()) {
        m_segments.front()->setChecked(true);
    }
}

void SegmentedPicker::setSelection(int index)
{
    Q_ASSERT(index >= 0 && index < m_segments.size());
    m_segments.at(index)->setChecked(true);
}

void SegmentedPicker::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    fillRounded(painter, rect(), control::cornerRadius, color(Ink::primary, palette(), 0.08));
}

} // namespace corvane::look
