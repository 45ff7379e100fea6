// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/SearchField.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Symbols.h"

#include <QAction>
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
    m_glass->setText(prompt);
    m_cross->setText(u"Clear"_s);
    m_cross->setVisible(false);
    connect(m_glass, &QAction::triggered, this, [this] { setFocus(); });
    connect(m_cross, &QAction::triggered, this, &QLineEdit::clear);
    connect(this, &QLineEdit::textChanged, m_cross,
            [this](const QString &text) { m_cross->setVisible(!text.isEmpty()); });
    colorSymbols();
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
