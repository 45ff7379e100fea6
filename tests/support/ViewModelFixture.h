// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/WorkflowTransitionScheduler.h"
#include "Corvane/Utilities/Spawn.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/FakeUserNotificationCenter.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Recording.h"
#include "tests/support/Samples.h"
#include "tests/support/ScriptedScheduleStore.h"
#include "tests/support/TemporarySettings.h"

#include <QTemporaryDir>

#include <memory>
#include <utility>
#include <vector>

namespace corvane {

/// A view model over a scripted schedule and a manual clock.
struct ViewModelFixture {
    explicit ViewModelFixture(const char *time) : clock(at(time)) {}

    ManualClock clock;
    QTemporaryDir library;
    TemporarySettings temporary;
    FakeLoginItem loginItem;
    AppSettings settings{temporary.store(), temporary.store(), loginItem};
    DebugLogService logger{library.path()};
    ScriptedScheduleStore store;
    RecordingPresenter presenter;
    WorkflowTransitionScheduler scheduler;
    FakeUserNotificationCenter center;
    SystemNotificationScheduler backups{center, logger, QStringLiteral("quillet.backup.")};
    SystemDateProvider dateProvider;
    std::unique_ptr<MenuBarViewModel> model = std::make_unique<MenuBarViewModel>(
        AppEnvironment{.scheduleStore = store,
                       .workflowEngine = LessonWorkflowEngine(dateProvider),
                       .notificationPresenter = presenter,
                       .scheduler = scheduler,
                       .systemNotificationScheduler = backups,
                       .dateProvider = dateProvider,
                       .debugLogger = logger,
                       .settings = settings});

    void start(std::vector<Lesson> lessons)
    {
        store.answer = std::move(lessons);
        spawn(model->start());
        clock.advance(Seconds{0});
    }
};

} // namespace corvane
