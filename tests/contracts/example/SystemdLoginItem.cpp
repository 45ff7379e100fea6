// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/contracts/example/SystemdLoginItem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr auto unitName = "com.ordwinsoftware.Quillet.service"_L1;

/// The unit that starts `program`. It goes through a shell, since systemd rejects program paths that contain
/// quotes; the colon disables systemd's variable substitution.
QByteArray unitText(QString program)
{
    program.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s).replace(u'%', u"%%"_s);
    return u"[Unit]\nDescription=Quillet\nPartOf=graphical-session.target\nAfter=graphical-session.target\n\n"
           "[Service]\nExecStart=:/bin/sh -c 'exec \"$0\" --login' \"%1\"\n\n"
           "[Install]\nWantedBy=graphical-session.target\n"_s.replace(u"%1"_s, program)
               .toUtf8();
}

std::unexpected<Failure> failure(const QString &path, const QString &reason)
{
    return std::unexpected(Failure{path + u": "_s + reason});
}

std::expected<void, Failure> remove(const QString &path)
{
    QFile file(path);
    // exists() is false for a dangling link, which must be removed as well.
    if ((QFileInfo(path).isSymLink() || file.exists()) && !file.remove()) {
        return failure(path, file.errorString());
    }
    return {};
}

} // namespace

SystemdLoginItem::SystemdLoginItem(QString program, const QString &configHome)
    : m_program(std::move(program))
    , m_unit(configHome + u"/systemd/user/"_s + unitName)
    , m_link(configHome + u"/systemd/user/graphical-session.target.wants/"_s + unitName)
{
}

std::expected<void, Failure> SystemdLoginItem::registerItem()
{
    if (!QDir().mkpath(QFileInfo(m_link).path())) {
        return failure(QFileInfo(m_link).path(), u"the folder cannot be made"_s);
    }
    QSaveFile unit(m_unit);
    if (!unit.open(QIODevice::WriteOnly) || unit.write(unitText(m_program)) < 0 || !unit.commit()) {
        return failure(m_unit, unit.errorString());
    }
    // Remove anything that already has this name; the unit itself stays in place.
    if (auto removed = remove(m_link); !removed) {
        return removed;
    }
    QFile target(m_unit);
    return target.link(m_link) ? std::expected<void, Failure>() : failure(m_link, target.errorString());
}

std::expected<void, Failure> SystemdLoginItem::unregisterItem()
{
    // The link first, since it is what enables the unit.
    auto removed = remove(m_link);
    return removed ? remove(m_unit) : removed;
}

} // namespace corvane
