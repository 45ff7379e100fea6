// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/HelpArticleView.h"

#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Text.h"

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

using namespace look;

QLayout *sectionStack(const HelpSection &section)
{
    auto *stack = column(help::sectionSpacing,
                         {new Text(section.title, TextStyle::title3, QFont::DemiBold, Ink::primary)});
    for (const QString &point : section.points) {
        stack->addLayout(label(new SymbolView(u"checkmark.circle.fill"_s, TextStyle::body, Ink::primary),
                               new Text(point, TextStyle::body)));
    }
    return stack;
}

QWidget *article(HelpTopic topic)
{
    auto *stack =
        column(help::articleSpacing,
               {label(new SymbolView(symbolName(topic), TextStyle::largeTitle, Ink::accent),
                      new Text(title(topic), TextStyle::largeTitle, QFont::Bold, Ink::accent), space::medium),
                new Text(summary(topic), TextStyle::title3)});
    for (const HelpSection &section : sections(topic)) {
        stack->addLayout(sectionStack(section));
    }
    stack->addStretch();
    constexpr int padding = help::articlePadding;
    auto *content = new QWidget;
    content->setLayout(padded({padding, padding, padding, padding}, stack));
    content->setMaximumWidth(help::articleWidth);
    return content;
}

} // namespace

HelpArticleView::HelpArticleView(HelpTopic topic, QWidget *parent)
    : look::ScrollView(title(topic), article(topic), parent)
{
    // Where a long word is wider than the window.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

} // namespace corvane
