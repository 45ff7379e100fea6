// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/StatusItem.h"

#include <QDBusConnection>
#include <QImage>
#include <QList>

namespace corvane {

class StatusNotifierItemAdaptor;

/// The status item as the panels of the free desktops show it: an object on the session bus, made known to
/// the watcher of such items. Main thread only.
///
/// A watcher that comes up late, or restarts, is told again. One item a bus connection.
class StatusNotifierItem final : public StatusItem {
    Q_OBJECT

public:
    /// What is to be known about the desktop.
    struct Desktop {
        /// Whether its panel shows the text beside the icon. Where this is false, the label is no part of the
        /// item at all: some panels put it, even empty, in the icon's place.
        bool showsLabel = false;
        /// Whether the pointer's position can be read; where it can, it is where the click was, while the
        /// position that comes with a click is made up by some panels.
        bool tellsPointer = true;

        /// As the environment tells it.
        [[nodiscard]] static Desktop current();
    };

    /// Puts the item on `bus`, with `icons`, one a size, and makes it known.
    StatusNotifierItem(QDBusConnection bus, const QList<QImage> &icons, Desktop desktop,
                       QObject *parent = nullptr);
    ~StatusNotifierItem() override;

    /// Longer titles are cut to this many UTF-16 units, control characters become spaces: the text goes to
    /// programs of others.
    static constexpr qsizetype maximumTitleLength = 200;

    void setTitle(const QString &title) override;

Q_SIGNALS:
    /// A panel's watcher took the item.
    void registered();
    /// A watcher is there and did not take it. It is told again when it restarts.
    void registrationFailed(const QString &reason);

private:
    void registerItem();
    void click(int x, int y);

    QDBusConnection m_bus;
    Desktop m_desktop;
    StatusNotifierItemAdaptor *m_adaptor = nullptr;
};

} // namespace corvane
