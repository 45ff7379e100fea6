// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItemAdaptor.h"

#include <QCursor>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QScreen>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int timeoutMilliseconds = 5000;
constexpr auto itemPath = "/StatusNotifierItem"_L1;
constexpr auto watcherService = "org.kde.StatusNotifierWatcher"_L1;

// Whether a call failed because nobody owns the name; a call that is to start nobody gets the second answer.
bool isAbsence(const QDBusError &error)
{
    return error.type() == QDBusError::ServiceUnknown ||
           error.name() == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1;
}

// The text as programs of others can bear it: one line, no control characters, well-formed, of bounded
// length.
QString harmless(const QString &title)
{
    QString text;
    const QStringView head =
        QStringView(title).first(std::min<qsizetype>(title.size(), StatusNotifierItem::maximumTitleLength));
    text.reserve(head.size());
    for (qsizetype i = 0; i < head.size(); ++i) {
        const QChar c = head.at(i);
        if (c.isHighSurrogate()) {
            // One without its other half, as at the cut, is dropped.
            if (i + 1 < head.size() && head.at(i + 1).isLowSurrogate()) {
                text += c;
                text += head.at(++i);
            }
        } else if (!c.isLowSurrogate()) {
            const bool isControl = c.category() == QChar::Other_Control ||
                                   c.category() == QChar::Separator_Line ||
                                   c.category() == QChar::Separator_Paragraph;
            text += isControl ? QChar(u' ') : c;
        }
    }
    return text;
}

} // namespace

StatusNotifierItem::Desktop StatusNotifierItem::Desktop::current()
{
    Desktop desktop;
    const QList<QByteArray> names = qgetenv("XDG_CURRENT_DESKTOP").toLower().split(':');
    for (const QByteArray &name : names) {
        desktop.showsLabel = desktop.showsLabel || name == "gnome" || name == "unity" || name == "budgie";
    }
    // Under Wayland a program is told the pointer only while it is over one of the program's own windows.
    desktop.tellsPointer =
        qgetenv("XDG_SESSION_TYPE") != "wayland" && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    return desktop;
}

StatusNotifierItem::StatusNotifierItem(QDBusConnection bus, const QList<QImage> &icons, Desktop desktop,
                                       QObject *parent)
    : StatusItem(parent)
    , m_bus(std::move(bus))
    , m_desktop(desktop)
{
    auto onClick = [this](int x, int y) { click(x, y); };
    m_adaptor = desktop.showsLabel ? new LabelledStatusNotifierItemAdaptor(this, icons, std::move(onClick))
                                   : new StatusNotifierItemAdaptor(this, icons, std::move(onClick));
    if (!m_bus.isConnected()) {
        return;
    }
    m_bus.registerObject(itemPath, this, QDBusConnection::ExportAdaptors);
    auto *watcher =
        new QDBusServiceWatcher(watcherService, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusNotifierItem::registerItem);
    registerItem();
}

StatusNotifierItem::~StatusNotifierItem()
{
    m_bus.unregisterObject(itemPath);
}

void StatusNotifierItem::registerItem()
{
    auto message = QDBusMessage::createMethodCall(watcherService, u"/StatusNotifierWatcher"_s, watcherService,
                                                  u"RegisterStatusNotifierItem"_s);
    message.setAutoStartService(false);
    // The connection's own name: it vanishes with the program, and a sandbox lets it pass.
    message << m_bus.baseService();
    auto *call = new QDBusPendingCallWatcher(m_bus.asyncCall(message, timeoutMilliseconds), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        if (!call->isError()) {
            Q_EMIT registered();
        } else if (!isAbsence(call->error())) {
            Q_EMIT registrationFailed(call->error().message());
        }
    });
}

void StatusNotifierItem::setTitle(const QString &title)
{
    m_adaptor->setText(harmless(title));
}

void StatusNotifierItem::click(int x, int y)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (screen == nullptr || (!m_desktop.tellsPointer && x == 0 && y == 0)) {
        Q_EMIT activated(std::nullopt);
        return;
    }
    const QPointF place =
        m_desktop.tellsPointer ? QPointF(QCursor::pos()) : QPointF(x, y) / screen->devicePixelRatio();
    // The bus counts downwards from the top, points count upwards from the main screen's lower edge.
    const QRect frame = screen->geometry();
    Q_EMIT activated(Point{place.x(), frame.y() + frame.height() - place.y()});
}

} // namespace corvane
