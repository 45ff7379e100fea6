// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/StatusItem.h"

#include <QAbstractNativeEventFilter>
#include <QImage>
#include <QList>
#include <QMenu>
#include <QSystemTrayIcon>

#include <cstdint>
#include <vector>

namespace corvane {

/// The status item as an icon embedded into a tray of the X server, for desktops whose hosts support no other
/// kind. A tray that starts late or restarts gets the icon, too. Title and notice form the icon's tool tip;
/// the toolkit shows the menu. Main thread only.
///
/// If Qt 6.8 finds a watcher of status items to which no host listens, it embeds nothing: then nothing is
/// shown.
///
/// Construct it only once the session bus is known to answer, or to be missing: the toolkit calls it first
/// and blocks.
class EmbeddedTrayIcon final : public StatusItem, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// Puts the icon into the tray. `icons` holds one image per size.
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

    QMenu m_menu; ///< outlives the icon, which borrows it
    QSystemTrayIcon m_icon;
    QString m_title;
    QString m_notice;
    std::uint32_t m_tray = 0;    ///< the tray's window; 0 while there is none
    std::uint32_t m_manager = 0; ///< atom of the message that announces a tray; 0 if not looked up
};

} // namespace corvane
