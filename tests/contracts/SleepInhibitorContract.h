// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/SleepInhibitor.h"

#include <QTest>

namespace corvane {

/// What every implementation of SleepInhibitor must do. A test class derives from it and provides a new
/// inhibitor for each test, on a desktop that accepts its requests.
class SleepInhibitorContract : public QObject {
    Q_OBJECT

protected:
    virtual SleepInhibitor &inhibitor() = 0;

    /// The number of inhibitions that the desktop currently holds for the program.
    virtual int holds() = 0;

private Q_SLOTS:
    void nothingIsInhibitedWithoutARequest() { QCOMPARE(holds(), 0); }

    void sleepIsInhibitedAndAllowedAgain()
    {
        inhibitor().keepAwake();
        QTRY_COMPARE(holds(), 1);
        inhibitor().letSleep();
        QTRY_COMPARE(holds(), 0);
    }

    void repeatedRequestsChangeNothing()
    {
        inhibitor().letSleep();
        inhibitor().keepAwake();
        inhibitor().keepAwake();
        QTRY_COMPARE(holds(), 1);
        inhibitor().keepAwake();
        QTest::qWait(50);
        QCOMPARE(holds(), 1);
        inhibitor().letSleep();
        inhibitor().letSleep();
        QTRY_COMPARE(holds(), 0);
    }

    void theLastOfSeveralQuickRequestsWins()
    {
        for (int times = 0; times < 5; ++times) {
            inhibitor().keepAwake();
            inhibitor().letSleep();
        }
        inhibitor().keepAwake();
        QTRY_COMPARE(holds(), 1);
        QTest::qWait(50);
        QCOMPARE(holds(), 1);
        inhibitor().letSleep();
        inhibitor().keepAwake();
        inhibitor().letSleep();
        QTRY_COMPARE(holds(), 0);
        QTest::qWait(50);
        QCOMPARE(holds(), 0);
    }
};

} // namespace corvane
