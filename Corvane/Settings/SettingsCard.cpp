// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/SettingsCard.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Text.h"

namespace corvane {

SettingsCard::SettingsCard(const QString &title, const QString &symbolName, QLayout *content, QWidget *parent)
    : QWidget(parent)
{
    using namespace look;
    setAccessibleName(title);
    auto *line = label(new SymbolView(symbolName, TextStyle::headline, Ink::accent),
                       heading(new Text(title, TextStyle::headline)));
    auto *inside = padded({card::padding, card::padding, card::padding, card::padding},
                          column(card::spacing, {line, content}));
    setLayout(column(0, {new Surface(card::cornerRadius, cardColor, inside)}));
}

} // namespace corvane
