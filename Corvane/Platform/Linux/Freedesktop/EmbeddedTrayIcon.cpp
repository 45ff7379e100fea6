// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/EmbeddedTrayIcon.h"

#include "Corvane/Platform/Linux/Banners/DesktopGeometry.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusTitle.h"
#include "Corvane/Platform/Linux/X11/X11Connection.h"
#include "Corvane/Utilities/PlainText.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <optional>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

/// Whether the toolkit has made a tray icon window; nothing else tells how it shows the icon.
bool isInWindow()
{
    return std::ranges::any_of(QApplication::topLevelWidgets(),
                               [](const QWidget *widget) { return widget->inherits("QSystemTrayIconSys"); });
}

QIcon iconOf(const QList<QImage> &images)
{
    QIcon icon;
    for (const QImage &image : images) {
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

} // namespace

EmbeddedTrayIcon::EmbeddedTrayIcon(const QList<QImage> &icons, QObject *parent)
    : StatusItem(parent)
    , m_icon(iconOf(icons))
{
    connect(&m_icon, &QSystemTrayIcon::activated, this, &EmbeddedTrayIcon::click);
    connect(&m_menu, &QMenu::aboutToShow, this, &StatusItem::menuAboutToShow);
    setTitle({});
    m_icon.show();
    // Qt 6.8 embeds nothing where there is a watcher, even if no host listens to it.
    if (!isInWindow()) {
        m_icon.hide();
        return;
    }
    QCoreApplication::instance()->installNativeEventFilter(this);
    m_tray = x11::selectionOwner("_NET_SYSTEM_TRAY_S0");
}

EmbeddedTrayIcon::~EmbeddedTrayIcon()
{
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::instance()->removeNativeEventFilter(this);
    }
}

void EmbeddedTrayIcon::setTitle(const QString &title)
{
    m_title = harmlessTitle(title);
    showToolTip();
}

void EmbeddedTrayIcon::setNotice(const QString &notice)
{
    m_notice = harmlessTitle(notice);
    showToolTip();
}

void EmbeddedTrayIcon::showToolTip()
{
    // The toolkit guesses whether a tool tip is markup: make it markup always.
    const QString title = m_title.isEmpty() ? u"Quillet"_s : m_title.toHtmlEscaped();
    const QString notice = m_notice.isEmpty() ? QString() : u"<br/>"_s + m_notice.toHtmlEscaped();
    m_icon.setToolTip(u"<span>"_s + title + notice + u"</span>"_s);
}

void EmbeddedTrayIcon::setMenu(std::vector<StatusMenuEntry> entries)
{
    m_menu.clear();
    for (StatusMenuEntry &entry : entries) {
        if (entry.text.isEmpty()) {
            m_menu.addSeparator();
            continue;
        }
        // A single ampersand would mark a mnemonic.
        const QAction *line = m_menu.addAction(plainText(entry.text).replace(u'&', u"&&"_s));
        if (entry.action) {
            connect(line, &QAction::triggered, this, std::move(entry.action), Qt::QueuedConnection);
        }
    }
    m_icon.setContextMenu(m_menu.isEmpty() ? nullptr : &m_menu);
}

bool EmbeddedTrayIcon::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    constexpr std::uint8_t typeMask = 0x7f;
    const int type = event->response_type & typeMask;
    if (type == XCB_CLIENT_MESSAGE && m_manager == 0) {
        m_manager = x11::atom("MANAGER");
    }
    const bool isManager = type == XCB_CLIENT_MESSAGE &&
                           reinterpret_cast<const xcb_client_message_event_t *>(event)->type == m_manager;
    const bool isGone = type == XCB_DESTROY_NOTIFY &&
                        reinterpret_cast<const xcb_destroy_notify_event_t *>(event)->window == m_tray;
    if (isManager || isGone) {
        // Queued, so that the toolkit handles the event first.
        QMetaObject::invokeMethod(this, &EmbeddedTrayIcon::findTray, Qt::QueuedConnection);
    }
    return false;
}

void EmbeddedTrayIcon::findTray()
{
    const bool wasShown = isShown();
    m_tray = x11::selectionOwner("_NET_SYSTEM_TRAY_S0");
    if (isShown() != wasShown) {
        Q_EMIT shownChanged(isShown());
    }
}

void EmbeddedTrayIcon::click(QSystemTrayIcon::ActivationReason reason)
{
    // On a right click the toolkit opens the menu by itself.
    if (reason == QSystemTrayIcon::Trigger || (reason == QSystemTrayIcon::Context && m_menu.isEmpty())) {
        const QRect place = m_icon.geometry();
        Q_EMIT activated(place.isValid() ? std::optional(pointsUp(QRectF(place).center())) : std::nullopt,
                         QString());
    }
}

} // namespace corvane
