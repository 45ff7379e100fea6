// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/DesktopAppearance.h"

#include <QSignalSpy>
#include <QTest>

namespace corvane {

/// What every implementation of DesktopAppearance must do. A test class derives from it and provides the
/// appearance of a desktop without any settings, which say() changes.
class DesktopAppearanceContract : public QObject {
    Q_OBJECT

protected:
    using Scheme = Appearance::Scheme;

    static constexpr int timeout = 30'000; // milliseconds; tells a hang from a busy machine

    virtual DesktopAppearance &desktop() = 0;
    /// Has the desktop announce `appearance`, with at most one message for each part.
    virtual void say(const Appearance &appearance) = 0;

private Q_SLOTS:
    void aDesktopWithoutSettingsLeavesAllToTheToolkit() { QCOMPARE(desktop().appearance(), Appearance{}); }

    void eachSchemeIsReported()
    {
        const QSignalSpy changes(&desktop(), &DesktopAppearance::changed);
        qsizetype told = 0;
        for (const Scheme scheme : {Scheme::dark, Scheme::light, Scheme::unsaid, Scheme::dark}) {
            say({.scheme = scheme});
            QTRY_COMPARE_WITH_TIMEOUT(desktop().appearance().scheme, scheme, timeout);
            QCOMPARE(changes.size(), ++told);
        }
    }

    void anAccentAndItsRemovalAreReported()
    {
        const Appearance::Accent accent{0.25, 0.5, 1};
        say({.accent = accent});
        QTRY_COMPARE_WITH_TIMEOUT(desktop().appearance().accent, std::optional(accent), timeout);
        say({});
        QTRY_COMPARE_WITH_TIMEOUT(desktop().appearance().accent, std::optional<Appearance::Accent>(),
                                  timeout);
    }

    void reducedMotionAndItsEndAreReported()
    {
        say({.reducesMotion = true});
        QTRY_VERIFY_WITH_TIMEOUT(desktop().appearance().reducesMotion, timeout);
        say({});
        QTRY_VERIFY_WITH_TIMEOUT(!desktop().appearance().reducesMotion, timeout);
    }

    void aRepeatedSettingIsNoChange()
    {
        const Appearance dark{.scheme = Scheme::dark, .reducesMotion = true};
        say(dark);
        QTRY_COMPARE_WITH_TIMEOUT(desktop().appearance(), dark, timeout);
        const QSignalSpy changes(&desktop(), &DesktopAppearance::changed);
        say(dark);
        say({.scheme = Scheme::light, .reducesMotion = true});
        QTRY_COMPARE_WITH_TIMEOUT(desktop().appearance().scheme, Scheme::light, timeout);
        QCOMPARE(changes.size(), 1);
    }
};

} // namespace corvane
