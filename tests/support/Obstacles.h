// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

#include <QFile>
#include <QString>
#include <QTest>

#include <algorithm>

/// Obstacles that may be found where a program keeps a file.
namespace corvane::obstacles {

enum class Kind { pipe, socket, folder, device, linkToNothing, linkToDevice, linkToPipe, linkToForeignFile };

/// Remembers the state of an obstacle, so that a test can check later that it is untouched.
class Obstacle {
public:
    explicit Obstacle(const QString &path) : m_path(QFile::encodeName(path))
    {
        m_isThere = ::lstat(m_path.constData(), &m_before) == 0;
    }

    [[nodiscard]] bool isThere() const { return m_isThere; }

    [[nodiscard]] bool isUntouched() const
    {
        struct stat now = {};
        return ::lstat(m_path.constData(), &now) == 0 && now.st_ino == m_before.st_ino &&
               now.st_mode == m_before.st_mode && now.st_mtim.tv_sec == m_before.st_mtim.tv_sec &&
               now.st_mtim.tv_nsec == m_before.st_mtim.tv_nsec;
    }

private:
    QByteArray m_path;
    struct stat m_before = {};
    bool m_isThere = false;
};

inline void bindSocket(const QByteArray &path)
{
    // A socket address has room for about 100 bytes, so bind by file name from within the folder.
    const qsizetype slash = path.lastIndexOf('/');
    char before[4096];
    const bool isKnown =
        ::getcwd(before, sizeof before) != nullptr && ::chdir(path.first(slash).constData()) == 0;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = path.sliced(slash + 1).left(sizeof address.sun_path - 1);
    std::copy(name.begin(), name.end(), address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isBound =
        isKnown && ::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    ::close(socket);
    QVERIFY(isBound && ::chdir(before) == 0);
}

inline Obstacle put(Kind kind, const QString &where)
{
    const QByteArray path = QFile::encodeName(where);
    switch (kind) {
    case Kind::pipe:
        ::mkfifo(path.constData(), 0600);
        break;
    case Kind::socket:
        bindSocket(path);
        break;
    case Kind::folder:
        ::mkdir(path.constData(), 0755);
        break;
    case Kind::device:
        // Only root can create a device; other users get a link to one.
        if (::mknod(path.constData(), S_IFCHR | 0600, makedev(1, 3)) != 0) {
            ::symlink("/dev/null", path.constData());
        }
        break;
    case Kind::linkToNothing:
        ::symlink("nowhere", path.constData());
        break;
    case Kind::linkToDevice:
        ::symlink("/dev/null", path.constData());
        break;
    case Kind::linkToPipe:
        ::mkfifo((path + ".pipe").constData(), 0600);
        ::symlink((path + ".pipe").constData(), path.constData());
        break;
    case Kind::linkToForeignFile:
        if (::geteuid() == 0) {
            ::mknod((path + ".foreign").constData(), S_IFREG | 0644, 0);
            ::chown((path + ".foreign").constData(), 65534, 65534);
            ::symlink((path + ".foreign").constData(), path.constData());
        } else {
            ::symlink("/etc/passwd", path.constData());
        }
        break;
    }
    return Obstacle(where);
}

/// Adds the column "kind" with a row for each kind.
inline void addRows()
{
    QTest::addColumn<Kind>("kind");
    QTest::newRow("a pipe") << Kind::pipe;
    QTest::newRow("a socket") << Kind::socket;
    QTest::newRow("a folder") << Kind::folder;
    QTest::newRow("a device") << Kind::device;
    QTest::newRow("a link to nothing") << Kind::linkToNothing;
    QTest::newRow("a link to a device") << Kind::linkToDevice;
    QTest::newRow("a link to a pipe") << Kind::linkToPipe;
    QTest::newRow("a link to somebody else's file") << Kind::linkToForeignFile;
}

} // namespace corvane::obstacles
