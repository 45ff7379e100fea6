// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <optional>

namespace corvane {

/// What the desktop says of how programs are to look. What it does not say is left to the toolkit.
struct Appearance {
    enum class Scheme { unsaid, light, dark };

    /// Shares of sRGB's colours, 0 to 1.
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

/// The desktop's settings of that, while the program runs. Main thread only; nothing here fails towards the
/// caller: where the desktop says nothing, the appearance is the default one.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// What the desktop has said so far; the default until it has answered, which no caller waits for.
    [[nodiscard]] virtual Appearance appearance() const = 0;

Q_SIGNALS:
    /// appearance() is another one; never emitted while it is the same.
    void changed();
};

} // namespace corvane
