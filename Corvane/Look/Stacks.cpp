// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Stacks.h"

namespace corvane::look {

namespace {

template <typename Box>
Box *fill(Box *box, int spacing, std::initializer_list<Item> items, Qt::Alignment alignment)
{
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(spacing);
    for (const Item &item : items) {
        if (QWidget *const *widget = std::get_if<QWidget *>(&item)) {
            box->addWidget(*widget, 0, alignment);
        } else if (QLayout *const *layout = std::get_if<QLayout *>(&item)) {
            box->addLayout(*layout);
        } else {
            box->addStretch();
        }
    }
    return box;
}

} // namespace

QVBoxLayout *column(int spacing, std::initializer_list<Item> items)
{
    return fill(new QVBoxLayout, spacing, items, {});
}

QHBoxLayout *row(int spacing, std::initializer_list<Item> items)
{
    return fill(new QHBoxLayout, spacing, items, Qt::AlignVCenter);
}

QGridLayout *overlay(QLayout *below, QLayout *above, Qt::Alignment alignment)
{
    auto *grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addLayout(below, 0, 0);
    grid->addLayout(above, 0, 0, alignment);
    return grid;
}

} // namespace corvane::look
