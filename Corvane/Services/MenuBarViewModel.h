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

/// The hub of the running program: it holds today's lessons and the current action, reloads the lessons once
/// a minute, asks the engine once a second, raises each changeover's alert once, and gives the text beside
/// the bell.
///
/// Main thread only. Each published property tells its observers at every assignment. Nothing here fails
/// towards the caller.
class MenuBarViewModel : public QObject {
    Q_OBJECT

public:
    /// Performs no input or output.
    explicit MenuBarViewModel(const AppEnvironment &environment, QObject *parent = nullptr);

    /// Loads the lessons and then starts the heartbeat, which the backup notifications do not hold up for
    /// longer than a second. Only the first call does anything.
    QCoro::Task<void> start();

    /// Loads today's lessons, has their backup notifications scheduled and asks the engine anew; meanwhile
    /// the heartbeat goes on. A load that fails keeps the lessons of the last one.
    QCoro::Task<void> reloadLessons();

    /// Whether an appearance of the native menu counts: those within a second of one another are one.
    [[nodiscard]] bool admitsMenuAppearance() { return m_menuAppearances.admits(uptime()); }

    /// The text beside the bell; changes whenever the current action is published.
    [[nodiscard]] QString menuTitle() const;

    /// Raises a test banner at once. It neither suppresses a real alert nor is suppressed by one.
    void testNotification();

    [[nodiscard]] const TeachingAction &currentAction() const { return m_currentAction; }
    [[nodiscard]] const std::vector<Lesson> &lessons() const { return m_lessons; }
    /// The user-facing error of the last reload, if it failed.
    [[nodiscard]] const std::optional<QString> &lastErrorMessage() const { return m_lastErrorMessage; }
    [[nodiscard]] const DebugSnapshot &debugSnapshot() const { return m_debugSnapshot; }
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
    [[nodiscard]] bool shouldPresent(const TeachingAction &action) const;
    [[nodiscard]] QString testNotificationMessage() const;
    void updateDebugSnapshot(const TeachingAction &action);

    TeachingAction m_currentAction;
    std::vector<Lesson> m_lessons;
    std::optional<QString> m_lastErrorMessage;
    DebugSnapshot m_debugSnapshot;
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
