// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

namespace corvane {

/// Picks the lines of a calendar text that tell of events and time zones, one line after the other. What else
/// there is (tasks, alarms, attachments, guests) would only cost memory. Closes an event that the text does
/// not close.
class ComponentFilter {
public:
    /// Whether the line is to be read.
    [[nodiscard]] bool wants(const QByteArray &line);

    /// Whether an event ends before the line that was just asked about, although the text does not say so.
    [[nodiscard]] bool isEventClosed() const { return m_isEventClosed; }

private:
    [[nodiscard]] bool begin(const QByteArray &name);
    [[nodiscard]] bool end(const QByteArray &name);
    [[nodiscard]] bool wantsProperty(const QByteArray &name, const QByteArray &line);

    enum class Place { outside, event, zone };

    Place m_place = Place::outside;
    /// The component that is passed over; empty where there is none.
    QByteArray m_passedOver;
    bool m_isEventClosed = false;
    qsizetype m_dates = 0;
    int m_rules = 0;
};

} // namespace corvane
