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

/// The status item in the way that the desktop's host supports: on the session bus or, if no host there shows
/// items, embedded into a tray. Follows hosts that come and go; there are never two bells. Main thread only.
class DesktopStatusItem final : public StatusItem {
    Q_OBJECT

public:
    /// `icons` holds one image per size.
    DesktopStatusItem(QDBusConnection bus, QList<QImage> icons, StatusNotifierItem::Desktop desktop,
                      QObject *parent = nullptr);
    ~DesktopStatusItem() override;

    void setTitle(const QString &title) override;
    void setNotice(const QString &notice) override;
    void setMenu(std::vector<StatusMenuEntry> entries) override;
    [[nodiscard]] bool isShown() const override;

    /// How long there must be no host on the bus before the icon is embedded: a host that restarts, or that
    /// supports both kinds, often has the tray first.
    static constexpr std::chrono::seconds grace{2};

Q_SIGNALS:
    /// The signals of StatusNotifierItem.
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
    std::vector<StatusMenuEntry> m_menu;
    bool m_wasShown = false;
};

} // namespace corvane
