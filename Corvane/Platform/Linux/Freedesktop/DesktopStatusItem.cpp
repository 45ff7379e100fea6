// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/DesktopStatusItem.h"

#include <utility>

namespace corvane {

DesktopStatusItem::DesktopStatusItem(QDBusConnection bus, QList<QImage> icons,
                                     StatusNotifierItem::Desktop desktop, QObject *parent)
    : StatusItem(parent)
    , m_icons(std::move(icons))
    , m_item(std::move(bus), m_icons, desktop)
{
    m_grace.setSingleShot(true);
    m_grace.setInterval(grace);
    connect(&m_grace, &QTimer::timeout, this, &DesktopStatusItem::embed);
    connect(&m_item, &StatusNotifierItem::registered, this, &DesktopStatusItem::registered);
    connect(&m_item, &StatusNotifierItem::registrationFailed, this, &DesktopStatusItem::registrationFailed);
    connect(&m_item, &StatusItem::activated, this, &StatusItem::activated);
    connect(&m_item, &StatusItem::menuAboutToShow, this, &StatusItem::menuAboutToShow);
    connect(&m_item, &StatusItem::shownChanged, this, &DesktopStatusItem::follow);
    connect(&m_item, &StatusNotifierItem::absenceFound, this, &DesktopStatusItem::follow);
    follow();
}

DesktopStatusItem::~DesktopStatusItem() = default;

void DesktopStatusItem::setTitle(const QString &title)
{
    m_title = title;
    m_item.setTitle(title);
    if (m_embedded) {
        m_embedded->setTitle(title);
    }
}

void DesktopStatusItem::setNotice(const QString &notice)
{
    m_notice = notice;
    m_item.setNotice(notice);
    if (m_embedded) {
        m_embedded->setNotice(notice);
    }
}

void DesktopStatusItem::setMenu(std::vector<StatusMenuEntry> entries)
{
    m_menu = std::move(entries);
    m_item.setMenu(m_menu);
    if (m_embedded) {
        m_embedded->setMenu(m_menu);
    }
}

bool DesktopStatusItem::isShown() const
{
    return m_item.isShown() || (m_embedded && m_embedded->isShown());
}

void DesktopStatusItem::embed()
{
    // A watcher has just appeared and nothing is known of it yet. Wait: the toolkit would use it instead of
    // the tray.
    if (!m_item.isAbsent()) {
        return;
    }
    m_embedded = std::make_unique<EmbeddedTrayIcon>(m_icons);
    m_embedded->setTitle(m_title);
    m_embedded->setNotice(m_notice);
    m_embedded->setMenu(m_menu);
    connect(m_embedded.get(), &StatusItem::activated, this, &StatusItem::activated);
    connect(m_embedded.get(), &StatusItem::menuAboutToShow, this, &StatusItem::menuAboutToShow);
    connect(m_embedded.get(), &StatusItem::shownChanged, this, &DesktopStatusItem::follow);
    follow();
}

void DesktopStatusItem::follow()
{
    if (m_item.isShown()) {
        m_embedded.reset();
    }
    if (!m_item.isAbsent()) {
        m_grace.stop();
    } else if (!m_embedded && !m_grace.isActive()) {
        m_grace.start();
    }
    if (const bool shown = isShown(); std::exchange(m_wasShown, shown) != shown) {
        Q_EMIT shownChanged(shown);
    }
}

} // namespace corvane
