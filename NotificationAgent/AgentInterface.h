// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QStringList>

#include <expected>
#include <functional>

namespace corvane {

class ProgramWatch;
class RequestKeeper;
struct PendingRequest;

/// The agent's bus interface, which its generated adaptor calls. Refuses more than our program needs, so that
/// no caller can make the agent grow without bound. Main thread only.
class AgentInterface final : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    static constexpr qsizetype maximumRequests = 10'000;
    // Lengths of texts are in UTF-16 code units.
    static constexpr qsizetype maximumTextLength = 4096;
    static constexpr qsizetype maximumIdentifierLength = 2048;
    static constexpr qint64 maximumTotalTextLength = qint64{128} * maximumRequests; ///< of all requests
    static constexpr qsizetype maximumIdentifiers = 2 * maximumRequests;            ///< in one call
    /// The approximate size of replies that the bus has not taken yet. The largest single reply is smaller.
    static constexpr qint64 maximumUnacknowledgedReplyBytes = qint64{4} * 1024 * 1024;
    static constexpr qint64 latestDate = 253'402'300'799; ///< the last second of the year 9999

    /// Borrows `keeper` and `watch`; `log` writes a line to the log.
    AgentInterface(QDBusConnection sessionBus, RequestKeeper &keeper, ProgramWatch &watch,
                   std::function<void(const QString &)> log, QObject *parent = nullptr);

    /// The methods of the bus interface, named as in its XML. Those that change the queue reply once the
    /// keeper has answered.
    QStringList PendingRequests();
    void RemovePendingRequests(const QStringList &identifiers);
    void Add(const QString &identifier, const QString &title, const QString &body,
             const QString &categoryIdentifier, qlonglong fireDate, qlonglong expirationDate);
    void AddQuietly(const QString &identifier, const QString &title, const QString &body,
                    const QString &categoryIdentifier, qlonglong fireDate, qlonglong expirationDate);
    void Hello(qlonglong lessonsUntil, const QString &display, const QString &waylandDisplay,
               const QString &authority);
    void Goodbye();

Q_SIGNALS:
    /// A method was called.
    void called();

private:
    void add(const PendingRequest &request);
    [[nodiscard]] std::function<void(std::expected<void, QString>)> answerLater();
    /// Whether a reply of about `bytes` may be sent now; if so, counts it.
    [[nodiscard]] bool mayReplyWith(qint64 bytes);
    /// Calls the bus, which replies once it has taken everything sent before.
    void pingBus();
    void refuse(const QString &error, const QString &reason);

    QDBusConnection m_bus;
    RequestKeeper &m_keeper;
    ProgramWatch &m_watch;
    std::function<void(const QString &)> m_log;
    qint64 m_refusals = 0;
    qint64 m_unacknowledgedReplyBytes = 0; ///< see maximumUnacknowledgedReplyBytes
    bool m_isPingPending = false;
};

} // namespace corvane
