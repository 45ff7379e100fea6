// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <expected>

namespace corvane {

/// The agent's entry in the desktop's autostart folder. It exists while requests are pending, so that the
/// desktop starts the agent at login only when needed. Main thread only.
class LoginEntry {
public:
    /// `program` is the absolute path of the program to start with --login; `configHome` is the user's
    /// configuration folder.
    LoginEntry(QString program, const QString &configHome);

    /// The user's configuration folder ($XDG_CONFIG_HOME).
    [[nodiscard]] static QString userConfigHome();

    /// Creates or removes the entry; changes nothing if it is already right. The error is for the log.
    std::expected<void, QString> setPresent(bool isPresent);

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    QString m_program;
    QString m_path;
};

} // namespace corvane
