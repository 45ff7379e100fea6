// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Toolkit/ToolkitWindowSystem.h"

#include "Corvane/Platform/Linux/X11/X11Connection.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <utility>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// A window that lacks the keyboard is activated again after the first delay, then after twice and four times
// that. It must keep the keyboard for the first delay, unless another program takes it.
constexpr std::chrono::milliseconds firstDelay{250};
constexpr int mostActivationsAgain = 3;

QWindow *toolkitWindow(WindowId id)
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto window = std::find_if(windows.begin(), windows.end(), [id](const QWindow *candidate) {
        return candidate->handle() != nullptr && candidate->winId() == id;
    });
    return window != windows.end() ? *window : nullptr;
}

bool canActivate()
{
    const std::uint32_t message = x11::atom("_NET_ACTIVE_WINDOW");
    const auto supported = x11::property(x11::rootWindow(), "_NET_SUPPORTED");
    return message != 0 && std::find(supported.begin(), supported.end(), message) != supported.end();
}

} // namespace

ToolkitWindowSystem::ToolkitWindowSystem()
{
    m_nextActivation.setSingleShot(true);
    QObject::connect(&m_nextActivation, &QTimer::timeout, &m_nextActivation, [this] { activateAgain(); });
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &m_nextActivation,
                     [this](const QWindow *window) { focusMoved(window); });
}

std::optional<std::uint32_t> ToolkitWindowSystem::timeOf(const QString &token)
{
    constexpr auto mark = "_TIME"_L1;
    const qsizetype at = token.lastIndexOf(mark);
    if (at < 0) {
        return std::nullopt;
    }
    bool isNumber = false;
    const std::uint32_t time = QStringView(token).sliced(at + mark.size()).toUInt(&isNumber);
    return isNumber && time != 0 ? std::optional(time) : std::nullopt;
}

bool ToolkitWindowSystem::isComposited() const
{
    // Under Wayland all windows are composited.
    return x11::connection() == nullptr ? QGuiApplication::platformName().startsWith("wayland"_L1)
                                        : x11::isComposited();
}

void ToolkitWindowSystem::userAsked(const QString &token)
{
    if (!token.isEmpty()) {
        m_token = token;
    }
    if (x11::connection() != nullptr) {
        m_userTime = timeOf(token).value_or(x11::serverTime().value_or(0));
    }
}

void ToolkitWindowSystem::keepOutOfTaskBar(WindowId window)
{
    // When the window is shown, the toolkit keeps the states that it finds and adds its own.
    x11::appendAtoms(static_cast<std::uint32_t>(window), "_NET_WM_STATE",
                     {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"});
}

void ToolkitWindowSystem::bringToFront(WindowId window)
{
    const QString token = std::exchange(m_token, QString());
    if (x11::connection() == nullptr) {
        if (QWindow *known = toolkitWindow(window)) {
            if (!token.isEmpty()) {
                // The toolkit reads the token from here and removes it.
                qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
            }
            known->requestActivate();
        }
        return;
    }
    const auto id = static_cast<std::uint32_t>(window);
    if (!token.isEmpty()) {
        x11::setText(id, "_NET_STARTUP_ID", token.toUtf8().toStdString());
        x11::endStartup(token.toUtf8().toStdString());
    }
    if (m_userTime != 0) {
        x11::setNumber(id, "_NET_WM_USER_TIME", m_userTime);
    }
    if (canActivate()) {
        x11::activate(id, m_userTime);
        m_activated = window;
        m_hadFocus = false;
        m_activationsLeft = mostActivationsAgain;
        if (timeOf(token)) {
            // The user may have done something else since then: the window manager decides.
            m_nextActivation.stop();
        } else {
            m_nextActivation.start(firstDelay);
        }
    } else if (QWindow *known = toolkitWindow(window)) {
        known->requestActivate();
    }
}

void ToolkitWindowSystem::focusMoved(const QWindow *window)
{
    if (!m_nextActivation.isActive()) {
        return;
    }
    if (window != nullptr && window == toolkitWindow(m_activated)) {
        m_hadFocus = true;
        m_nextActivation.start(firstDelay);
    } else if (window == nullptr && m_hadFocus) {
        m_nextActivation.stop();
    }
}

void ToolkitWindowSystem::activateAgain()
{
    const QWindow *window = toolkitWindow(m_activated);
    if (window == nullptr || !window->isVisible() || window == QGuiApplication::focusWindow()) {
        return;
    }
    x11::activate(static_cast<std::uint32_t>(m_activated), x11::serverTime().value_or(m_userTime));
    --m_activationsLeft;
    if (m_activationsLeft > 0) {
        m_nextActivation.start(firstDelay * (1 << (mostActivationsAgain - m_activationsLeft)));
    }
}

bool ToolkitWindowSystem::watchPresses(std::function<void()> pressed)
{
    // Destroyed before the next watch is made, because its destructor cancels the events that both select.
    m_presses.reset();
    if (pressed) {
        m_presses = std::make_unique<x11::PressWatch>(std::move(pressed));
    }
    // In a Wayland session the X server does not see presses on Wayland windows.
    return m_presses && m_presses->isServed() && qgetenv("XDG_SESSION_TYPE") != "wayland" &&
           qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

} // namespace corvane
