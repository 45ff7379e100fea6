// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/PowerSource.h"

#include <QSignalSpy>
#include <QTest>

namespace corvane {

/// What every implementation of PowerSource must do. A test class derives from it and provides a new source
/// for each test, on a machine that is plugged in.
class PowerSourceContract : public QObject {
    Q_OBJECT

protected:
    virtual const PowerSource &source() = 0;
    virtual void setOnBattery(bool isOnBattery) = 0;

private Q_SLOTS:
    void aPluggedInMachineIsNotOnBattery() { QVERIFY(!source().isOnBattery()); }

    void eachChangeIsReportedOnce()
    {
        const QSignalSpy changes(&source(), &PowerSource::changed);
        setOnBattery(true);
        QTRY_VERIFY(source().isOnBattery());
        setOnBattery(true);
        setOnBattery(false);
        QTRY_VERIFY(!source().isOnBattery());
        QCOMPARE(changes.size(), 2);
    }
};

} // namespace corvane
