// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Freedesktop/EmbeddedTrayIcon.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"
#include "Corvane/Services/StatusItem.h"

#include <QTimer>

#include <chrono>
#include <memory>
#include <vector>

namespace corvane {

/// The status item in whichever way the desktop's host knows: on the session bus, or, where nobody there
/// shows items, embedded into a tray. It follows a host that comes or goes, and there are never two bells.
/// Main thread only.
class DesktopStatusItem final : public StatusItem {
    Q_OBJECT

public:
    /// `icons`, one a size.
    DesktopStatusItem(QDBusConnection bus, QList<QImage> icons, StatusNotifierItem::Desktop desktop,
                      QObject *parent = nullptr);
    ~DesktopStatusItem() override;

    void setTitle(const QString &title) override;
    void setNotice(const QString &notice) override;
    void setMenu(std::vector<StatusMenuEntry> entries) override;
    [[nodiscard]] bool isShown() const override;

    /// How long nobody has to show items on the bus before the icon is embedded: a host that restarts, or
    /// that knows both kinds, often has the tray first.
    static constexpr std::chrono::seconds grace{2};

Q_SIGNALS:
    /// As StatusNotifierItem tells them.
    void registered();
    void registrationFailed(const QString &reason);

private:
    void embed();
    void follow();

    QList<QImage> m_icons;
    StatusNotifierItem m_item;
    std::unique_ptr<EmbeddedTrayIcon> m_embedded;
    QTimer m_grace;
    QString m_title;
    QString m_notice;
    bool m_wasShown = false;
};

} // namespace corvane
