// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/AboutCorvaneView.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Badge.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/FlowRow.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Utilities/InformationDictionary.h"
#include "Corvane/Utilities/Product.h"

#include <QLayout>
#include <QPushButton>

#include <optional>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

using namespace look;

Text *centred(Text *text)
{
    text->setAlignment(Qt::AlignCenter);
    text->setBalanced();
    return text;
}

QLayout *middle(QWidget *widget)
{
    return row(0, {Spacer{}, widget, Spacer{}});
}

/// A button that opens `destination`; nullptr without one.
QPushButton *link(const QString &text, Role role, const std::optional<QUrl> &destination,
                  const LinkOpener &openLink)
{
    if (!destination) {
        return nullptr;
    }
    auto *button = pushButton(text, role);
    button->setToolTip(destination->toDisplayString());
    QObject::connect(button, &QAbstractButton::clicked, button,
                     [destination = *destination, openLink] { openLink(destination); });
    return button;
}

QLayout *nameBlock(const InformationDictionary &information)
{
    return column(about::nameSpacing,
                  {heading(centred(new Text(u"Quillet"_s, TextStyle::title, QFont::Bold))),
                   centred(new Text(u"Start on time."_s, TextStyle::headline)),
                   centred(new Text(versionLine(information), TextStyle::caption, Ink::secondary))});
}

QLayout *description()
{
    auto *text = centred(new Text(u"A calm, reliable teaching assistant for finishing one lesson well and "
                                  "starting the next on time."_s,
                                  TextStyle::body, Ink::secondary));
    text->setMaximumWidth(about::descriptionWidth);
    // The high stretch factor gives the text all width up to its maximum; the spaces share the rest.
    auto *line = row(0, {});
    line->addStretch(1);
    line->addWidget(text, 10'000);
    line->addStretch(1);
    return line;
}

QLayout *actionRow(const UserManualPDF &manual, const LinkOpener &openLink)
{
    auto *userManual = pushButton(u"User Manual"_s, Role::bordered, u"book"_s);
    QObject::connect(userManual, &QAbstractButton::clicked, userManual, [&manual] { manual.open(); });
    auto *actions =
        new FlowRow(about::actionSpacing, about::actionSpacing, FlowRow::Ends::centred, {userManual});
    if (auto *contact = link(u"Contact Support"_s, Role::prominent,
                             product::mailLink(product::supportAddress()), openLink)) {
        actions->addWidget(contact);
    }
    return actions;
}

/// A link of the footer, or plain text if it has no destination.
QLayout *footerLink(const QString &text, const std::optional<QUrl> &destination, const LinkOpener &openLink)
{
    if (auto *button = link(text, Role::quietLink, destination, openLink)) {
        return middle(button);
    }
    return column(0, {centred(new Text(text, TextStyle::caption, Ink::secondary))});
}

QLayout *footer(const LinkOpener &openLink)
{
    const auto webSite = product::secureLink(product::webSite());
    return column(
        about::footerSpacing,
        {centred(new Text(u"Ordwin Software"_s, TextStyle::caption, Ink::secondary)),
         footerLink(webSite ? webSite->host() : product::webSite(), webSite, openLink),
         footerLink(product::supportAddress(), product::mailLink(product::supportAddress()), openLink)});
}

QWidget *content(const UserManualPDF &manual, const InformationDictionary &information,
                 const LinkOpener &openLink)
{
    auto *stack = column(about::spacing, {middle(new Badge(u"bell.badge.fill"_s)), nameBlock(information),
                                          description(), actionRow(manual, openLink), footer(openLink)});
    auto *view = new QWidget;
    // Centred in a window taller than its content.
    view->setLayout(padded({about::padding, about::padding, about::padding, about::padding},
                           column(0, {Spacer{}, stack, Spacer{}})));
    return view;
}

} // namespace

QString versionLine(const InformationDictionary &information)
{
    return u"Version "_s + information.text(u"CFBundleShortVersionString"_s).value_or(u"1.0"_s);
}

AboutCorvaneView::AboutCorvaneView(const UserManualPDF &manual, const InformationDictionary &information,
                                   const LinkOpener &openLink, QWidget *parent)
    : look::ScrollView(u"About Quillet"_s, content(manual, information, openLink), parent)
{
    // For a word wider than the window.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    followDesktopFont(*this);
}

int AboutCorvaneView::heightForWidth(int width) const
{
    return widget()->layout()->totalHeightForWidth(width);
}

} // namespace corvane
