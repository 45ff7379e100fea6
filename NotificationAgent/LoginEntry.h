// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <expected>

namespace corvane {

/// The agent's own entry in the desktop's autostart folder, there while something is pending: so the desktop
/// starts the agent at login when it is needed, and only then. Main thread only.
class LoginEntry {
public:
    /// `program` is the absolute path of what is started with --login; `configHome` the user's configuration
    /// folder.
    LoginEntry(QString program, const QString &configHome);

    /// The user's configuration folder ($XDG_CONFIG_HOME).
    [[nodiscard]] static QString userConfigHome();

    /// Puts the entry there, or takes it away; touches nothing when all is as it should be. The error is told
    /// in words for the log.
    std::expected<void, QString> setPresent(bool isPresent);

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    QString m_program;
    QString m_path;
};

} // namespace corvane
