// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SystemSounds.h"

#include <QTest>

namespace corvane {

/// What every implementation of SystemSounds must do. A test class derives from it and provides sounds,
/// including one named "Glass" and one named minute() that lasts a minute.
class SystemSoundsContract : public QObject {
    Q_OBJECT

protected:
    static QString minute() { return QStringLiteral("quillet-minute"); }

    /// The sounds under test, new for each test. Their time limit for a call is below a minute.
    virtual SystemSounds &sounds() = 0;

    /// From now on no call is answered before it returns.
    virtual void holdAnswers() = 0;

private Q_SLOTS:
    void anAvailableSoundStarts() { QVERIFY(QCoro::waitFor(sounds().play(QStringLiteral("Glass")))); }

    void aMissingSoundDoesNotStart()
    {
        QVERIFY(!QCoro::waitFor(sounds().play(QStringLiteral("quillet-no-such-sound"))));
    }

    void aSoundStartsAfterAMissingOne()
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

    void concurrentCallsAreAnsweredSeparately()
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
