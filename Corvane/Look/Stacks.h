// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QBoxLayout>
#include <QGridLayout>

#include <initializer_list>
#include <variant>

/// Stacks: a view's constructor reads like its list of contents, from the outside in.
namespace corvane::look {

/// Space that takes what is left over.
struct Spacer {};

/// Something that stands in a stack; the stack's widget takes it over.
using Item = std::variant<QWidget *, QLayout *, Spacer>;

/// `items` below one another, `spacing` points between them, leading-aligned.
[[nodiscard]] QVBoxLayout *column(int spacing, std::initializer_list<Item> items);

/// `items` beside one another, `spacing` points between them, centred on a line.
[[nodiscard]] QHBoxLayout *row(int spacing, std::initializer_list<Item> items);

/// `layout` with space about it.
template <typename Layout>
[[nodiscard]] Layout *padded(QMargins padding, Layout *layout)
{
    layout->setContentsMargins(padding);
    return layout;
}

/// `above` over `below`, in the corner or along the edge that `alignment` tells.
[[nodiscard]] QGridLayout *overlay(QLayout *below, QLayout *above, Qt::Alignment alignment);

} // namespace corvane::look
