// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SystemSounds.h"

#include <QTest>

namespace corvane {

/// What every implementation of SystemSounds must do. A test class derives from it and hands in sounds with
/// one named "Glass" among them and one, named minute(), that lasts for a minute.
class SystemSoundsContract : public QObject {
    Q_OBJECT

protected:
    static QString minute() { return QStringLiteral("quillet-minute"); }

    /// The sounds under test, made anew for each test. They give a call less than a minute.
    virtual SystemSounds &sounds() = 0;

    /// From now on no call is answered before it has returned.
    virtual void holdAnswers() = 0;

private Q_SLOTS:
    void aSoundThatIsThereStarts() { QVERIFY(QCoro::waitFor(sounds().play(QStringLiteral("Glass")))); }

    void aSoundThatIsNotThereDoesNotStart()
    {
        QVERIFY(!QCoro::waitFor(sounds().play(QStringLiteral("quillet-no-such-sound"))));
    }

    void aMissingSoundDoesNotKeepTheNextFromStarting()
    {
        QVERIFY(!QCoro::waitFor(sounds().play(QStringLiteral("quillet-no-such-sound"))));
        QVERIFY(QCoro::waitFor(sounds().play(QStringLiteral("Glass"))));
    }

    void anAnswerDoesNotWaitForTheEndOfTheSound() { QVERIFY(QCoro::waitFor(sounds().play(minute()))); }

    void aCallReturnsBeforeItsAnswer()
    {
        holdAnswers();
        const auto task = sounds().play(QStringLiteral("Glass"));
        QVERIFY(!task.isReady());
    }

    void callsAtTheSameTimeAreAnsweredEachByItself()
    {
        auto first = sounds().play(QStringLiteral("Glass"));
        auto second = sounds().play(QStringLiteral("quillet-no-such-sound"));
        QVERIFY(QCoro::waitFor(first));
        QVERIFY(!QCoro::waitFor(second));
    }

    void twoSoundsInQuickSuccessionBothStart()
    {
        auto first = sounds().play(QStringLiteral("Glass"));
        auto second = sounds().play(QStringLiteral("Glass"));
        QVERIFY(QCoro::waitFor(first));
        QVERIFY(QCoro::waitFor(second));
    }
};

} // namespace corvane
