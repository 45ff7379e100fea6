// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/Lesson.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace corvane {

/// Asks the notification agent to restart the program if it crashes while lessons remain: tells it until when
/// they do, and says goodbye when the program ends normally. Main thread only. Failures are only logged,
/// because the program works without this.
///
/// Greets each new agent, and starts an agent that has left while lessons remain. An agent from before an
/// update does not know the greeting: that is logged, and the next agent is greeted.
class AgentGreeting final : public QObject {
    Q_OBJECT

public:
    /// How long an agent that left the bus may take to come back by itself before it is started.
    static constexpr std::chrono::milliseconds defaultPatience{5000};

    /// `log` receives single lines. Does not call the agent before setLessons().
    AgentGreeting(QDBusConnection sessionBus, std::function<void(const QString &)> log,
                  std::chrono::milliseconds patience = defaultPatience, QObject *parent = nullptr);
    /// Says goodbye; blocks for at most half a second if the bus hangs. After this, a crash leads to no
    /// restart.
    ~AgentGreeting() override;

    /// Sets today's lessons. Called after each load, so that a failed greeting is tried again.
    void setLessons(const std::vector<Lesson> &lessons);

private:
    void greet();
    void handleAnswer(const QDBusMessage &answer, int agent);

    QDBusConnection m_bus;
    std::function<void(const QString &)> m_log;
    QTimer m_patience;
    std::optional<Date> m_lessonsUntil;
    /// The end of the lessons as told to the agent, in seconds since 1970; 0 for none, -1 if unknown.
    qint64 m_told = 0;
    int m_agentNumber = 0;    ///< counts agents, so that answers of earlier ones are ignored
    bool m_isUnknown = false; ///< whether this agent does not know the greeting
};

} // namespace corvane
