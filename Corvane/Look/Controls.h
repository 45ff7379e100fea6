// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QComboBox;
class QLineEdit;
class QPushButton;
class QWidget;

/// The toolkit's controls as the views use them. `Style` draws them.
namespace corvane::look {

/// The kind of a control.
enum class Role {
    bordered,  ///< an ordinary button
    prominent, ///< the primary action
    command,   ///< a row in a list of commands: no edge, text at the start
    quietLink, ///< a small, unobtrusive, underlined text
    segment,   ///< one choice of a segmented control
    search,    ///< a search field
};

void setRole(QWidget &control, Role role);
[[nodiscard]] Role roleOf(const QWidget *control);

/// The symbol beside a button's text, drawn in the text's colour; empty for none.
void setSymbol(QWidget &control, const QString &name);
[[nodiscard]] QString symbolOf(const QWidget *control);

/// The keys that trigger a command, as the desktop writes them; shown at its end.
void setKeyText(QWidget &control, const QString &keys);
[[nodiscard]] QString keyTextOf(const QWidget *control);

/// A push button. Its text is its name for a screen reader.
[[nodiscard]] QPushButton *pushButton(const QString &text, Role role = Role::bordered,
                                      const QString &symbolName = {});

/// A combo box, with the first choice selected. `label` is its name for a screen reader.
[[nodiscard]] QComboBox *picker(const QString &label, const QStringList &choices);

/// A line edit. `placeholder` is shown while it is empty, and is its name for a screen reader.
[[nodiscard]] QLineEdit *textField(const QString &placeholder);

/// A search field. Escape, or the cross at its end, clears it.
[[nodiscard]] QLineEdit *searchField(const QString &prompt);

} // namespace corvane::look
