// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItemAdaptor.h"

#include "Corvane/Utilities/Names.h"

#include <QDBusMetaType>
#include <QtEndian>

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

StatusIconPixmap pixmap(const QImage &image)
{
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    StatusIconPixmap pixmap{plain.width(), plain.height(), {}};
    pixmap.pixels.resize(static_cast<qsizetype>(plain.width()) * plain.height() * 4);
    char *out = pixmap.pixels.data();
    for (int y = 0; y < plain.height(); ++y) {
        qToBigEndian<quint32>(plain.constScanLine(y), plain.width(), out);
        out += static_cast<qsizetype>(plain.width()) * 4;
    }
    return pixmap;
}

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const StatusIconPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusIconPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icons << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icons >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

StatusNotifierItemAdaptor::StatusNotifierItemAdaptor(QObject *parent, const QList<QImage> &icons,
                                                     QString menu, Handlers handlers)
    : QDBusAbstractAdaptor(parent)
    , m_handlers(std::move(handlers))
    , m_menu(std::move(menu))
    , m_icons(icons)
{
    qDBusRegisterMetaType<StatusIconPixmap>();
    qDBusRegisterMetaType<StatusIconPixmaps>();
    qDBusRegisterMetaType<StatusToolTip>();
}

QString StatusNotifierItemAdaptor::category() const
{
    return u"ApplicationStatus"_s;
}

StatusIconPixmaps StatusNotifierItemAdaptor::icons() const
{
    StatusIconPixmaps pixmaps;
    std::ranges::transform(m_icons, std::back_inserter(pixmaps), pixmap);
    return pixmaps;
}

QString StatusNotifierItemAdaptor::id() const
{
    return names::application;
}

QString StatusNotifierItemAdaptor::title() const
{
    // Without a name, neither a host's list of items nor a screen reader could tell what the item is.
    return m_text.isEmpty() ? u"Quillet"_s : m_text;
}

QString StatusNotifierItemAdaptor::accessibleText() const
{
    return m_notice.isEmpty() ? title() : title() + u". "_s + m_notice;
}

QString StatusNotifierItemAdaptor::status() const
{
    return u"Active"_s;
}

StatusToolTip StatusNotifierItemAdaptor::toolTip() const
{
    return {{}, {}, title(), m_notice.toHtmlEscaped()};
}

QDBusObjectPath StatusNotifierItemAdaptor::menu() const
{
    return QDBusObjectPath(m_menu);
}

void StatusNotifierItemAdaptor::setText(const QString &text)
{
    if (text == m_text) {
        return;
    }
    m_text = text;
    Q_EMIT NewTitle();
    Q_EMIT NewToolTip();
    textChanged();
}

void StatusNotifierItemAdaptor::setNotice(const QString &notice)
{
    if (notice == m_notice) {
        return;
    }
    m_notice = notice;
    Q_EMIT NewToolTip();
    // Makes hosts read the icon's description again.
    Q_EMIT NewIcon();
}

void StatusNotifierItemAdaptor::Activate(int x, int y)
{
    m_handlers.click(x, y);
}

// A host without a menu for a right click passes the click on; it counts as a left one.
void StatusNotifierItemAdaptor::ContextMenu(int x, int y)
{
    m_handlers.click(x, y);
}

// Comes before the click that it is for.
void StatusNotifierItemAdaptor::ProvideXdgActivationToken(const QString &token)
{
    m_handlers.activationToken(token);
}

// Hosts call these on any item; here they have no effect.
void StatusNotifierItemAdaptor::SecondaryActivate(int, int) {}

void StatusNotifierItemAdaptor::Scroll(int, const QString &) {}

LabelledStatusNotifierItemAdaptor::LabelledStatusNotifierItemAdaptor(QObject *parent,
                                                                     const QList<QImage> &icons, QString menu,
                                                                     Handlers handlers,
                                                                     std::chrono::milliseconds pause)
    : StatusNotifierItemAdaptor(parent, icons, std::move(menu), std::move(handlers))
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(pause);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        m_isWithheld = false;
        if (!text().isEmpty()) {
            textChanged();
        }
    });
}

QString LabelledStatusNotifierItemAdaptor::readLabel()
{
    if (m_isWithheld) {
        if (!m_pause.isActive()) {
            m_pause.start();
        }
        return {};
    }
    return text();
}

void LabelledStatusNotifierItemAdaptor::hostChanged()
{
    m_pause.stop();
    // A host that looked for items by itself has already read the real label.
    if (!std::exchange(m_isWithheld, true) && !text().isEmpty()) {
        Q_EMIT XAyatanaNewLabel({}, labelGuide());
    }
}

void LabelledStatusNotifierItemAdaptor::textChanged()
{
    if (!m_isWithheld) {
        Q_EMIT XAyatanaNewLabel(text(), labelGuide());
    }
}

} // namespace corvane
