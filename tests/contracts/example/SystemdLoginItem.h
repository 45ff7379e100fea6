// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/LoginItem.h"

#include <QString>

namespace corvane {

/// A login item as a user unit that systemd starts with a graphical session, for desktops that reach
/// graphical-session.target but read no autostart folder. Main thread only.
///
/// It creates the files that `systemctl --user enable` would; a running manager reads them at the next login.
class SystemdLoginItem final : public LoginItem {
public:
    /// `program` is the absolute path of the program to start, `configHome` the user's configuration folder.
    SystemdLoginItem(QString program, const QString &configHome);

    std::expected<void, Failure> registerItem() override;
    std::expected<void, Failure> unregisterItem() override;

    /// The path of the unit, which may not exist.
    [[nodiscard]] const QString &path() const { return m_unit; }

private:
    QString m_program;
    QString m_unit;
    QString m_link; ///< the link to the unit in the target's ".wants" folder
};

} // namespace corvane
