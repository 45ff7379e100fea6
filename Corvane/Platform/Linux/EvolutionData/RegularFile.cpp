// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/RegularFile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace corvane {

std::expected<QByteArray, QString> readRegularFile(const QByteArray &path, qint64 maximumSize)
{
    // A pipe would keep a blocking open() waiting for its writer.
    const int descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return std::unexpected(QString::fromLocal8Bit(std::strerror(errno)));
    }
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return std::unexpected(file.errorString());
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::unexpected(u"it is no regular file"_s);
    }
    if (status.st_size > maximumSize) {
        return std::unexpected(u"it is too large"_s);
    }
    QByteArray bytes = file.read(maximumSize + 1);
    if (bytes.isEmpty() && file.error() != QFileDevice::NoError) {
        return std::unexpected(file.errorString());
    }
    if (bytes.size() > maximumSize) {
        return std::unexpected(u"it is too large"_s);
    }
    return bytes;
}

} // namespace corvane
