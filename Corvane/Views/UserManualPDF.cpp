// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/UserManualPDF.h"

#include "Corvane/Utilities/Resources.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

UserManualPDF::UserManualPDF(QStringList folders, LinkOpener opener, std::function<void()> beep)
    : m_folders(std::move(folders))
    , m_opener(std::move(opener))
    , m_beep(std::move(beep))
{
}

void UserManualPDF::open() const
{
    const auto path = resources::find(m_folders, u"Quillet-User-Manual.pdf"_s);
    if (!path || !m_opener(QUrl::fromLocalFile(*path))) {
        m_beep();
    }
}

} // namespace corvane
