// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>

#include <vector>

namespace corvane {

/// The far side of the agent's bus interface, in the test's own process: it keeps what it is given and writes
/// down what it is asked. The bus's adaptor is generated from the interface's description.
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

    /// Takes the agent's name on `bus`; ends the test program when it cannot.
    explicit RecordingAgent(QDBusConnection bus);
    ~RecordingAgent() override;

    std::vector<Added> pending;
    /// What was asked, in order: the method, and the identifier or identifiers.
    QStringList calls;
    /// Set: no call is answered.
    bool hangs = false;
    /// Set: each call is answered with an error of this text.
    QString refusal;
    /// Set: it knows what the first agents knew, and no more.
    bool isOfBefore = false;

    // The interface's methods, by its names.
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
    /// As isServed(), for what was added to the interface later.
    bool isKnownAndServed(const QString &call);

    /// Notes the call; whether it is to be carried out.
    bool isServed(const QString &call);

    QDBusConnection m_bus;
};

} // namespace corvane
