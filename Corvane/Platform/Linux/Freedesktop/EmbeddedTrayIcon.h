// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/StatusItem.h"

#include <QAbstractNativeEventFilter>
#include <QImage>
#include <QList>
#include <QSystemTrayIcon>

#include <cstdint>
#include <vector>

namespace corvane {

/// The status item as an icon embedded into a tray of the X server, for desktops whose hosts know no other
/// kind. A tray that comes up late, or restarts, gets it as well. The text is the icon's tool tip; a menu is
/// never shown. Main thread only.
///
/// Where Qt 6.8 finds a watcher of status items that no host listens to, it embeds nothing: then nothing is
/// shown.
///
/// Made only once it is known that the session bus answers, or that there is none: the toolkit asks it first,
/// and waits.
class EmbeddedTrayIcon final : public StatusItem, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// Puts the icon, with `icons`, one a size, into the tray.
    explicit EmbeddedTrayIcon(const QList<QImage> &icons, QObject *parent = nullptr);
    ~EmbeddedTrayIcon() override;

    void setTitle(const QString &title) override;
    void setNotice(const QString &notice) override;
    void setMenu(std::vector<StatusMenuEntry> entries) override;
    [[nodiscard]] bool isShown() const override { return m_tray != 0; }

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    void click(QSystemTrayIcon::ActivationReason reason);
    void findTray();
    void showToolTip();

    QSystemTrayIcon m_icon;
    QString m_title;
    QString m_notice;
    std::uint32_t m_tray = 0;    ///< the tray's window; 0 while there is none
    std::uint32_t m_manager = 0; ///< what a tray that comes up is announced with; 0 while nobody has been
};

} // namespace corvane
