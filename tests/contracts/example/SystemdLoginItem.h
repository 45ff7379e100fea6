// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/LoginItem.h"

#include <QString>

namespace corvane {

/// The login item as a user unit that systemd starts with a graphical session, for desktops that reach
/// graphical-session.target but read no autostart folder. Main thread only.
///
/// It is what `systemctl --user enable` does, done by hand: a running manager takes it up at the next login.
class SystemdLoginItem final : public LoginItem {
public:
    /// `program` is the absolute path of what is started, `configHome` the user's configuration folder.
    SystemdLoginItem(QString program, const QString &configHome);

    std::expected<void, Failure> registerItem() override;
    std::expected<void, Failure> unregisterItem() override;

    /// Where the unit is, or would be.
    [[nodiscard]] const QString &path() const { return m_unit; }

private:
    QString m_program;
    QString m_unit;
    QString m_link; ///< its name among the units that the target wants
};

} // namespace corvane
