// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include "Corvane/Platform/Linux/Waiting/Pending.h"
#include "Corvane/Utilities/Clock.h"

#include <qcoro/qcorotask.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace corvane {

/// An enabled calendar of the service.
struct ServiceEntry {
    QByteArray uid;
    GObjectRef<ESource> source;
    QString name;
    QString account;
    bool isLocal = false;
};

/// The calendar service's list of calendars. Main thread only; shared by the coroutines.
class ServiceRegistry {
public:
    enum class State { there, absent, silent };
    struct Found {
        State state;
        /// Why it is not there.
        QString error;
    };

    /// `listCameLate` is called when a list arrives after a find() has stopped waiting for it, at most once a
    /// minute.
    explicit ServiceRegistry(std::function<void()> listCameLate) : m_listCameLate(std::move(listCameLate)) {}

    /// Looks for the service. Ends at `deadline`.
    static QCoro::Task<Found> find(std::shared_ptr<ServiceRegistry> self, QDeadlineTimer deadline);

    /// The enabled calendars, except those of contacts and weather. Empty until the service has been found.
    [[nodiscard]] std::vector<ServiceEntry> calendars() const;

private:
    static QCoro::Task<void> connect(std::shared_ptr<ServiceRegistry> self, Pending<Found> call);
    static QCoro::Task<Found> open(std::shared_ptr<ServiceRegistry> self);
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] QString accountOf(ESource *source) const;

    std::function<void()> m_listCameLate;
    GObjectRef<ESourceRegistry> m_registry;
    std::optional<Pending<Found>> m_call;
    /// Whether a find() has stopped waiting for `m_call`.
    bool m_isLate = false;
    Seconds m_nextNews{0}; ///< by uptime()
};

/// The message of `error`, which it frees.
[[nodiscard]] QString messageOf(GError *error);

} // namespace corvane
