// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Text.h"

#include <QEvent>
#include <QGuiApplication>

namespace corvane::look {

Text::Text(const QString &text, TextStyle style, Ink ink, QWidget *parent)
    : QLabel(text, parent)
    , m_style(style)
    , m_ink(ink)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    apply();
}

Text::Text(const QString &text, TextStyle style, QFont::Weight weight, Ink ink, QWidget *parent)
    : Text(text, style, ink, parent)
{
    setWeight(weight);
}

void Text::setInk(Ink ink)
{
    m_ink = ink;
    apply();
}

void Text::setWeight(QFont::Weight weight)
{
    m_weight = weight;
    apply();
}

void Text::setMonospacedDigits()
{
    m_hasMonospacedDigits = true;
    apply();
}

void Text::apply()
{
    if (m_isApplying) {
        return;
    }
    m_isApplying = true;
    QFont wanted = m_weight ? look::font(m_style, *m_weight) : look::font(m_style);
    if (m_hasMonospacedDigits) {
        wanted = withMonospacedDigits(wanted);
    }
    setFont(wanted);
    // From the application's palette: the label's own already has the ink in its text's place.
    const QPalette desktop = QGuiApplication::palette();
    QPalette own = desktop;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        own.setColor(group, QPalette::WindowText, color(m_ink, desktop));
    }
    setPalette(own);
    m_isApplying = false;
}

void Text::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        apply();
    }
}

} // namespace corvane::look
