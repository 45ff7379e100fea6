// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/LoginItem.h"

#include <expected>
#include <optional>
#include <vector>

namespace corvane {

/// A login item without a desktop, which records each call.
class FakeLoginItem final : public LoginItem {
public:
    enum class Call { registered, unregistered };

    /// All calls, in order.
    std::vector<Call> calls;

    /// Whether the desktop would start the program at login.
    bool isRegistered = false;

    /// When set, each call fails with it and changes nothing.
    std::optional<Failure> failure;

    std::expected<void, Failure> registerItem() override { return call(Call::registered, true); }
    std::expected<void, Failure> unregisterItem() override { return call(Call::unregistered, false); }

private:
    std::expected<void, Failure> call(Call call, bool state)
    {
        calls.push_back(call);
        if (failure) {
            return std::unexpected(*failure);
        }
        isRegistered = state;
        return {};
    }
};

} // namespace corvane
