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

/// Has the notification agent bring the program back should it crash while lessons remain: says until when
/// that is, and goodbye when the program ends as it was told to. Main thread only; nothing here fails, since
/// the program can do without.
///
/// An agent that comes up anew knows nothing and is told again. One that goes while lessons remain is started
/// again. One of before an update does not know the greeting: that is logged, and its successor is told.
class AgentGreeting final : public QObject {
    Q_OBJECT

public:
    /// For so long an agent that has gone may come back by itself.
    static constexpr std::chrono::milliseconds defaultPatience{5000};

    /// `log` takes a line. Speaks to nobody before it is given lessons.
    AgentGreeting(QDBusConnection sessionBus, std::function<void(const QString &)> log,
                  std::chrono::milliseconds patience = defaultPatience, QObject *parent = nullptr);
    /// Says goodbye. What is destroyed after this may crash.
    ~AgentGreeting() override;

    /// These are today's lessons from now on. Called after each load: what failed is tried again.
    void setLessons(const std::vector<Lesson> &lessons);

private:
    void greet();
    void handleAnswer(const QDBusMessage &answer, int life);

    QDBusConnection m_bus;
    std::function<void(const QString &)> m_log;
    QTimer m_patience;
    std::optional<Date> m_lessonsUntil;
    qint64 m_told = 0;        ///< what the agent knows: seconds since 1970, 0 for nothing
    int m_agentLife = 0;      ///< tells an agent from those before it
    bool m_isUnknown = false; ///< this agent does not know the greeting
};

} // namespace corvane
