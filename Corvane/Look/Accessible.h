// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QString>
#include <QWidget>

/// Tells assistive tools about the program's own widgets. The toolkit describes its own controls; for derived
/// widgets it reports no role, and the tool tip as their description, which here repeats the name.
///
/// Unless a role is set, a widget of this program is reported as a window if it is one, as text if it is a
/// label, and as a group if it has a name; a check box has the size of its switch.
namespace corvane::look {

/// Makes the program's own widgets known to assistive tools. Called once per application, by the style.
void installAccessibility();

/// Reports `widget` as `role` from now on.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);

/// Marks `text` as the heading of what follows it.
template <typename Text>
[[nodiscard]] Text *heading(Text *text)
{
    setAccessibleRole(*text, QAccessible::Heading);
    return text;
}

/// Makes a screen reader say `text` now, wherever the keyboard focus is.
void announce(QWidget &widget, const QString &text);

/// Sets the description of `widget`. A screen reader says it when `widget` has the keyboard focus.
void describe(QWidget &widget, const QString &description);

/// Makes a screen reader read out `widget` each time it appears. Called once, when the widget is built.
void setAnnounced(QWidget &widget);

/// Called by the showEvent() of such a widget; `text` is its content.
void announceShown(QWidget &widget, const QString &text);

} // namespace corvane::look
