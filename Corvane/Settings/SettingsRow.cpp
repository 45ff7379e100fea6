// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/SettingsRow.h"

#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Text.h"

namespace corvane {

SettingsRow::SettingsRow(const QString &title, const QString &detail, const QString &symbolName,
                         look::Ink tint, QWidget *parent)
    : QWidget(parent)
{
    using namespace look;
    auto *symbol = column(0, {new SymbolView(symbolName, TextStyle::title, tint), Spacer{}});
    auto *texts = column(space::hair, {new Text(title, TextStyle::body, QFont::Bold),
                                       new Text(detail, TextStyle::subheadline, Ink::secondary)});
    auto *line = row(space::medium, {symbol, texts});
    line->setStretch(1, 1);
    setLayout(line);
}

} // namespace corvane
