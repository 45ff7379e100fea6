// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/App/AppEnvironment.h"
#include "Corvane/Models/DebugSnapshot.h"
#include "Corvane/Models/TeachingAction.h"
#include "Corvane/Utilities/RequestGate.h"

#include <qcoro/qcorotask.h>

#include <QObject>
#include <QPointer>

#include <optional>
#include <vector>

namespace corvane {

/// The hub of the running program: holds today's lessons and the current action, reloads the lessons once a
/// minute, asks the engine once a second, raises each changeover's alert once and provides the text beside
/// the bell.
///
/// Main thread only. Each published property emits its signal at every assignment, even of an equal value. No
/// call reports an error to the caller.
class MenuBarViewModel : public QObject {
    Q_OBJECT

public:
    /// Does no input or output.
    explicit MenuBarViewModel(const AppEnvironment &environment, QObject *parent = nullptr);

    /// Loads the lessons, then starts the heartbeat. Backup notifications delay the heartbeat by at most a
    /// second. Only the first call has an effect.
    QCoro::Task<void> start();

    /// Loads today's lessons, schedules their backup notifications and asks the engine again; the heartbeat
    /// continues meanwhile. A failed load keeps the lessons of the last successful one.
    QCoro::Task<void> reloadLessons();

    /// Whether to act on an appearance of the native menu: appearances within a second of one another count
    /// once.
    [[nodiscard]] bool admitsMenuAppearance() { return m_menuAppearances.admits(uptime()); }

    /// The text beside the bell; may change whenever the current action is published.
    [[nodiscard]] QString menuTitle() const;

    /// Shows a test banner at once. It neither suppresses a real alert nor is suppressed by one.
    void testNotification();

    [[nodiscard]] const TeachingAction &currentAction() const { return m_currentAction; }
    [[nodiscard]] const std::vector<Lesson> &lessons() const { return m_lessons; }
    /// The user-facing error of the last reload, if it failed.
    [[nodiscard]] const std::optional<QString> &lastErrorMessage() const { return m_lastErrorMessage; }
    /// Of the last assignment. Built here, because it is assigned every second and seldom read.
    [[nodiscard]] DebugSnapshot debugSnapshot() const;
    [[nodiscard]] AppSettings &settings() const { return m_environment.settings; }

Q_SIGNALS:
    void currentActionChanged();
    void lessonsChanged();
    void lastErrorMessageChanged();
    void debugSnapshotChanged();

private:
    void startHeartbeat();
    static QCoro::Task<void> startHeartbeatAfter(QPointer<MenuBarViewModel> self, Seconds timeout);
    void heartbeat();
    void refreshAction(bool shouldNotify);
    [[nodiscard]] QString testNotificationMessage() const;
    void updateDebugSnapshot(const TeachingAction &action);

    /// Everything that a debug snapshot is built from, as it was when the snapshot was assigned.
    struct SnapshotSource {
        Date time;
        TeachingAction action;
        std::optional<QString> lastPresentedMessage;
        std::optional<QString> lastPresentedNotificationKey;
        qsizetype loadedLessonCount = 0;
        std::optional<QString> lastCalendarReloadDescription;
    };

    TeachingAction m_currentAction;
    std::vector<Lesson> m_lessons;
    std::optional<QString> m_lastErrorMessage;
    SnapshotSource m_snapshotSource;
    AppEnvironment m_environment;
    std::optional<TeachingAction> m_lastPresentedAction;
    std::optional<QString> m_lastPresentedNotificationKey;
    RequestGate m_menuAppearances{Seconds{1}};
    bool m_hasStarted = false;
    bool m_isBeating = false;
    std::optional<Date> m_lastLessonReloadDate;
    std::optional<QString> m_lastCalendarReloadDescription;
};

} // namespace corvane
