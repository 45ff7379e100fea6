// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/SymbolView.h"

#include "Corvane/Look/Symbols.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace corvane::look {

namespace {

/// Keeps a symbol centred on the first line of a text when fonts change.
class FirstLine final : public QObject {
public:
    FirstLine(SymbolView &symbol, QWidget &text, QLayout &above, QLayout &beneath)
        : QObject(&text)
        , m_symbol(symbol)
        , m_text(text)
        , m_above(above)
        , m_beneath(beneath)
    {
        text.installEventFilter(this);
        symbol.installEventFilter(this);
        align();
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::FontChange || event->type() == QEvent::Resize) {
            align();
        }
        return false;
    }

private:
    void align()
    {
        const int offset = QFontMetrics(m_text.font()).height() - m_symbol.height();
        m_above.setContentsMargins(0, std::max(0, offset / 2), 0, 0);
        m_beneath.setContentsMargins(0, std::max(0, -offset / 2), 0, 0);
    }

    // All of them are destroyed with the view that contains the text.
    SymbolView &m_symbol;
    QWidget &m_text;
    QLayout &m_above;
    QLayout &m_beneath;
};

} // namespace

SymbolView::SymbolView(const QString &name, TextStyle style, Ink ink, QWidget *parent)
    : SymbolView(name, symbolSize(look::font(style)), ink, parent)
{
    m_style = style;
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

bool SymbolView::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::ApplicationFontChange && m_style) {
        m_size = symbolSize(look::font(*m_style));
        setFixedSize(m_size, m_size);
    }
    return isHandled;
}

void SymbolView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, symbolPixmap(m_name, m_size, color(m_ink, palette()), devicePixelRatioF()));
}

QLayout *label(SymbolView *symbol, QWidget *text, int spacing)
{
    auto *beside = new QHBoxLayout;
    beside->setContentsMargins(0, 0, 0, 0);
    beside->setSpacing(spacing);
    auto *above = new QVBoxLayout;
    above->addWidget(symbol, 0, Qt::AlignTop); // no stretch, or the label would grow
    auto *beneath = new QVBoxLayout;
    beneath->addWidget(text);
    new FirstLine(*symbol, *text, *above, *beneath); // owned by the text
    beside->addLayout(above);
    beside->addLayout(beneath, 1);
    return beside;
}

} // namespace corvane::look
