// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DesktopAppearance.h"

#include <utility>

namespace corvane {

/// A desktop whose appearance a test sets. It fulfils the port's contract.
class FakeDesktopAppearance final : public DesktopAppearance {
    Q_OBJECT

public:
    using DesktopAppearance::DesktopAppearance;

    [[nodiscard]] Appearance appearance() const override { return m_appearance; }

    void set(const Appearance &appearance)
    {
        if (std::exchange(m_appearance, appearance) != appearance) {
            Q_EMIT changed();
        }
    }

private:
    Appearance m_appearance;
};

} // namespace corvane
