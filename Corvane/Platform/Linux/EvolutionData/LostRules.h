// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include <QByteArray>

#include <qcoro/qcorotask.h>

#include <functional>
#include <memory>
#include <set>
#include <utility>

namespace corvane {

/// Finds the events of one calendar whose recurrence rule the service could not read. The service drops such
/// a rule and leaves a note in its place. It then takes the series for a single event, so that no query for
/// series, or for a day after the first, returns it. Main thread only; shared by the coroutines.
class LostRules {
public:
    /// Of further events, only the first occurrence is known.
    static constexpr std::size_t maximum = 1'000;

    /// `onChange` is called after identifiers() has changed.
    explicit LostRules(std::function<void()> onChange) : m_onChange(std::move(onChange)) {}

    /// Looks at all events of the calendar, and from then on at each that changes, until it is called with
    /// another client. That costs the service some time for each event.
    static QCoro::Task<void> watch(std::shared_ptr<LostRules> self, GObjectRef<ECalClient> client,
                                   GObjectRef<GCancellable> cancellable);

    /// The identifiers found, also by earlier clients: one whose event has gone stays, if nobody was
    /// watching.
    [[nodiscard]] const std::set<QByteArray> &identifiers() const { return m_identifiers; }
    /// How often they, or the events that they name, have changed.
    [[nodiscard]] quint64 changes() const { return m_changes; }

private:
    struct Receiver;
    struct Request {
        GObjectRef<ECalClient> client;
        std::weak_ptr<LostRules> rules;
    };
    /// Identifiers of events that the service has reported together.
    struct Batch {
        std::set<QByteArray> damaged;
        std::set<QByteArray> sound;
    };
    static void make(GTask *task, gpointer, gpointer data, GCancellable *cancellable);
    void take(const Batch &batch);

    std::function<void()> m_onChange;
    GObjectRef<ECalClient> m_client; ///< the one that is watched, or about to be
    GObjectRef<ECalClientView> m_view;
    std::set<QByteArray> m_identifiers;
    quint64 m_changes = 0;
};

} // namespace corvane
