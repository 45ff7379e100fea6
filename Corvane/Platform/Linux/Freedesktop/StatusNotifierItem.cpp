// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"

#include "Corvane/Platform/Linux/Freedesktop/StatusMenuAdaptor.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItemAdaptor.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusTitle.h"
#include "Corvane/Utilities/DesktopPoints.h"
#include "Corvane/Utilities/PlainText.h"

#include <QCursor>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QLineF>
#include <QScreen>

#include <optional>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int registrationTimeout = 5000;
constexpr auto itemPath = "/StatusNotifierItem"_L1;
constexpr auto menuPath = "/StatusNotifierItem/Menu"_L1;
constexpr auto watcherService = "org.kde.StatusNotifierWatcher"_L1;
constexpr auto watcherPath = "/StatusNotifierWatcher"_L1;

// Whether a call failed because the name has no owner. The second error is for calls without autostart.
bool isAbsence(const QDBusError &error)
{
    return error.type() == QDBusError::ServiceUnknown ||
           error.name() == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1;
}

} // namespace

StatusNotifierItem::Desktop StatusNotifierItem::Desktop::current()
{
    Desktop desktop;
    const QList<QByteArray> names = qgetenv("XDG_CURRENT_DESKTOP").toLower().split(':');
    for (const QByteArray &name : names) {
        desktop.showsLabel = desktop.showsLabel || name == "gnome" || name == "unity" || name == "budgie";
    }
    // Under Wayland a program gets the pointer's position only while it is over one of the program's windows.
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
    StatusNotifierItemAdaptor::Handlers handlers{
        .click = [this](int x, int y) { click(x, y); },
        .activationToken = [this](const QString &token) { m_activationToken = token; }};
    if (desktop.showsLabel) {
        m_adaptor = new LabelledStatusNotifierItemAdaptor(this, icons, menuPath, std::move(handlers),
                                                          desktop.labelPause);
    } else {
        m_adaptor = new StatusNotifierItemAdaptor(this, icons, menuPath, std::move(handlers));
    }
    if (!m_bus.isConnected()) {
        m_isAbsent = true;
        return;
    }
    exportMenu();
    m_bus.registerObject(itemPath, this, QDBusConnection::ExportAdaptors);
    auto *watcher =
        new QDBusServiceWatcher(watcherService, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) {
                ++m_attempt;
                m_isSilent = false;
                // Nothing is known of a new watcher until it answers.
                setPresence(false, true, newOwner.isEmpty());
                if (!newOwner.isEmpty()) {
                    m_adaptor->hostChanged();
                    registerItem();
                }
            });
    m_bus.connect(watcherService, watcherPath, watcherService, u"StatusNotifierHostRegistered"_s, this,
                  SLOT(hostRegistered()));
    m_bus.connect(watcherService, watcherPath, watcherService, u"StatusNotifierHostUnregistered"_s, this,
                  SLOT(hostUnregistered()));
    registerItem();
}

// On every desktop: some hosts take the conventional path for "no menu" for a real one and open an empty
// menu.
void StatusNotifierItem::exportMenu()
{
    auto *object = new QObject(this);
    m_menuAdaptor = new StatusMenuAdaptor(
        object, m_bus,
        {.aboutToShow = [this] { Q_EMIT menuAboutToShow(); },
         .clicked =
             [this](int index) {
                 // Queued, so that the host gets its reply first: the action may end the program.
                 if (const auto action = m_menu[static_cast<std::size_t>(index)].action) {
                     QMetaObject::invokeMethod(this, action, Qt::QueuedConnection);
                 }
             }});
    m_bus.registerObject(menuPath, object, QDBusConnection::ExportAdaptors);
}

StatusNotifierItem::~StatusNotifierItem()
{
    m_bus.unregisterObject(itemPath, QDBusConnection::UnregisterTree);
}

void StatusNotifierItem::registerItem()
{
    auto message = QDBusMessage::createMethodCall(watcherService, watcherPath, watcherService,
                                                  u"RegisterStatusNotifierItem"_s);
    message.setAutoStartService(false);
    // The connection's unique name: it vanishes with the program, and sandboxes allow it.
    message << m_bus.baseService();
    const int attempt = ++m_attempt;
    auto *call = new QDBusPendingCallWatcher(m_bus.asyncCall(message, registrationTimeout), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, attempt] {
        call->deleteLater();
        if (attempt == m_attempt) {
            registrationAnswered(call->reply());
        }
    });
}

void StatusNotifierItem::registrationAnswered(const QDBusMessage &answer)
{
    if (answer.type() == QDBusMessage::ReplyMessage) {
        m_isSilent = false;
        m_menuAdaptor->hostChanged();
        setPresence(true, true, false);
        Q_EMIT registered();
        queryHost();
        return;
    }
    const QDBusError error(answer);
    if (isAbsence(error)) {
        setPresence(false, true, true);
        return;
    }
    const bool isSilent = error.type() == QDBusError::NoReply || error.type() == QDBusError::TimedOut;
    if (!isSilent || !std::exchange(m_isSilent, true)) {
        Q_EMIT registrationFailed(error.message());
    }
    // Asked again without a delay: the call has taken its full timeout. A watcher that has gone is not
    // silent.
    if (isSilent && m_bus.isConnected()) {
        registerItem();
    }
}

void StatusNotifierItem::queryHost()
{
    auto message = QDBusMessage::createMethodCall(watcherService, watcherPath,
                                                  u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message.setAutoStartService(false);
    message << QString(watcherService) << u"IsStatusNotifierHostRegistered"_s;
    const int attempt = m_attempt;
    auto *call = new QDBusPendingCallWatcher(m_bus.asyncCall(message, registrationTimeout), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, attempt] {
        call->deleteLater();
        const QVariantList arguments = call->reply().arguments();
        if (attempt == m_attempt && !call->isError() && !arguments.isEmpty()) {
            const QVariant value = arguments.constFirst().value<QDBusVariant>().variant();
            if (value.typeId() == QMetaType::Bool && !value.toBool()) {
                hostUnregistered();
            }
        }
    });
}

void StatusNotifierItem::hostRegistered()
{
    if (m_isRegistered) {
        if (!m_hasHost) {
            m_adaptor->hostChanged();
            m_menuAdaptor->hostChanged();
        }
        setPresence(true, true, false);
    }
}

void StatusNotifierItem::hostUnregistered()
{
    if (m_isRegistered) {
        setPresence(true, false, true);
    }
}

void StatusNotifierItem::setPresence(bool isRegistered, bool hasHost, bool isAbsent)
{
    const bool wasShown = isShown();
    const bool wasAbsent = std::exchange(m_isAbsent, isAbsent);
    m_isRegistered = isRegistered;
    m_hasHost = hasHost;
    if (isShown() != wasShown) {
        Q_EMIT shownChanged(isShown());
    }
    if (m_isAbsent && !wasAbsent) {
        Q_EMIT absenceFound();
    }
}

void StatusNotifierItem::setMenu(std::vector<StatusMenuEntry> entries)
{
    m_menu = std::move(entries);
    if (m_menuAdaptor != nullptr) {
        QStringList texts;
        for (const StatusMenuEntry &entry : m_menu) {
            texts.append(plainText(entry.text));
        }
        m_menuAdaptor->setLines(texts);
    }
}

void StatusNotifierItem::setTitle(const QString &title)
{
    m_adaptor->setText(harmlessTitle(title));
}

void StatusNotifierItem::setNotice(const QString &notice)
{
    m_adaptor->setNotice(harmlessTitle(notice));
}

void StatusNotifierItem::click(int x, int y)
{
    const QString token = std::exchange(m_activationToken, QString());
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (screen == nullptr || (!m_desktop.tellsPointer && x == 0 && y == 0)) {
        Q_EMIT activated(std::nullopt, token);
        return;
    }
    const QPointF told = QPointF(x, y) / screen->devicePixelRatio();
    QPointF place = m_desktop.tellsPointer ? QPointF(QCursor::pos()) : told;
    // An item chosen with the keyboard is not at the pointer. A made-up position lies on the screen's edge.
    constexpr double farFromItem = 64;
    if (x > 0 && y > 0 && QLineF(place, told).length() > farFromItem) {
        place = told;
    }
    // On the bus, y counts downwards from the top; in points, upwards from the main screen's lower edge.
    const QRect frame = screen->geometry();
    Q_EMIT activated(pointsUp(place, frame.y() + frame.height()), token);
}

} // namespace corvane
