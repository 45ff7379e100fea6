// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/MissingBell.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace corvane {

QString missingBellHint(const QByteArray &desktop)
{
    const QList<QByteArray> names = desktop.toLower().split(':');
    const bool isGnome = names.contains("gnome") && !names.contains("budgie");
    const QString how =
        isGnome
            ? u"To see Quillet’s bell in GNOME’s top bar, install the package "
              "gnome-shell-extension-appindicator, log out and in again, and switch the extension on in the "
              "program Extensions."_s
            : u"To see Quillet’s bell, add a system tray to the desktop’s panel. It may be called "
              "notification area, status tray or indicators."_s;
    return how + u" Until then, start Quillet again to open this window."_s;
}

} // namespace corvane
