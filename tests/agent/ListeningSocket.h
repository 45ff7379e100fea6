// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <QtGlobal>

#include <cstddef>
#include <cstring>

namespace corvane {

/// Stands for a display: a socket that accepts connections during this object's lifetime and says nothing.
class ListeningSocket {
public:
    /// `address` is a path, or begins with a null byte: a name in the abstract namespace.
    explicit ListeningSocket(const QByteArray &address)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        Q_ASSERT(address.size() < static_cast<qsizetype>(sizeof(name.sun_path)));
        std::memcpy(name.sun_path, address.constData(), static_cast<std::size_t>(address.size()));
        const std::size_t length = offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(address.size());
        if (::bind(m_socket, reinterpret_cast<const sockaddr *>(&name), static_cast<socklen_t>(length)) !=
                0 ||
            ::listen(m_socket, 10) != 0) {
            qFatal("nobody can listen at this address");
        }
    }
    ~ListeningSocket() { ::close(m_socket); }
    ListeningSocket(const ListeningSocket &) = delete;
    ListeningSocket &operator=(const ListeningSocket &) = delete;

private:
    int m_socket;
};

} // namespace corvane
