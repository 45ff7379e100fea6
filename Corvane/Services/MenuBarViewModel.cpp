// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/MenuBarViewModel.h"

#include "Corvane/Utilities/Clock.h"
#include "Corvane/Utilities/PlainText.h"
#include "Corvane/Utilities/Spawn.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr Seconds lessonReloadInterval{60};

/// How long the start of the heartbeat waits for the first backup notifications.
constexpr Seconds firstBackupsTimeout{1};

/// Identifies a lesson across reloads, which give it a new identifier.
std::optional<QString> lessonIdentity(const std::optional<Lesson> &lesson)
{
    if (!lesson) {
        return std::nullopt;
    }
    return lesson->studentName + u'|' + rawValue(lesson->platform) + u'|' +
           QString::number(static_cast<qint64>(secondsSince1970(lesson->startTime)));
}

/// Identifies an alert: the phase and its lesson.
std::optional<QString> notificationKey(const TeachingAction &action, LessonState state)
{
    const auto identity = lessonIdentity(action.lessonOrNext());
    return identity ? std::optional(rawValue(state) + u'|' + *identity) : std::nullopt;
}

std::optional<QString> lessonDescription(const std::optional<Lesson> &lesson)
{
    return lesson ? std::optional(lesson->studentName + u" ("_s + rawValue(lesson->platform) + u')')
                  : std::nullopt;
}

QString formatCountdown(double seconds)
{
    const auto whole = static_cast<qint64>(seconds);
    return whole < 60 ? QString::number(whole) + u's'
                      : QString::number(whole / 60) + u"m "_s + QString::number(whole % 60) + u's';
}

bool isChangeover(LessonState state)
{
    switch (state) {
    case LessonState::wrapUp:
    case LessonState::prepare:
    case LessonState::oneMinuteWarning:
    case LessonState::joinPlatform:
    case LessonState::startNow:
        return true;
    case LessonState::scheduled:
    case LessonState::teaching:
    case LessonState::feedback:
    case LessonState::completed:
        return false;
    }
    Q_UNREACHABLE();
}

bool shouldPresent(const TeachingAction &action, const std::optional<QString> &lastPresentedNotificationKey)
{
    return isChangeover(action.state) && action.lessonOrNext() &&
           notificationKey(action, action.state) != lastPresentedNotificationKey;
}

} // namespace

MenuBarViewModel::MenuBarViewModel(const AppEnvironment &environment, QObject *parent)
    : QObject(parent)
    , m_currentAction(TeachingAction::idle(currentDate(), std::nullopt))
    , m_snapshotSource{.time = m_currentAction.effectiveDate,
                       .action = m_currentAction,
                       .lastPresentedMessage = std::nullopt,
                       .lastPresentedNotificationKey = std::nullopt,
                       .lastCalendarReloadDescription = std::nullopt}
    , m_environment(environment)
{
}

QCoro::Task<void> MenuBarViewModel::start()
{
    if (m_hasStarted) {
        co_return;
    }
    m_hasStarted = true;
    m_environment.debugLogger.log(u"app started"_s);
    const QPointer self(this);
    co_await reloadLessons();
    if (self != nullptr) {
        startHeartbeat();
    }
}

void MenuBarViewModel::startHeartbeat()
{
    if (std::exchange(m_isBeating, true)) {
        return;
    }
    m_environment.scheduler.start([self = QPointer(this)]() -> QCoro::Task<void> {
        if (self != nullptr) {
            self->heartbeat();
        }
        co_return;
    });
}

QCoro::Task<void> MenuBarViewModel::startHeartbeatAfter(QPointer<MenuBarViewModel> self, Seconds timeout)
{
    co_await wait(timeout);
    if (self != nullptr) {
        self->startHeartbeat();
    }
}

QCoro::Task<void> MenuBarViewModel::reloadLessons()
{
    const QPointer self(this);
    LessonScheduleResult loaded = co_await m_environment.scheduleStore.lessonsForToday();
    if (self == nullptr) {
        co_return;
    }
    if (loaded) {
        std::vector<Lesson> today = *std::move(loaded);
        m_lessons = today;
        Q_EMIT lessonsChanged();
        m_lastErrorMessage.reset();
        Q_EMIT lastErrorMessageChanged();
        m_lastLessonReloadDate = currentDate();
        const QString count = QString::number(m_lessons.size());
        m_lastCalendarReloadDescription = m_lessons.empty()
                                              ? u"No lessons found today"_s
                                              : u"Loaded "_s + count + u" lesson(s) for today"_s;
        m_environment.debugLogger.log(u"calendar reload success lessons="_s + count + u" window=today"_s);
        if (m_hasStarted && !m_isBeating) {
            // The lessons are known, so a notification service that hangs must not delay their banners.
            spawn(startHeartbeatAfter(self, firstBackupsTimeout));
        }
        co_await m_environment.systemNotificationScheduler.scheduleBackupNotifications(std::move(today));
        if (self == nullptr) {
            co_return;
        }
    } else {
        m_lastErrorMessage = u"Could not load today's lessons."_s;
        Q_EMIT lastErrorMessageChanged();
        m_lastCalendarReloadDescription = u"Calendar reload failed"_s;
        m_environment.debugLogger.log(u"calendar reload failed error="_s +
                                      plainText(localizedDescription(loaded.error())));
    }
    refreshAction(true);
}

void MenuBarViewModel::heartbeat()
{
    const Date now = currentDate();
    if (m_lastLessonReloadDate && now - *m_lastLessonReloadDate < lessonReloadInterval) {
        refreshAction(true);
        return;
    }
    // Until a load succeeds, each second starts another, because the teacher waits for the lessons.
    spawn(reloadLessons());
}

void MenuBarViewModel::refreshAction(bool shouldNotify)
{
    TeachingAction action = m_environment.workflowEngine.action(m_lessons);
    const bool unchanged = action.state == m_currentAction.state &&
                           lessonIdentity(action.lesson) == lessonIdentity(m_currentAction.lesson);
    m_currentAction = std::move(action);
    Q_EMIT currentActionChanged();
    updateDebugSnapshot(m_currentAction);

    if (!shouldNotify || unchanged || !shouldPresent(m_currentAction, m_lastPresentedNotificationKey)) {
        return;
    }
    // A copy, because observers of the alert may change the current action.
    const TeachingAction announced = m_currentAction;
    m_environment.debugLogger.log(u"notification should fire state="_s + rawValue(announced.state) +
                                  u" message=\""_s + plainText(announced.message) + u'"');
    m_environment.notificationPresenter.present(announced);
    m_lastPresentedAction = announced;
    m_lastPresentedNotificationKey = notificationKey(announced, announced.state);
    updateDebugSnapshot(announced);
}

QString MenuBarViewModel::menuTitle() const
{
    const auto &lesson = m_currentAction.lessonOrNext();
    if (!lesson) {
        return u"Quillet"_s;
    }
    switch (m_currentAction.state) {
    case LessonState::scheduled:
    case LessonState::teaching:
        return lesson->studentName;
    case LessonState::wrapUp:
        return u"Wrap up"_s;
    case LessonState::prepare:
        return u"Prepare"_s;
    case LessonState::oneMinuteWarning:
        return u"1 min"_s;
    case LessonState::joinPlatform:
        return u"Join now"_s;
    case LessonState::startNow:
        return u"Start now"_s;
    case LessonState::feedback:
        return u"Feedback"_s;
    case LessonState::completed:
        return u"Done"_s;
    }
    Q_UNREACHABLE();
}

void MenuBarViewModel::testNotification()
{
    const std::optional<Lesson> first = m_lessons.empty() ? std::nullopt : std::optional(m_lessons.front());
    const TeachingAction action{.state = LessonState::joinPlatform,
                                .lesson = first,
                                .nextLesson = first,
                                .message = testNotificationMessage(),
                                .priority = TeachingActionPriority::urgent,
                                .effectiveDate = currentDate(),
                                .nextTransitionDate = std::nullopt};
    m_environment.notificationPresenter.present(action);
    m_environment.debugLogger.log(u"test notification requested message=\""_s + plainText(action.message) +
                                  u'"');
}

QString MenuBarViewModel::testNotificationMessage() const
{
    return m_lessons.empty() ? u"Notification system check"_s
                             : LessonWorkflowEngine::joinMessage(m_lessons.front());
}

void MenuBarViewModel::updateDebugSnapshot(const TeachingAction &action)
{
    m_snapshotSource = {.time = currentDate(),
                        .action = action,
                        .lastPresentedMessage = m_lastPresentedAction
                                                    ? std::optional(m_lastPresentedAction->message)
                                                    : std::nullopt,
                        .lastPresentedNotificationKey = m_lastPresentedNotificationKey,
                        .loadedLessonCount = static_cast<qsizetype>(m_lessons.size()),
                        .lastCalendarReloadDescription = m_lastCalendarReloadDescription};
    Q_EMIT debugSnapshotChanged();
}

DebugSnapshot MenuBarViewModel::debugSnapshot() const
{
    const SnapshotSource &source = m_snapshotSource;
    const TeachingAction &action = source.action;
    std::optional<double> seconds;
    if (action.nextTransitionDate) {
        seconds = std::max((*action.nextTransitionDate - source.time).count(), 0.0);
    }
    const bool isNext = shouldPresent(action, source.lastPresentedNotificationKey);
    return {.currentTime = source.time,
            .currentLessonDescription = lessonDescription(action.lesson),
            .nextLessonDescription = lessonDescription(action.nextLesson),
            .countdownDescription = seconds ? formatCountdown(*seconds) : u"None"_s,
            .engineState = action.state,
            .secondsUntilNextEvent = seconds,
            .lastNotificationDescription = source.lastPresentedMessage,
            .nextNotificationDescription = isNext ? std::optional(action.message) : std::nullopt,
            .loadedLessonCount = source.loadedLessonCount,
            .lastCalendarReloadDescription = source.lastCalendarReloadDescription,
            .logPath = m_environment.debugLogger.logURL().toLocalFile()};
}

} // namespace corvane
