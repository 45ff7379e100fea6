// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/LoginItem.h"

#include <QTest>

namespace corvane {

/// What every implementation of LoginItem must do. A test class derives from it and provides an unregistered
/// item and a way to ask whether the desktop would start the program.
class LoginItemContract : public QObject {
    Q_OBJECT

protected:
    /// The item under test, new for each test.
    virtual LoginItem &item() = 0;
    [[nodiscard]] virtual bool startsAtLogin() = 0;
    /// From now on writing to the item's location fails.
    virtual void makeRegisteringImpossible() = 0;

private Q_SLOTS:
    void registeringStartsTheProgramAtLogin()
    {
        QVERIFY(item().registerItem().has_value());
        QVERIFY(startsAtLogin());
    }

    void registeringTwiceIsRegisteringOnce()
    {
        QVERIFY(item().registerItem().has_value());
        QVERIFY(item().registerItem().has_value());
        QVERIFY(startsAtLogin());
        QVERIFY(item().unregisterItem().has_value());
        QVERIFY(!startsAtLogin());
    }

    void unregisteringEndsTheStartAtLogin()
    {
        QVERIFY(item().registerItem().has_value());
        QVERIFY(item().unregisterItem().has_value());
        QVERIFY(!startsAtLogin());
    }

    void unregisteringAnUnregisteredItemSucceeds()
    {
        QVERIFY(item().unregisterItem().has_value());
        QVERIFY(item().unregisterItem().has_value());
        QVERIFY(!startsAtLogin());
    }

    void itCanBeRegisteredAgain()
    {
        QVERIFY(item().registerItem().has_value());
        QVERIFY(item().unregisterItem().has_value());
        QVERIFY(item().registerItem().has_value());
        QVERIFY(startsAtLogin());
    }

    void aFailedRegistrationReportsAReason()
    {
        makeRegisteringImpossible();
        const auto result = item().registerItem();
        QVERIFY(!result.has_value());
        QVERIFY(!result.error().localizedDescription.isEmpty());
        QVERIFY(!startsAtLogin());
    }
};

} // namespace corvane
