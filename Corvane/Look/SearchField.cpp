// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/SearchField.h"

#include "Corvane/Look/Fields.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Symbols.h"

#include <QAction>
#include <QFontMetrics>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace corvane::look {

SearchField::SearchField(const QString &prompt, QWidget *parent)
    : QLineEdit(parent)
    , m_glass(addAction(QIcon(), QLineEdit::LeadingPosition))
    , m_cross(addAction(QIcon(), QLineEdit::TrailingPosition))
{
    setPlaceholderText(prompt);
    setAccessibleName(prompt);
    setFrame(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QPalette own; // the ground is the field's; all else stays the desktop's
    own.setColor(QPalette::Base, Qt::transparent);
    setPalette(own);
    m_glass->setText(prompt);
    m_cross->setText(u"Clear"_s);
    m_cross->setVisible(false);
    connect(m_glass, &QAction::triggered, this, [this] { setFocus(); });
    connect(m_cross, &QAction::triggered, this, &QLineEdit::clear);
    connect(this, &QLineEdit::textChanged, m_cross,
            [this](const QString &text) { m_cross->setVisible(!text.isEmpty()); });
    colorSymbols();
}

QSize SearchField::sizeHint() const
{
    return {QFontMetrics(font()).averageCharWidth() * 20, fieldHeight(font())};
}

QSize SearchField::minimumSizeHint() const
{
    return {QFontMetrics(font()).averageCharWidth() * 8, fieldHeight(font())};
}

void SearchField::paintEvent(QPaintEvent *event)
{
    paintField(*this, hasFocus());
    QLineEdit::paintEvent(event);
}

void SearchField::colorSymbols()
{
    const QColor ink = color(Ink::secondary, palette());
    m_glass->setIcon(symbolIcon(u"magnifyingglass"_s, ink));
    m_cross->setIcon(symbolIcon(u"xmark"_s, ink));
}

void SearchField::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        colorSymbols();
    }
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
