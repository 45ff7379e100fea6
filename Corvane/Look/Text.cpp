// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Text.h"

#include "Corvane/Look/Balance.h"

#include <QEvent>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QStyle>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane::look {

Text::Text(const QString &text, TextStyle style, Ink ink, QWidget *parent)
    : QLabel(text, parent)
    , m_style(style)
    , m_ink(ink)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    apply();
    alignAsThePage();
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

void Text::setPrefersOneLine()
{
    m_prefersOneLine = true;
    updateGeometry();
}

void Text::setSelectable()
{
    setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void Text::setLinks(const std::vector<Link> &links, std::function<void(const QUrl &)> open)
{
    const QString plain = text();
    QString marked;
    qsizetype done = 0;
    for (const Link &link : links) {
        const qsizetype at = plain.indexOf(link.text, done);
        if (at < 0) {
            continue;
        }
        marked +=
            plain.sliced(done, at - done).toHtmlEscaped() +
            u"<a href=\"%1\">%2</a>"_s.arg(QString::fromLatin1(link.destination.toEncoded()).toHtmlEscaped(),
                                           link.text.toHtmlEscaped());
        done = at + link.text.size();
    }
    setSelectable();
    if (done == 0) {
        return;
    }
    setTextFormat(Qt::RichText);
    setText(marked + plain.sliced(done).toHtmlEscaped());
    setTextInteractionFlags(Qt::TextBrowserInteraction);
    connect(this, &QLabel::linkActivated, this,
            [open = std::move(open)](const QString &destination) { open(QUrl(destination)); });
}

void Text::focusInEvent(QFocusEvent *event)
{
    QLabel::focusInEvent(event);
    // Only a text with links is reached by Tab. Go straight to a link: the toolkit would stop at the text
    // first.
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        focusNextPrevChild(event->reason() == Qt::TabFocusReason);
    }
}

void Text::setBalanced()
{
    m_isBalanced = true;
    update();
}

void Text::paintEvent(QPaintEvent *event)
{
    if (!m_isBalanced) {
        QLabel::paintEvent(event);
        return;
    }
    const QRect area = contentsRect();
    QRect lines(0, area.top(), balancedWidth(text(), font(), area.width()), area.height());
    lines.moveCenter({area.center().x(), lines.center().y()});
    QPainter painter(this);
    const Qt::TextFlag direction =
        text().isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
    style()->drawItemText(&painter, lines,
                          static_cast<int>(alignment().toInt()) | Qt::TextWordWrap | direction, palette(),
                          isEnabled(), text(), foregroundRole());
}

QSize Text::sizeHint() const
{
    if (!m_prefersOneLine) {
        return QLabel::sizeHint();
    }
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 1, metrics.height()};
}

void Text::apply()
{
    m_isApplying = true;
    setFont(m_weight ? look::font(m_style, *m_weight) : look::font(m_style));
    // From the application's palette: in the label's own, the ink already replaces the text colour. The other
    // roles stay inherited, so that the label is told about a change of theme.
    QPalette own;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        own.setColor(group, QPalette::WindowText, color(m_ink, QGuiApplication::palette()));
    }
    setPalette(own);
    m_isApplying = false;
}

void Text::alignAsThePage()
{
    if (!alignment().testFlag(Qt::AlignHCenter)) {
        setAlignment((isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                     (alignment() & Qt::AlignVertical_Mask));
    }
}

bool Text::event(QEvent *event)
{
    const bool isHandled = QLabel::event(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        alignAsThePage();
    }
    const bool isDesktops =
        event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::PaletteChange;
    if (isDesktops && !m_isApplying) {
        apply();
    }
    return isHandled;
}

} // namespace corvane::look
