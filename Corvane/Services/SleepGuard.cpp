// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/SleepGuard.h"

#include <algorithm>

namespace corvane {

bool staysAwake(const std::vector<Lesson> &lessons, Date now, bool isOnBattery)
{
    const Seconds lead{isOnBattery ? 20.0 * 60 : 60.0 * 60};
    return std::ranges::any_of(lessons, [now, lead](const Lesson &lesson) {
        return lesson.startTime - lead <= now && now < lesson.endTime();
    });
}

SleepGuard::SleepGuard(const MenuBarViewModel &viewModel, const PowerSource &power, SleepInhibitor &inhibitor,
                       QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_power(power)
    , m_inhibitor(inhibitor)
{
    connect(&viewModel, &MenuBarViewModel::lessonsChanged, this, &SleepGuard::update);
    // Emitted at each heartbeat.
    connect(&viewModel, &MenuBarViewModel::currentActionChanged, this, &SleepGuard::update);
    connect(&power, &PowerSource::changed, this, &SleepGuard::update);
    update();
}

void SleepGuard::update()
{
    if (staysAwake(m_viewModel.lessons(), currentDate(), m_power.isOnBattery())) {
        m_inhibitor.keepAwake();
    } else {
        m_inhibitor.letSleep();
    }
}

} // namespace corvane
