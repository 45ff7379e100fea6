// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/Screens.h"

#include <optional>
#include <vector>

namespace corvane {

/// Screens that a test lays out; by default one of 1440 × 900 points with a dock of 25 points at the bottom.
/// Counts the calls.
class FakeScreens final : public Screens {
public:
    [[nodiscard]] std::vector<Screen> screens() const override
    {
        ++screensCalls;
        return allScreens;
    }
    [[nodiscard]] std::optional<Screen> mainScreen() const override
    {
        ++mainScreenCalls;
        return main;
    }
    [[nodiscard]] std::optional<Screen> keyWindowScreen() const override
    {
        ++keyWindowScreenCalls;
        return keyWindow;
    }
    [[nodiscard]] Point pointerLocation() const override
    {
        ++pointerLocationCalls;
        return pointer;
    }

    std::vector<Screen> allScreens{
        {.name = QStringLiteral("A"), .frame = {0, 0, 1440, 900}, .visibleFrame = {0, 25, 1440, 875}}};
    std::optional<Screen> main = allScreens.front();
    std::optional<Screen> keyWindow;
    Point pointer{100, 100};

    mutable int screensCalls = 0;
    mutable int mainScreenCalls = 0;
    mutable int keyWindowScreenCalls = 0;
    mutable int pointerLocationCalls = 0;
};

} // namespace corvane
