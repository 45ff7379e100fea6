// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <optional>

namespace corvane {

/// The desktop's preferences for the look of programs. What is not set is left to the toolkit.
struct Appearance {
    enum class Scheme { unsaid, light, dark };

    /// sRGB components, 0 to 1.
    struct Accent {
        double red = 0;
        double green = 0;
        double blue = 0;

        friend bool operator==(const Accent &, const Accent &) = default;
    };

    Scheme scheme = Scheme::unsaid;
    std::optional<Accent> accent = {};
    bool reducesMotion = false;

    friend bool operator==(const Appearance &, const Appearance &) = default;
};

/// Follows the desktop's appearance while the program runs. Main thread only; reports no errors: if the
/// desktop provides nothing, the appearance is the default one.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The appearance as known so far; the default until the desktop has answered, which no caller waits for.
    [[nodiscard]] virtual Appearance appearance() const = 0;

Q_SIGNALS:
    /// appearance() has changed; never emitted without a change.
    void changed();
};

} // namespace corvane
