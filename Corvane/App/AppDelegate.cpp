// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/AppDelegate.h"

#include <QGuiApplication>
#include <QIcon>

using namespace Qt::StringLiterals;

namespace corvane {

void AppDelegate::applicationDidFinishLaunching() const
{
    // Of the windows' frames; the desktop knows it under the same name only where the program is installed.
    QGuiApplication::setWindowIcon(QIcon(u":/icons/com.ordwinsoftware.Quillet.svg"_s));
    QGuiApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
}

} // namespace corvane
