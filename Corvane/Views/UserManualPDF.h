// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <QUrl>

#include <functional>

namespace corvane {

/// The printable manual, a finished document that is installed with the program. Main thread only.
class UserManualPDF {
public:
    /// Has the desktop open something with its own program for it; whether there was one.
    using Opener = std::function<bool(const QUrl &)>;

    /// `folders` are those that the manual is sought in, the first one first. `beep` is the user's alert
    /// sound. Both functions are called by open() only.
    UserManualPDF(QStringList folders, Opener opener, std::function<void()> beep);

    /// Opens the manual with the desktop's viewer; where the manual is missing, or the desktop has nothing to
    /// open it with, the alert sounds. Says nothing otherwise. The file is sought afresh at each call.
    void open() const;

private:
    QStringList m_folders;
    Opener m_opener;
    std::function<void()> m_beep;
};

} // namespace corvane
