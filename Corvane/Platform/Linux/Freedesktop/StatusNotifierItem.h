// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/StatusItem.h"

#include <QDBusConnection>
#include <QImage>
#include <QList>
#include <QString>

#include <chrono>
#include <vector>

class QDBusMessage;

namespace corvane {

class StatusMenuAdaptor;
class StatusNotifierItemAdaptor;

/// The status item as an object on the session bus, registered with the watcher through which the hosts of
/// free desktops find such items. Main thread only.
///
/// Registers again when a watcher starts late or restarts. One item per bus connection.
class StatusNotifierItem final : public StatusItem {
    Q_OBJECT

public:
    /// What the item has to know about the desktop.
    struct Desktop {
        /// Whether its host shows the text beside the icon. If not, the item has no label at all: some hosts
        /// show even an empty one in place of the icon.
        bool showsLabel = false;
        /// Whether the pointer's position can be read. If so, it is where the click was, while some hosts
        /// make up the position that comes with a click.
        bool tellsPointer = true;
        /// The time from a new host's reading of the item to the signal with the real label.
        std::chrono::milliseconds labelPause{1000};

        /// As the environment describes it.
        [[nodiscard]] static Desktop current();
    };

    /// Puts the item on `bus` and registers it. `icons` holds one image per size.
    StatusNotifierItem(QDBusConnection bus, const QList<QImage> &icons, Desktop desktop,
                       QObject *parent = nullptr);
    ~StatusNotifierItem() override;

    void setTitle(const QString &title) override;
    void setNotice(const QString &notice) override;
    void setMenu(std::vector<StatusMenuEntry> entries) override;
    [[nodiscard]] bool isShown() const override { return m_isRegistered && m_hasHost; }

    /// Whether it is known that no host shows items, as without a bus. Neither this nor isShown() holds
    /// before a bus has answered.
    [[nodiscard]] bool isAbsent() const { return m_isAbsent; }

Q_SIGNALS:
    /// A watcher has accepted the item.
    void registered();
    /// A watcher is there and has not accepted the item. A silent one is asked again and again, but this is
    /// emitted once for it, and again after it restarts.
    void registrationFailed(const QString &reason);
    /// isAbsent() holds from now on, until a watcher or a host appears.
    void absenceFound();

private:
    void exportMenu();
    void registerItem();
    void registrationAnswered(const QDBusMessage &answer);
    void queryHost();
    void setPresence(bool isRegistered, bool hasHost, bool isAbsent);
    void click(int x, int y);

    QDBusConnection m_bus;
    Desktop m_desktop;
    StatusNotifierItemAdaptor *m_adaptor = nullptr;
    StatusMenuAdaptor *m_menuAdaptor = nullptr; ///< null without a bus
    std::vector<StatusMenuEntry> m_menu;
    QString m_activationToken; ///< for the next click
    bool m_isRegistered = false;
    bool m_hasHost = true; ///< also true if the watcher reports nothing of its hosts
    bool m_isAbsent = false;
    bool m_isSilent = false; ///< whether the watcher has let a call time out
    int m_attempt = 0;       ///< number of the latest registration; answers to older ones are ignored

private Q_SLOTS:
    void hostRegistered();
    void hostUnregistered();
};

} // namespace corvane
