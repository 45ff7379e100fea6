// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Scrolling.h"

namespace corvane::look {

QScrollArea *scrolling(QWidget *content)
{
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // it gets the keys that its content ignores
    area->setWidgetResizable(true);
    area->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    area->viewport()->setBackgroundRole(QPalette::Window);
    area->setWidget(content);
    content->setAutoFillBackground(false);
    return area;
}

} // namespace corvane::look
