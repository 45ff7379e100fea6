// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/SearchField.h"

#include "Corvane/Look/Fields.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Symbols.h"

#include <QAbstractButton>
#include <QFontInfo>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include <cmath>

using namespace Qt::StringLiterals;

namespace corvane::look {

namespace {

/// Draws a symbol that stands back, as large as it fits, in the middle of `widget`'s `area`.
void paintSymbol(QWidget &widget, const QRect &area, const QString &name, int size, Ink ink)
{
    QPainter painter(&widget);
    painter.drawPixmap(QPoint(area.x() + (area.width() - size) / 2, area.y() + (area.height() - size) / 2),
                       symbolPixmap(name, size, color(ink, widget.palette()), widget.devicePixelRatioF()));
}

/// Empties the field. Not for the keyboard, which has Escape for it.
class Cross final : public QAbstractButton {
public:
    explicit Cross(QWidget *parent) : QAbstractButton(parent)
    {
        setAccessibleName(u"Clear search"_s);
        setToolTip(accessibleName());
        setFocusPolicy(Qt::NoFocus);
        setCursor(Qt::ArrowCursor);
        setAttribute(Qt::WA_Hover);
        hide();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const int size = static_cast<int>(std::lround(QFontInfo(font()).pixelSize() * control::clearShare));
        paintSymbol(*this, rect(), u"xmark"_s, size, underMouse() ? Ink::primary : Ink::secondary);
    }
};

} // namespace

SearchField::SearchField(const QString &prompt, QWidget *parent) : QLineEdit(parent), m_cross(new Cross(this))
{
    setPlaceholderText(prompt);
    setAccessibleName(prompt);
    setFrame(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QPalette own; // the ground is the field's; all else stays the desktop's
    own.setColor(QPalette::Base, Qt::transparent);
    setPalette(own);
    connect(m_cross, &QAbstractButton::clicked, this, &QLineEdit::clear);
    connect(this, &QLineEdit::textChanged, m_cross,
            [this](const QString &text) { m_cross->setVisible(!text.isEmpty()); });
}

int SearchField::symbolSize() const
{
    return QFontInfo(font()).pixelSize();
}

QSize SearchField::sizeHint() const
{
    return {QFontMetrics(font()).averageCharWidth() * 20, fieldHeight(font())};
}

QSize SearchField::minimumSizeHint() const
{
    return {QFontMetrics(font()).averageCharWidth() * 10, fieldHeight(font())};
}

void SearchField::paintEvent(QPaintEvent *event)
{
    paintField(*this, hasFocus());
    const QRect glass(space::small, 0, symbolSize(), height());
    paintSymbol(*this, QStyle::visualRect(layoutDirection(), rect(), glass), u"magnifyingglass"_s,
                symbolSize(), Ink::secondary);
    QLineEdit::paintEvent(event);
}

void SearchField::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    const int side = space::small + symbolSize() + space::tight;
    setTextMargins(side, 0, side, 0);
    const QRect end(width() - side, 0, side, height());
    m_cross->setGeometry(QStyle::visualRect(layoutDirection(), rect(), end));
}

void SearchField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

} // namespace corvane::look
