// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/StatusItem.h"

#include <QDBusConnection>
#include <QImage>
#include <QList>
#include <QString>

#include <vector>

class QDBusMessage;

namespace corvane {

class StatusMenuAdaptor;
class StatusNotifierItemAdaptor;

/// The status item as the status item hosts of the free desktops show it: an object on the session bus, made
/// known to the watcher of such items. Main thread only.
///
/// A watcher that comes up late, or restarts, is told again. One item a bus connection.
class StatusNotifierItem final : public StatusItem {
    Q_OBJECT

public:
    /// What is to be known about the desktop.
    struct Desktop {
        /// Whether its host shows the text beside the icon. Where this is false, the label is no part of the
        /// item at all: some hosts put it, even empty, in the icon's place.
        bool showsLabel = false;
        /// Whether the pointer's position can be read; where it can, it is where the click was, while the
        /// position that comes with a click is made up by some hosts.
        bool tellsPointer = true;
        /// Whether its host opens a menu on a click, and tells of a click only where there is no menu to
        /// open, or not at all.
        bool opensMenu = false;

        /// As the environment tells it.
        [[nodiscard]] static Desktop current();
    };

    /// Puts the item on `bus`, with `icons`, one a size, and makes it known.
    StatusNotifierItem(QDBusConnection bus, const QList<QImage> &icons, Desktop desktop,
                       QObject *parent = nullptr);
    ~StatusNotifierItem() override;

    void setTitle(const QString &title) override;
    void setNotice(const QString &notice) override;
    /// Exported where the status item host opens menus; kept back elsewhere.
    void setMenu(std::vector<StatusMenuEntry> entries) override;
    [[nodiscard]] bool isShown() const override { return m_isRegistered && m_hasHost; }

    /// Whether it is known that nobody on the bus shows items. Neither this nor isShown() holds until the
    /// bus has answered.
    [[nodiscard]] bool isAbsent() const { return m_isAbsent; }

Q_SIGNALS:
    /// A host's watcher took the item.
    void registered();
    /// A watcher is there and did not take it. One that is silent is asked again and again, and this is told
    /// once; otherwise it is told again when it restarts.
    void registrationFailed(const QString &reason);
    /// isAbsent() holds from now on; it ceases to when a watcher comes up.
    void absenceFound();

private:
    void registerItem();
    void registrationAnswered(const QDBusMessage &answer);
    void queryHost();
    void setPresence(bool isRegistered, bool hasHost, bool isAbsent);
    void click(int x, int y);

    QDBusConnection m_bus;
    Desktop m_desktop;
    StatusNotifierItemAdaptor *m_adaptor = nullptr;
    StatusMenuAdaptor *m_menuAdaptor = nullptr;
    std::vector<StatusMenuEntry> m_menu;
    QString m_activationToken; ///< for the click that follows
    bool m_isRegistered = false;
    bool m_hasHost = true; ///< a watcher that tells nothing of its hosts has one
    bool m_isAbsent = false;
    bool m_isSilent = false; ///< the watcher has let a call pass without an answer
    int m_attempt = 0;       ///< tells the answer to the last registration from older ones

private Q_SLOTS:
    void hostRegistered();
    void hostUnregistered();
};

} // namespace corvane
