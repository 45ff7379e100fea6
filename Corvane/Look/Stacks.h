// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QBoxLayout>
#include <QGridLayout>

#include <initializer_list>
#include <variant>

/// Stacks, so that a view's constructor reads like its list of contents, from the outside in.
namespace corvane::look {

/// Takes the remaining space.
struct Spacer {};

/// An item of a stack. The widget that gets the stack takes ownership.
using Item = std::variant<QWidget *, QLayout *, Spacer>;

/// A column of `items`, `spacing` points between them, filling its width.
[[nodiscard]] QVBoxLayout *column(int spacing, std::initializer_list<Item> items);

/// A row of `items`, `spacing` points between them, centred vertically.
[[nodiscard]] QHBoxLayout *row(int spacing, std::initializer_list<Item> items);

/// Sets the margins of `layout`.
template <typename Layout>
[[nodiscard]] Layout *padded(QMargins padding, Layout *layout)
{
    layout->setContentsMargins(padding);
    return layout;
}

/// `above` drawn over `below`, at the corner or edge given by `alignment`.
[[nodiscard]] QGridLayout *overlay(QLayout *below, QLayout *above, Qt::Alignment alignment);

} // namespace corvane::look
