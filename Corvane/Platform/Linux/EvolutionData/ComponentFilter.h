// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

namespace corvane {

/// Picks the lines of a calendar text that describe events and time zones, line by line. Anything else
/// (tasks, alarms, attachments, attendees) would only cost memory. Detects events that the text does not
/// close.
class ComponentFilter {
public:
    /// Whether to keep the line.
    [[nodiscard]] bool wants(const QByteArray &line);

    /// Whether an event ends before the line last given to wants(), although the text does not close it.
    [[nodiscard]] bool isEventClosed() const { return m_isEventClosed; }

private:
    [[nodiscard]] bool begin(const QByteArray &name);
    [[nodiscard]] bool end(const QByteArray &name);
    [[nodiscard]] bool wantsProperty(const QByteArray &name, const QByteArray &line);

    enum class Place { outside, event, zone };

    Place m_place = Place::outside;
    /// The component that is being skipped; empty if there is none.
    QByteArray m_passedOver;
    bool m_isEventClosed = false;
    qsizetype m_dates = 0;
    int m_rules = 0;
};

} // namespace corvane
