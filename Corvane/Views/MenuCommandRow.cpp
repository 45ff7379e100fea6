// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuCommandRow.h"

#include "Corvane/Look/Controls.h"
#include "Corvane/Look/Look.h"

#include <QFontMetrics>
#include <QShortcut>

namespace corvane {

using namespace look;

MenuCommandRow::MenuCommandRow(const QString &text, QWidget *parent) : QPushButton(text, parent)
{
    setRole(*this, Role::command);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

void MenuCommandRow::setKeys(const QKeySequence &keys)
{
    // Not QAbstractButton's shortcut: it animates a press before it acts.
    auto *shortcut = new QShortcut(keys, this);
    // Also works while another window of the program has the focus; inactive while the button is hidden.
    shortcut->setContext(Qt::ApplicationShortcut);
    connect(shortcut, &QShortcut::activated, this, &QAbstractButton::click);
    setKeyText(*this, keys.toString(QKeySequence::NativeText));
    updateGeometry();
}

int MenuCommandRow::heightForWidth(int width) const
{
    if (sizeHint().width() <= width) {
        return sizeHint().height();
    }
    const QRect room(0, 0, width - 2 * control::rowInset, 0);
    return QFontMetrics(font()).boundingRect(room, Qt::TextWordWrap, text()).height() +
           2 * control::rowPadding;
}

} // namespace corvane
