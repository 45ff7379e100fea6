// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/SessionDisplay.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <cstddef>
#include <cstring>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// `address` is a path, or an abstract name, which begins with a null byte.
bool accepts(const QByteArray &address)
{
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    if (address.isEmpty() || address.size() >= static_cast<qsizetype>(sizeof(name.sun_path))) {
        return false;
    }
    std::memcpy(name.sun_path, address.constData(), static_cast<std::size_t>(address.size()));
    // A listening socket accepts at once, even if its owner hangs, so this never waits.
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0) {
        return false;
    }
    const auto length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(address.size()));
    const bool isConnected = ::connect(socket, reinterpret_cast<const sockaddr *>(&name), length) == 0;
    ::close(socket);
    return isConnected;
}

bool isXServerThere(const QString &display)
{
    const qsizetype colon = display.lastIndexOf(u':');
    const QString host = display.first(qMax(colon, 0));
    if (colon < 0 || (!host.isEmpty() && host != "unix"_L1)) {
        return false;
    }
    bool isNumber = false;
    const int number = display.sliced(colon + 1).section(u'.', 0, 0).toInt(&isNumber);
    if (!isNumber || number < 0) {
        return false;
    }
    const QByteArray path = "/tmp/.X11-unix/X" + QByteArray::number(number);
    return accepts(path) || accepts(QByteArray(1, '\0') + path);
}

bool isCompositorThere(const QString &name, const QString &runtimeFolder)
{
    if (name.isEmpty()) {
        return false;
    }
    return accepts(QFile::encodeName(QDir::isAbsolutePath(name) ? name : runtimeFolder + u'/' + name));
}

} // namespace

bool SessionDisplay::isThere(const QString &runtimeFolder) const
{
    return isXServerThere(display) || isCompositorThere(waylandDisplay, runtimeFolder);
}

QMap<QString, QString> SessionDisplay::environment() const
{
    QMap<QString, QString> variables{
        {u"DISPLAY"_s, display}, {u"WAYLAND_DISPLAY"_s, waylandDisplay}, {u"XAUTHORITY"_s, authority}};
    variables.removeIf([](const auto &variable) { return variable.value().isEmpty(); });
    return variables;
}

} // namespace corvane
