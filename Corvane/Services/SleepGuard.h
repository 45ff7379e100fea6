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

/// Whether the machine must stay awake: during a lesson and for an hour before it, or twenty minutes on
/// battery.
[[nodiscard]] bool staysAwake(const std::vector<Lesson> &lessons, Date now, bool isOnBattery);

/// Prevents automatic sleep for the lessons. Main thread only.
class SleepGuard final : public QObject {
    Q_OBJECT

public:
    /// Borrows the objects passed in.
    SleepGuard(const MenuBarViewModel &viewModel, const PowerSource &power, SleepInhibitor &inhibitor,
               QObject *parent = nullptr);

private:
    void update();

    const MenuBarViewModel &m_viewModel;
    const PowerSource &m_power;
    SleepInhibitor &m_inhibitor;
};

} // namespace corvane
