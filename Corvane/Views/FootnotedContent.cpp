// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/FootnotedContent.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/Text.h"

namespace corvane {

using namespace look;

FootnotedContent::FootnotedContent(std::unique_ptr<QWidget> content, const QString &footnote)
    : m_footnote(new QWidget)
{
    followDesktopFont(*this);
    setFixedWidth(content->maximumWidth());
    auto *text = new Text(footnote, TextStyle::caption, Ink::secondary);
    // Aligned with the commands' texts.
    text->setContentsMargins(control::rowInset, 0, control::rowInset, 0);
    m_footnote->setLayout(padded({menu::horizontalPadding, 0, menu::horizontalPadding, menu::spacing},
                                 column(menu::spacing, {new Divider, text})));
    setLayout(padded({}, column(0, {content.release(), m_footnote})));
}

QSize FootnotedContent::sizeHint() const
{
    // The height of wrapped text depends on the width; size hints ignore that.
    return {maximumWidth(), layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(maximumWidth())
                                                          : layout()->totalSizeHint().height()};
}

void FootnotedContent::removeFootnote()
{
    m_footnote->hide();
}

} // namespace corvane
