// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/AppDelegate.h"

#include "Corvane/Utilities/Names.h"

#include <QGuiApplication>
#include <QIcon>

using namespace Qt::StringLiterals;

namespace corvane {

void AppDelegate::applicationDidFinishLaunching() const
{
    // From the resources: the desktop finds an icon of this name only where the program is installed.
    QGuiApplication::setWindowIcon(QIcon(u":/icons/"_s + names::application + u".svg"_s));
    QGuiApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
}

} // namespace corvane
