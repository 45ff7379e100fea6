// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/LoginItem.h"

#include <QString>
#include <QStringList>

#include <expected>

namespace corvane {

/// The login item as an entry of the desktop's autostart folder. Main thread only.
///
/// The entry's own keys are written as they must be; keys and groups that somebody else added to the file (a
/// start delay, a desktop to be shown in) are kept. "Hidden" and the switches with which a desktop turns an
/// entry off are ours: the program's own setting decides, and it is applied at each start.
class AutostartLoginItem final : public LoginItem {
public:
    /// `program` is the absolute path of what is started. `configHome` is the user's configuration folder,
    /// `configDirectories` are the machine's, in which a package may have put an entry of its own.
    /// With `isTrial` the program leaves the entry of another one alone as long as that can be started.
    AutostartLoginItem(QString program, const QString &configHome, QStringList configDirectories,
                       bool isTrial = false);

    /// For the running program, in the folders that the environment names. One that runs from the folder it
    /// was built in is on trial: it does not take an installed one's place.
    [[nodiscard]] static AutostartLoginItem forThisProgram();

    std::expected<void, Failure> registerItem() override;

    /// Removes the entry; where a package's entry would then take its place, writes one that hides it.
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
