// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <libecal/libecal.h>

#include <QByteArray>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace corvane {

/// The time zones that one calendar defines for its events.
class DefinedZones {
public:
    explicit DefinedZones(std::vector<GObjectRef<ICalComponent>> definitions);

    /// Borrowed; null if the calendar does not define the zone, or not by reasonable rules.
    [[nodiscard]] ICalTimezone *find(const QByteArray &tzid);

    [[nodiscard]] const std::vector<GObjectRef<ICalComponent>> &definitions() const { return m_definitions; }

    /// Identifies these definitions.
    [[nodiscard]] const QByteArray &key() const { return m_key; }

private:
    std::vector<GObjectRef<ICalComponent>> m_definitions;
    QByteArray m_key;
    std::map<QByteArray, GObjectRef<ICalTimezone>> m_zones;
};

/// Finds the zone for an identifier, for one expansion.
class ZoneTable {
public:
    /// `timeZoneId` is the user's zone.
    explicit ZoneTable(const QByteArray &timeZoneId);

    /// The user's zone: that of floating times, of whole days and of unknown names.
    [[nodiscard]] ICalTimezone *own() const { return m_own; }

    /// The zone of `tzid` for an event whose calendar defines `definitions`; own() if it is unknown. Under
    /// well-known names the system's rules count, because those in calendars are often outdated. Borrowed.
    [[nodiscard]] ICalTimezone *find(const char *tzid, DefinedZones &definitions);

    /// The unknown names since the last call.
    [[nodiscard]] std::set<QByteArray> takeUnknown() { return std::exchange(m_unknown, {}); }

private:
    [[nodiscard]] ICalTimezone *look(const QByteArray &tzid, DefinedZones &definitions);

    ICalTimezone *m_own;
    std::map<std::pair<DefinedZones *, QByteArray>, ICalTimezone *> m_known;
    std::set<QByteArray> m_unknown;
};

/// Whether the library can evaluate the rules of a zone's definition in no time: it does so under a lock for
/// which all other threads wait.
[[nodiscard]] bool isHarmlessZone(ICalComponent *definition);

} // namespace corvane
