// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QString>
#include <QWidget>

/// What assistive tools are told of the program's own widgets. The toolkit knows its own controls; of the
/// rest it tells no role, and as a description the hover help, which here says the name once more.
///
/// Without a role of its own a widget of this program is a window where it is one, a text where it is a
/// label, and a group where it has a name; a check box is as large as its switch.
namespace corvane::look {

/// Has assistive tools know the program's own widgets. Once for an application; the style does it.
void installAccessibility();

/// Has `widget` be a `role` from now on.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);

/// `text` as the heading of what stands below it.
template <typename Text>
[[nodiscard]] Text *heading(Text *text)
{
    setAccessibleRole(*text, QAccessible::Heading);
    return text;
}

/// Has a screen reader say `text` now, wherever the keyboard is.
void announce(QWidget &widget, const QString &text);

/// Describes `widget` from now on so. A screen reader says it when `widget` has the keyboard.
void describe(QWidget &widget, const QString &description);

/// Has a screen reader say what stands in `widget` whenever that comes up. Called when it is made.
void setAnnounced(QWidget &widget);

/// Called by the showEvent() of such a widget; `text` is what stands in it.
void announceShown(QWidget &widget, const QString &text);

} // namespace corvane::look
