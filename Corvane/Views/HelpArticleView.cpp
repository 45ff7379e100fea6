// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/HelpArticleView.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Utilities/Product.h"

#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

using namespace look;

Text *selectable(Text *text)
{
    text->setSelectable();
    return text;
}

/// The support address and the web site, as far as they make valid links, in the order in which the articles
/// name them.
std::vector<Text::Link> contactLinks()
{
    std::vector<Text::Link> links;
    const auto add = [&](const QString &text, const std::optional<QUrl> &destination) {
        if (destination) {
            links.push_back({.text = text, .destination = *destination});
        }
    };
    add(product::supportAddress(), product::mailLink(product::supportAddress()));
    add(product::webSite(), product::secureLink(product::webSite()));
    return links;
}

QLayout *sectionStack(const HelpSection &section, const LinkOpener &openLink)
{
    auto *stack = column(
        help::sectionSpacing,
        {heading(selectable(new Text(section.title, TextStyle::title3, QFont::DemiBold, Ink::primary)))});
    for (const QString &point : section.points) {
        auto *text = new Text(point, TextStyle::body);
        text->setLinks(contactLinks(), openLink);
        stack->addLayout(
            label(new SymbolView(u"checkmark.circle.fill"_s, TextStyle::body, Ink::primary), text));
    }
    return stack;
}

QWidget *article(HelpTopic topic, const LinkOpener &openLink)
{
    auto *stack = column(
        help::articleSpacing,
        {label(new SymbolView(symbolName(topic), TextStyle::largeTitle, Ink::accent),
               heading(selectable(new Text(title(topic), TextStyle::largeTitle, QFont::Bold, Ink::accent))),
               space::medium),
         selectable(new Text(summary(topic), TextStyle::title3))});
    for (const HelpSection &section : sections(topic)) {
        stack->addLayout(sectionStack(section, openLink));
    }
    stack->addStretch();
    constexpr int padding = help::articlePadding;
    auto *content = new QWidget;
    content->setLayout(padded({padding, padding, padding, padding}, stack));
    content->setMaximumWidth(help::articleWidth);
    return content;
}

} // namespace

HelpArticleView::HelpArticleView(HelpTopic topic, const LinkOpener &openLink, QWidget *parent)
    : look::ScrollView(title(topic), article(topic, openLink), parent)
{
    // For a word wider than the window.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

} // namespace corvane
