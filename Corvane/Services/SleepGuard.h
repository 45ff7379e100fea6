// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"
#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/PowerSource.h"
#include "Corvane/Services/SleepInhibitor.h"
#include "Corvane/Utilities/Clock.h"

#include <QObject>

#include <vector>

namespace corvane {

/// Whether the machine is to stay awake: while a lesson is under way, and an hour before one begins; on
/// battery twenty minutes.
[[nodiscard]] bool staysAwake(const std::vector<Lesson> &lessons, Date now, bool isOnBattery);

/// Keeps a machine that would fall asleep by itself awake for the lessons. Main thread only.
class SleepGuard final : public QObject {
    Q_OBJECT

public:
    /// What is passed is borrowed.
    SleepGuard(const MenuBarViewModel &viewModel, const PowerSource &power, SleepInhibitor &inhibitor,
               QObject *parent = nullptr);

private:
    void update();

    const MenuBarViewModel &m_viewModel;
    const PowerSource &m_power;
    SleepInhibitor &m_inhibitor;
};

} // namespace corvane
