// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/Bell.h"

#include "Corvane/Services/BellNotice.h"

#include <QLocale>

#include <utility>

namespace corvane {

Bell::Bell(const MenuBarViewModel &viewModel, StatusItem &item, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_item(item)
{
    connect(&viewModel, &MenuBarViewModel::currentActionChanged, this, &Bell::update);
    update();
}

void Bell::setGaps(const QString &gaps)
{
    m_gaps = gaps;
    update();
}

void Bell::update()
{
    const TeachingAction &action = m_viewModel.currentAction();
    Subject subject{
        .state = action.state, .lesson = action.lessonOrNext(), .hasBegun = false, .gaps = m_gaps};
    if (subject.lesson) {
        subject.lesson->id = {};
        subject.hasBegun = action.effectiveDate >= subject.lesson->startTime;
    }
    if (subject == m_told) {
        return;
    }
    m_told = std::move(subject);
    m_item.setTitle(m_viewModel.menuTitle());
    m_item.setNotice(bellNotice(action, m_gaps, QLocale()));
}

} // namespace corvane
