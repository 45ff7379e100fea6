// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/DirectNotifications.h"

#include <QTest>

namespace corvane {

/// What every implementation of DirectNotifications must do. A test class derives from it and provides the
/// notifications of a desktop that shows them until takeServerAway().
class DirectNotificationsContract : public QObject {
    Q_OBJECT

protected:
    virtual DirectNotifications &notifications() = 0;
    virtual void takeServerAway() = 0;

    /// What the user reads: "title: body" for each notification, in order.
    virtual QStringList read() = 0;

private Q_SLOTS:
    void theTextIsShownLiterally()
    {
        QVERIFY(QCoro::waitFor(notifications().showQuietly(QStringLiteral("One & <b>two</b>"),
                                                           QStringLiteral("3 < 4 & <i>five</i>"))));
        QCOMPARE(read(), QStringList{QStringLiteral("One & <b>two</b>: 3 < 4 & <i>five</i>")});
    }

    void aMissingServerIsReported()
    {
        takeServerAway();
        QVERIFY(!QCoro::waitFor(notifications().showQuietly(QStringLiteral("One"), QStringLiteral("Two"))));
        QCOMPARE(read(), QStringList());
    }
};

} // namespace corvane
