// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/SystemSounds.h"

#include <QElapsedTimer>
#include <QTest>

namespace corvane {

/// What every implementation of SystemSounds must do. A test class derives from it and hands in sounds with
/// one named "Glass" among them.
class SystemSoundsContract : public QObject {
    Q_OBJECT

protected:
    /// The sounds under test, made anew for each test.
    virtual SystemSounds &sounds() = 0;

    /// Milliseconds; "Glass" lasts for nine tenths of a second.
    static constexpr qint64 shorterThanTheSound = 800;

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

    void anAnswerDoesNotWaitForTheEndOfTheSound()
    {
        QElapsedTimer timer;
        timer.start();
        QVERIFY(QCoro::waitFor(sounds().play(QStringLiteral("Glass"))));
        QVERIFY2(timer.elapsed() < shorterThanTheSound, qPrintable(QString::number(timer.elapsed())));
    }

    void callsReturnAtOnce()
    {
        QElapsedTimer timer;
        timer.start();
        auto first = sounds().play(QStringLiteral("Glass"));
        auto second = sounds().play(QStringLiteral("quillet-no-such-sound"));
        QVERIFY2(timer.elapsed() < shorterThanTheSound, qPrintable(QString::number(timer.elapsed())));
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

    void aBeepReturnsAtOnce()
    {
        QElapsedTimer timer;
        timer.start();
        sounds().beep();
        QVERIFY2(timer.elapsed() < shorterThanTheSound, qPrintable(QString::number(timer.elapsed())));
    }
};

} // namespace corvane
