// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/adapters/CalendarRoom.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace corvane {

/// Two folders of calendar files, of which one does not exist at first. A test class derives from it.
class CalendarFoldersFixture : public QObject {
    Q_OBJECT

protected:
    [[nodiscard]] QString path(const QString &name) const { return m_room->path(name); }
    void write(const QString &name, const QByteArray &text) const { m_room->write(name, text); }

    void writeLessons(const QString &name, const std::vector<QByteArray> &lessons) const
    {
        QByteArray components;
        for (const QByteArray &component : lessons) {
            components += component;
        }
        m_room->writeEvents(name, components);
    }

    /// Loads a day; returns the titles of its events.
    [[nodiscard]] QStringList load(int daysLater = 0) { return m_room->load(daysLater); }
    [[nodiscard]] qsizetype logged(const QString &part) const { return m_room->logged(part); }

    std::unique_ptr<CalendarRoom> m_room;

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<CalendarRoom>();
        m_room->startOnFolders({m_room->calendarFolder(), m_room->path(QStringLiteral("../others"))});
    }

    void cleanup() { m_room.reset(); }
};

} // namespace corvane
