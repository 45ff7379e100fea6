// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Views/LinkOpener.h"

#include <QStringList>

#include <functional>

namespace corvane {

/// The printable manual, a PDF installed with the program. Main thread only.
class UserManualPDF {
public:
    /// `folders` are searched for the manual in order. `beep` plays the user's alert sound. Both functions
    /// are called by open() only.
    UserManualPDF(QStringList folders, LinkOpener opener, std::function<void()> beep);

    /// Opens the manual with the desktop's viewer; plays the alert sound if the manual or a viewer is
    /// missing, and reports nothing else. The file is searched for at each call.
    void open() const;

private:
    QStringList m_folders;
    LinkOpener m_opener;
    std::function<void()> m_beep;
};

} // namespace corvane
