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
            QTRY_COMPARE(desktop().appearance().scheme, scheme);
            QCOMPARE(changes.size(), ++told);
        }
    }

    void anAccentAndItsRemovalAreReported()
    {
        const Appearance::Accent accent{0.25, 0.5, 1};
        say({.accent = accent});
        QTRY_COMPARE(desktop().appearance().accent, std::optional(accent));
        say({});
        QTRY_COMPARE(desktop().appearance().accent, std::optional<Appearance::Accent>());
    }

    void reducedMotionAndItsEndAreReported()
    {
        say({.reducesMotion = true});
        QTRY_VERIFY(desktop().appearance().reducesMotion);
        say({});
        QTRY_VERIFY(!desktop().appearance().reducesMotion);
    }

    void aRepeatedSettingIsNoChange()
    {
        const Appearance dark{.scheme = Scheme::dark, .reducesMotion = true};
        say(dark);
        QTRY_COMPARE(desktop().appearance(), dark);
        const QSignalSpy changes(&desktop(), &DesktopAppearance::changed);
        say(dark);
        say({.scheme = Scheme::light, .reducesMotion = true});
        QTRY_COMPARE(desktop().appearance().scheme, Scheme::light);
        QCOMPARE(changes.size(), 1);
    }
};

} // namespace corvane
