// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/LoginEntry.h"
#include "NotificationAgent/RequestFile.h"
#include "NotificationAgent/RequestKeeper.h"
#include "tests/agent/FakeNotificationServer.h"
#include "tests/agent/FakeWallClock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

namespace corvane {

/// An agent's keeper with its file and login entry in a folder of its own, a clock that stands still and a
/// server that behaves as told. A test class derives from it for each subject of the keeper.
class RequestKeeperFixture : public QObject {
protected:
    using Outcome = NotificationServer::Outcome;

    static constexpr qint64 noon = 1'800'000'000;

    [[nodiscard]] static PendingRequest request(const QString &identifier, qint64 fireDate,
                                                qint64 helpsFor = 60)
    {
        return {identifier,
                QStringLiteral("Quillet: prepare"),
                QStringLiteral("Anna starts in 4 minutes."),
                QStringLiteral("quillet.lesson"),
                fireDate,
                fireDate + helpsFor};
    }

    /// Starts the agent without a request, at this second.
    void begin(qint64 now = noon)
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_clock = std::make_unique<FakeWallClock>(now);
        m_server = std::make_unique<FakeNotificationServer>();
        m_entry = std::make_unique<LoginEntry>(QStringLiteral("/opt/agent"),
                                               m_folder->filePath(QStringLiteral("config")));
        m_lines.clear();
        restart();
    }

    void end()
    {
        m_keeper.reset();
        m_file.reset();
    }

    [[nodiscard]] QString queuePath() const { return m_folder->filePath(QStringLiteral("quillet/pending")); }

    /// Replaces the agent, as if it had died and restarted.
    void restart()
    {
        m_keeper.reset();
        m_file = std::make_unique<RequestFile>(queuePath());
        m_keeper = std::make_unique<RequestKeeper>(*m_file, *m_entry, *m_clock, *m_server,
                                                   [this](const QString &line) { m_lines.append(line); });
        QVERIFY(m_keeper->load());
        m_keeper->start();
    }

    /// Returns whether it was confirmed.
    bool add(const PendingRequest &request)
    {
        std::optional<bool> result;
        m_keeper->add(request,
                      [&](const std::expected<void, QString> &answer) { result = answer.has_value(); });
        return wait(result);
    }

    bool remove(const QStringList &identifiers)
    {
        std::optional<bool> result;
        m_keeper->remove(identifiers,
                         [&](const std::expected<void, QString> &answer) { result = answer.has_value(); });
        return wait(result);
    }

    /// Processes all pending events, and those that they cause: keeper and fakes work by events of this
    /// thread.
    static void settle()
    {
        for (int turn = 0; turn < 20; ++turn) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
    }

    [[nodiscard]] QStringList onDisk() const
    {
        QFile file(queuePath());
        QStringList identifiers;
        if (file.open(QIODevice::ReadOnly)) {
            for (const PendingRequest &request : decodedRequests(file.readAll()).requests) {
                identifiers.append(request.identifier);
            }
        }
        return identifiers;
    }

    [[nodiscard]] bool logged(const QString &text) const { return !m_lines.filter(text).isEmpty(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FakeWallClock> m_clock;
    std::unique_ptr<FakeNotificationServer> m_server;
    std::unique_ptr<LoginEntry> m_entry;
    std::unique_ptr<RequestFile> m_file;
    std::unique_ptr<RequestKeeper> m_keeper;
    QStringList m_lines;

private:
    static bool wait(const std::optional<bool> &result)
    {
        QElapsedTimer timer;
        timer.start();
        while (!result && timer.elapsed() < 10'000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        }
        return result.value_or(false);
    }
};

} // namespace corvane
