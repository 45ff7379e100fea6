// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QComboBox;
class QLineEdit;
class QPushButton;
class QWidget;

/// The toolkit's controls as the views use them. How they look is the Style's matter.
namespace corvane::look {

/// What a control is among those of its kind.
enum class Role {
    bordered,  ///< an ordinary button
    prominent, ///< the one that leads on
    command,   ///< a row of a list of commands: no edge, the text at its beginning
    quietLink, ///< a small text that stands back, underlined
    segment,   ///< one of a few choices beside one another
    search,    ///< a line to type what is sought
};

void setRole(QWidget &control, Role role);
[[nodiscard]] Role roleOf(const QWidget *control);

/// The symbol beside a button's text, which is drawn in the text's colour; empty for none.
void setSymbol(QWidget &control, const QString &name);
[[nodiscard]] QString symbolOf(const QWidget *control);

/// The keys that press a command, as the desktop writes them; shown at its end.
void setKeyText(QWidget &control, const QString &keys);
[[nodiscard]] QString keyTextOf(const QWidget *control);

/// A button that does something. Its text is its name for a screen reader.
[[nodiscard]] QPushButton *pushButton(const QString &text, Role role = Role::bordered,
                                      const QString &symbolName = {});

/// One of several choices, of which the chosen one is seen; the first is chosen. `label` is its name for a
/// screen reader.
[[nodiscard]] QComboBox *picker(const QString &label, const QStringList &choices);

/// A line to type in. `placeholder` is shown while it is empty, and is its name for a screen reader.
[[nodiscard]] QLineEdit *textField(const QString &placeholder);

/// A line to type what is sought. Escape, or the cross at its end, empties it.
[[nodiscard]] QLineEdit *searchField(const QString &prompt);

} // namespace corvane::look
