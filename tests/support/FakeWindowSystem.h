// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/WindowSystem.h"

#include <QList>
#include <QStringList>

#include <functional>
#include <utility>

namespace corvane {

/// A window system that records the calls and does nothing else.
class FakeWindowSystem final : public WindowSystem {
public:
    [[nodiscard]] bool isComposited() const override { return composited; }
    void userAsked(const QString &token) override
    {
        tokens.append(token);
        calls.append(QStringLiteral("asked"));
    }
    void keepOutOfTaskBar(WindowId window) override
    {
        keptOut.append(window);
        calls.append(QStringLiteral("kept out"));
    }
    void bringToFront(WindowId window) override
    {
        broughtToFront.append(window);
        calls.append(QStringLiteral("front"));
    }

    bool watchPresses(std::function<void()> pressed) override
    {
        onPress = std::move(pressed);
        return onPress && tellsPresses;
    }

    /// The user presses a button outside the windows; not reported if `tellsPresses` is false.
    void pressElsewhere() const
    {
        if (tellsPresses && onPress) {
            const auto pressed = onPress;
            pressed();
        }
    }

    std::function<void()> onPress;
    bool tellsPresses = true;
    bool composited = false;
    QStringList tokens;
    QList<WindowId> keptOut;
    QList<WindowId> broughtToFront;
    QStringList calls; ///< calls of all kinds, in order
};

} // namespace corvane
