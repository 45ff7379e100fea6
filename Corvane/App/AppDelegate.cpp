// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/AppDelegate.h"

#include <QGuiApplication>

namespace corvane {

void AppDelegate::applicationDidFinishLaunching() const
{
    QGuiApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
}

} // namespace corvane
