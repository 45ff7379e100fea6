// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

#include <vector>

namespace corvane {

/// A fake agent behind the real bus interface, in the test's process. It keeps the requests and records the
/// calls. The D-Bus adaptor is generated from the interface description.
class RecordingAgent final : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    struct Added {
        QString identifier;
        QString title;
        QString body;
        QString categoryIdentifier;
        qlonglong fireDate;
        qlonglong expirationDate;
        bool isQuiet = false;

        friend bool operator==(const Added &, const Added &) = default;
    };

    /// Takes the agent's name on `bus`; ends the test program if that fails.
    explicit RecordingAgent(QDBusConnection bus);
    ~RecordingAgent() override;

    std::vector<Added> pending;
    /// All calls, in order: the method and its identifiers or other arguments, preceded by "unknown " if
    /// `lacksNewerMethods` makes it unknown.
    QStringList calls;
    /// When set, no call is answered.
    bool hangs = false;
    std::vector<QDBusMessage> unansweredCalls;
    /// When not empty, each call fails with this text.
    QString refusal;
    /// When set, it has only the methods of the first agent version.
    bool lacksNewerMethods = false;

    // The methods of the bus interface.
    QStringList PendingRequests();
    void RemovePendingRequests(const QStringList &identifiers);
    void Add(const QString &identifier, const QString &title, const QString &body,
             const QString &categoryIdentifier, qlonglong fireDate, qlonglong expirationDate);
    void AddQuietly(const QString &identifier, const QString &title, const QString &body,
                    const QString &categoryIdentifier, qlonglong fireDate, qlonglong expirationDate);
    void Hello(qlonglong lessonsUntil, const QString &display, const QString &waylandDisplay,
               const QString &authority);
    void Goodbye();

private:
    void keep(const Added &request);
    /// Like isServed(), for methods that older agents lack.
    bool isKnownAndServed(const QString &call);

    /// Records the call and returns whether to execute it.
    bool isServed(const QString &call);

    QDBusConnection m_bus;
};

} // namespace corvane
