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

/// The agent's face on the bus: what its generated adaptor calls. It refuses what no program of ours asks
/// for, so that whoever speaks to it cannot make it grow without end. Main thread only.
class AgentInterface final : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    static constexpr qsizetype maximumRequests = 10'000;
    // In UTF-16 code units.
    static constexpr qsizetype maximumTextLength = 4096;
    static constexpr qsizetype maximumIdentifierLength = 2048;
    static constexpr qint64 maximumTotalTextLength = qint64{128} * maximumRequests; ///< of all
    static constexpr qsizetype maximumIdentifiers = 2 * maximumRequests;            ///< of one call
    /// Bytes of answers, roughly, that the bus has not taken yet. The largest single answer is smaller.
    static constexpr qint64 maximumUnacknowledgedReplyBytes = qint64{4} * 1024 * 1024;
    static constexpr qint64 latestDate = 253'402'300'799; ///< the last second of the year 9999

    /// `keeper` and `watch` are borrowed; `log` takes a line.
    AgentInterface(QDBusConnection sessionBus, RequestKeeper &keeper, ProgramWatch &watch,
                   std::function<void(const QString &)> log, QObject *parent = nullptr);

    /// The methods of the bus interface, under its names; see its XML. Those that change the queue are
    /// answered when the keeper has answered.
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
    /// Somebody has called.
    void called();

private:
    void add(const PendingRequest &request);
    [[nodiscard]] std::function<void(std::expected<void, QString>)> answerLater();
    /// Whether an answer of so many bytes may be given now, which counts it.
    [[nodiscard]] bool mayReplyWith(qint64 bytes);
    /// Asks the bus something: it answers when it has taken all that was sent to it before.
    void pingBus();
    void refuse(const QString &error, const QString &reason);

    QDBusConnection m_bus;
    RequestKeeper &m_keeper;
    ProgramWatch &m_watch;
    std::function<void(const QString &)> m_log;
    qint64 m_refusals = 0;
    qint64 m_unacknowledgedReplyBytes = 0; ///< bytes; see maximumUnacknowledgedReplyBytes
    bool m_isPingPending = false;
};

} // namespace corvane
