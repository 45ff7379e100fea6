// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/LoginItem.h"

#include <QString>
#include <QStringList>

#include <expected>

namespace corvane {

/// The login item as an entry in the desktop's autostart folder. Main thread only.
///
/// The entry's own keys are always rewritten; keys and groups that others added (a start delay, a desktop to
/// be shown in) are kept. "Hidden" and the keys by which a desktop turns an entry off are ours: the program's
/// own setting decides, and it is applied at each start.
class AutostartLoginItem final : public LoginItem {
public:
    /// `program` is the absolute path of the program to start. `configHome` is the user's configuration
    /// folder, `configDirectories` are the system's, where a package may have installed an entry. With
    /// `isTrial`, an entry for another program is left alone as long as that program can be started.
    AutostartLoginItem(QString program, const QString &configHome, QStringList configDirectories,
                       bool isTrial = false);

    /// For the running program, in the folders that the environment names. A program that runs from its build
    /// tree is on trial: it does not replace an installed one.
    [[nodiscard]] static AutostartLoginItem forThisProgram();

    std::expected<void, Failure> registerItem() override;

    /// Removes the entry. If a package's entry would then take effect, writes one that hides it.
    std::expected<void, Failure> unregisterItem() override;

    /// Where the entry is, or would be.
    [[nodiscard]] const QString &path() const { return m_path; }

private:
    [[nodiscard]] std::expected<void, Failure> write(const QByteArray &content) const;

    QString m_program;
    QString m_path;
    QStringList m_systemPaths;
    bool m_isTrial;
};

} // namespace corvane
