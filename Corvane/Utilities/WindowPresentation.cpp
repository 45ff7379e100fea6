// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/WindowPresentation.h"

#include <QApplication>
#include <QMetaObject>
#include <QWidget>

namespace corvane {

namespace {

void makeKeyAndOrderFront(const QString &title, WindowSystem &windowSystem)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && window->windowTitle() == title) {
            if (window->isMinimized()) {
                window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
            }
            window->raise();
            windowSystem.bringToFront(window->winId());
            return;
        }
    }
}

} // namespace

void WindowPresentation::open(const QString &id, const QString &title, const OpenWindow &openWindow,
                              WindowSystem &windowSystem)
{
    windowSystem.userAsked({});
    openWindow(id);
    QMetaObject::invokeMethod(
        qApp, [title, &windowSystem] { makeKeyAndOrderFront(title, windowSystem); }, Qt::QueuedConnection);
}

} // namespace corvane
