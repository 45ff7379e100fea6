// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/SingleInstance.h"

#include "Corvane/Platform/Linux/Freedesktop/ApplicationAdaptor.h"
#include "Corvane/Platform/Linux/Freedesktop/BusNames.h"
#include "Corvane/Utilities/DebugLogService.h"
#include "Corvane/Utilities/Names.h"
#include "Corvane/Utilities/RegularFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <qcoro/qcorodbuspendingcall.h>
#include <qcoro/qcorosignal.h>

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QSysInfo>

#include <cerrno>
#include <chrono>
#include <memory>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr auto applicationPath = "/com/ordwinsoftware/Quillet"_L1;

// How long the first instance may take from its lock to its name.
constexpr std::chrono::milliseconds nameDelay{2000};

// The flag and the reply of RequestName.
constexpr uint doNotQueue = 4;
constexpr uint nameExists = 3;

// Requests the name. Whether the bus says that another program owns it; an unclear answer counts as no.
QCoro::Task<bool> isOwnedByOther(QDBusConnection bus)
{
    auto request = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                  u"org.freedesktop.DBus"_s, u"RequestName"_s);
    request << QString(names::application) << doNotQueue;
    const QDBusMessage answer = co_await bus.asyncCall(request, bus::questionTimeout);
    const QVariantList arguments = answer.arguments();
    co_return answer.type() == QDBusMessage::ReplyMessage && !arguments.isEmpty() &&
        arguments.constFirst().toUInt() == nameExists;
}

QCoro::Task<QDBusMessage> activate(QDBusConnection bus, QString token)
{
    auto call = QDBusMessage::createMethodCall(names::application, applicationPath,
                                               u"org.freedesktop.Application"_s, u"Activate"_s);
    // Must reach the running program, not start one.
    call.setAutoStartService(false);
    QVariantMap platformData;
    if (!token.isEmpty()) {
        platformData.insert(u"activation-token"_s, token);
        platformData.insert(u"desktop-startup-id"_s, token);
    }
    call << platformData;
    co_return co_await bus.asyncCall(call, bus::questionTimeout);
}

QCoro::Task<SingleInstance::Start> handOver(QDBusConnection bus, QString token)
{
    if (!bus.isConnected()) {
        co_return SingleInstance::Start::otherSilent;
    }
    QDBusServiceWatcher arrival(names::application, bus, QDBusServiceWatcher::WatchForRegistration);
    const auto hasArrived = std::make_shared<bool>(false);
    QObject::connect(&arrival, &QDBusServiceWatcher::serviceRegistered, &arrival,
                     [hasArrived] { *hasArrived = true; });
    QDBusMessage answer = co_await activate(bus, token);
    if (answer.errorName() == "org.freedesktop.DBus.Error.ServiceUnknown"_L1 ||
        answer.errorName() == "org.freedesktop.DBus.Error.NameHasNoOwner"_L1) {
        // The other instance may hold its lock but not yet its name.
        if (!*hasArrived) {
            co_await qCoro(&arrival, &QDBusServiceWatcher::serviceRegistered, nameDelay);
        }
        answer = co_await activate(bus, token);
    }
    co_return answer.type() == QDBusMessage::ReplyMessage ? SingleInstance::Start::handedOver
                                                          : SingleInstance::Start::otherSilent;
}

} // namespace

SingleInstance::SingleInstance(QDBusConnection sessionBus, QStringList lockDirectories, QObject *parent)
    : QObject(parent)
    , m_bus(std::move(sessionBus))
    , m_lockDirectories(std::move(lockDirectories))
{
    new ApplicationAdaptor(this,
                           {.activate = [this](const QString &token) { Q_EMIT activationRequested(token); },
                            .quit = [this] { Q_EMIT quitRequested(); }});
}

SingleInstance::~SingleInstance()
{
    m_bus.unregisterObject(applicationPath);
    unlock();
}

QStringList SingleInstance::userLockDirectories()
{
    QStringList directories;
    if (const QString library = DebugLogService::userLibraryDirectory(); !library.isEmpty()) {
        directories.append(library + u"/quillet"_s);
    }
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (QDir::isAbsolutePath(runtime)) {
        directories.append(runtime + u"/quillet"_s);
    }
    return directories;
}

QString SingleInstance::takeActivationToken()
{
    QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    if (token.isEmpty()) {
        token = qEnvironmentVariable("DESKTOP_STARTUP_ID");
    }
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
    return token;
}

bool SingleInstance::lock()
{
    // A home folder may be shared between machines, and each of them may run the program.
    const QString name = u"instance-%1.lock"_s.arg(QString::fromLatin1(QSysInfo::machineUniqueId()));
    for (const QString &directory : std::as_const(m_lockDirectories)) {
        [[maybe_unused]] const auto made = makePrivateFolder(QFile::encodeName(directory));
        const QByteArray path = QFile::encodeName(QDir(directory).filePath(name));
        const int file =
            ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, 0600);
        if (file < 0) {
            continue;
        }
        // The kernel releases the lock however the program ends. The file stays: after a removal, two
        // programs could lock two files of the same name.
        if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
            m_locks.append(file);
            continue;
        }
        const bool isHeldByOther = errno == EWOULDBLOCK;
        ::close(file);
        if (isHeldByOther) {
            unlock();
            return false;
        }
    }
    return true;
}

void SingleInstance::unlock()
{
    for (const int file : std::exchange(m_locks, {})) {
        ::close(file);
    }
}

void SingleInstance::giveUp()
{
    m_bus.unregisterObject(applicationPath);
    unlock();
    if (m_bus.isConnected()) {
        constexpr int releaseMilliseconds = 1000;
        auto release = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                      u"org.freedesktop.DBus"_s, u"ReleaseName"_s);
        release << QString(names::application);
        m_bus.call(release, QDBus::Block, releaseMilliseconds);
    }
}

QCoro::Task<SingleInstance::Start> SingleInstance::claim(QString activationToken, Wish wish)
{
    const QDBusConnection bus = m_bus;
    if (!lock()) {
        if (wish == Wish::nothing) {
            co_return Start::leftAlone;
        }
        co_return co_await handOver(bus, activationToken);
    }
    if (!m_bus.isConnected()) {
        co_return Start::first;
    }
    m_bus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s,
                  this, SLOT(disconnected()));
    // The object first: a program that sees the name appear may call at once.
    m_bus.registerObject(applicationPath, this, QDBusConnection::ExportAdaptors);
    const QPointer<SingleInstance> alive(this);
    if (!co_await isOwnedByOther(bus)) {
        co_return Start::first;
    }
    if (alive) {
        // The other instance holds its locks elsewhere. Release these, or a third start would find them held
        // by a program that is about to end.
        alive->m_bus.unregisterObject(applicationPath);
        alive->unlock();
    }
    if (wish == Wish::nothing) {
        co_return Start::leftAlone;
    }
    co_return co_await handOver(bus, activationToken);
}

void SingleInstance::disconnected()
{
    Q_EMIT busLost();
}

} // namespace corvane
