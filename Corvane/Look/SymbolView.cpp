// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/SymbolView.h"

#include "Corvane/Look/Symbols.h"

#include <QBoxLayout>
#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>

#include <cmath>

namespace corvane::look {

SymbolView::SymbolView(const QString &name, TextStyle style, Ink ink, QWidget *parent)
    : SymbolView(
          name,
          static_cast<int>(std::lround(QFontInfo(look::font(style)).pixelSize() * control::symbolShare)), ink,
          parent)
{
}

SymbolView::SymbolView(const QString &name, int size, Ink ink, QWidget *parent)
    : QWidget(parent)
    , m_name(name)
    , m_size(size)
    , m_ink(ink)
{
    setFixedSize(size, size);
}

void SymbolView::setSymbol(const QString &name)
{
    if (m_name != name) {
        m_name = name;
        update();
    }
}

void SymbolView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, symbolPixmap(m_name, m_size, color(m_ink, palette()), devicePixelRatioF()));
}

QLayout *label(SymbolView *symbol, QWidget *text, int spacing)
{
    // The symbol is centred on the first line, also where the text has more of them.
    auto *beside = new QHBoxLayout;
    beside->setContentsMargins(0, 0, 0, 0);
    beside->setSpacing(spacing);
    auto *above = new QVBoxLayout;
    const int lineHeight = QFontMetrics(text->font()).height();
    const int offset = lineHeight - symbol->height();
    above->setContentsMargins(0, std::max(0, offset / 2), 0, 0);
    above->addWidget(symbol);
    above->addStretch();
    auto *beneath = new QVBoxLayout;
    beneath->setContentsMargins(0, std::max(0, -offset / 2), 0, 0);
    beneath->addWidget(text);
    beside->addLayout(above);
    beside->addLayout(beneath, 1);
    return beside;
}

} // namespace corvane::look
