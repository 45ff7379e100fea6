// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/AppDelegate.h"

#include <QGuiApplication>

namespace corvane {

void AppDelegate::applicationDidFinishLaunching() const
{
    // The desktop shows a program in its task bar by its windows, of which there are none of the ordinary
    // kind.
    QGuiApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
}

} // namespace corvane
