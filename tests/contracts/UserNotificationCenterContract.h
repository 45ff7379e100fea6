// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Notifications/UserNotificationCenter.h"

#include <QTest>

#include <cmath>

namespace corvane {

/// What every implementation of UserNotificationCenter must do. A test class derives from it and provides,
/// for each test, a centre with nothing pending on a desktop that permits notifications.
class UserNotificationCenterContract : public QObject {
    Q_OBJECT

protected:
    virtual UserNotificationCenter &center() = 0;
    /// Lets time pass until `moment`; requests due by then are shown.
    virtual void passUntil(Date moment) = 0;
    /// The user permits notifications on the desktop or forbids them.
    virtual void setGranted(bool isGranted) = 0;

private:
    /// A request due on the first whole second at least `after` seconds from now.
    [[nodiscard]] static NotificationRequest request(const QString &identifier, double after = 3600)
    {
        const Date fireDate = dateSince1970(std::ceil(secondsSince1970(currentDate()) + after));
        return {.identifier = identifier,
                .title = QStringLiteral("Quillet: prepare"),
                .body = QStringLiteral("Anna starts in 4 minutes."),
                .categoryIdentifier = QStringLiteral("quillet.lesson"),
                .fireDate = fireDate,
                .expirationDate = fireDate + Seconds{240}};
    }

    [[nodiscard]] bool add(const NotificationRequest &added)
    {
        return QCoro::waitFor(center().add(added)).has_value();
    }

    [[nodiscard]] bool remove(const QStringList &identifiers)
    {
        return QCoro::waitFor(center().removePendingNotificationRequests(identifiers)).has_value();
    }

    /// The pending identifiers, sorted.
    [[nodiscard]] QStringList pending()
    {
        QStringList identifiers = QCoro::waitFor(center().pendingNotificationRequests())
                                      .value_or(QStringList{QStringLiteral("(failed)")});
        identifiers.sort();
        return identifiers;
    }

private Q_SLOTS:
    void notificationsAreGranted()
    {
        const auto granted = QCoro::waitFor(center().requestAuthorization());
        QVERIFY(granted.has_value());
        QVERIFY(*granted);
    }

    void aChangedPermissionIsNoticed()
    {
        for (const bool isGranted : {false, true}) {
            setGranted(isGranted);
            QCOMPARE(QCoro::waitFor(center().requestAuthorization()),
                     (std::expected<bool, Failure>(isGranted)));
        }
    }

    void aQuietRequestIsKeptLikeAnyOther()
    {
        NotificationRequest quiet = request(QStringLiteral("quiet"));
        quiet.isQuiet = true;
        QVERIFY(add(quiet));
        QVERIFY(add(request(QStringLiteral("loud"))));
        QCOMPARE(pending(), (QStringList{QStringLiteral("loud"), QStringLiteral("quiet")}));
        QVERIFY(remove({QStringLiteral("quiet")}));
        QCOMPARE(pending(), QStringList{QStringLiteral("loud")});
    }

    void nothingIsPendingAtFirst() { QCOMPARE(pending(), QStringList()); }

    void anAddedRequestIsPending()
    {
        QVERIFY(add(request(QStringLiteral("a"))));
        QVERIFY(add(request(QStringLiteral("b"))));
        QCOMPARE(pending(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    }

    void aRequestReplacesOneWithTheSameIdentifier()
    {
        QVERIFY(add(request(QStringLiteral("a"))));
        QVERIFY(add(request(QStringLiteral("a"), 7200)));
        QCOMPARE(pending(), QStringList{QStringLiteral("a")});
    }

    void aRemovedRequestIsNoLongerPending()
    {
        QVERIFY(add(request(QStringLiteral("a"))));
        QVERIFY(add(request(QStringLiteral("b"))));
        QVERIFY(add(request(QStringLiteral("c"))));
        QVERIFY(remove({QStringLiteral("a"), QStringLiteral("c")}));
        QCOMPARE(pending(), QStringList{QStringLiteral("b")});
    }

    void removingAnUnknownRequestIsIgnored()
    {
        QVERIFY(remove({}));
        QVERIFY(remove({QStringLiteral("never")}));
        QVERIFY(add(request(QStringLiteral("a"))));
        QVERIFY(remove({QStringLiteral("never"), QStringLiteral("a"), QStringLiteral("a")}));
        QCOMPARE(pending(), QStringList());
    }

    void anIdentifierMayBeAnyText()
    {
        QStringList identifiers{
            QStringLiteral("quillet.backup.start.1763190000.Anna Smith"),
            QStringLiteral("quillet.backup.start.1763190000.王小明 (课)"), QStringLiteral("أحمد 🎓"),
            QStringLiteral("two\nlines\tand \"quotes\" \\ / % ; = [x]"), QString(300, u'x')};
        for (const QString &identifier : identifiers) {
            QVERIFY2(add(request(identifier)), qPrintable(identifier));
        }
        identifiers.sort();
        QCOMPARE(pending(), identifiers);
        QVERIFY(remove(identifiers));
        QCOMPARE(pending(), QStringList());
    }

    void aRequestWithAVeryLongTextIsAccepted()
    {
        const QString endless(1'000'000, u'x');
        NotificationRequest pages = request(QStringLiteral("long.") + endless);
        pages.body = endless;
        QVERIFY(add(pages));
        QVERIFY(add(pages));
        QVERIFY(add(request(QStringLiteral("long.") + endless + u'y')));
        const QStringList both = pending();
        QCOMPARE(both.size(), 2);
        QVERIFY(both[0].startsWith(QStringLiteral("long.xxx")) &&
                both[1].startsWith(QStringLiteral("long.xxx")));
        QVERIFY(remove({both[0]}));
        QCOMPARE(pending(), QStringList{both[1]});
        QVERIFY(remove({both[1]}));
        QCOMPARE(pending(), QStringList());
    }

    void aRequestIsPendingUntilItsFireDate()
    {
        const NotificationRequest soon = request(QStringLiteral("soon"), 1.5);
        QVERIFY(add(soon));
        QVERIFY(add(request(QStringLiteral("later"))));
        QCOMPARE(pending().size(), 2);
        passUntil(soon.fireDate + Seconds{0.5});
        QCOMPARE(pending(), QStringList{QStringLiteral("later")});
    }

    void aFireDateIsTruncatedToAWholeSecond()
    {
        NotificationRequest soon = request(QStringLiteral("soon"), 1.5);
        soon.fireDate += Seconds{0.9};
        QVERIFY(add(soon));
        passUntil(soon.fireDate - Seconds{0.4});
        QCOMPARE(pending(), QStringList());
    }

    void aReplacedRequestKeepsOnlyItsNewFireDate()
    {
        const NotificationRequest soon = request(QStringLiteral("a"), 1.5);
        QVERIFY(add(soon));
        QVERIFY(add(request(QStringLiteral("a"))));
        passUntil(soon.fireDate + Seconds{0.5});
        QCOMPARE(pending(), QStringList{QStringLiteral("a")});
    }

    void callsAreExecutedInOrder()
    {
        auto first = center().add(request(QStringLiteral("a")));
        auto second = center().pendingNotificationRequests();
        auto third = center().removePendingNotificationRequests({QStringLiteral("a")});
        auto fourth = center().add(request(QStringLiteral("b")));
        auto fifth = center().pendingNotificationRequests();
        const auto before = QCoro::waitFor(second);
        const auto after = QCoro::waitFor(fifth);
        QVERIFY(QCoro::waitFor(first).has_value() && QCoro::waitFor(third).has_value() &&
                QCoro::waitFor(fourth).has_value());
        QVERIFY(before.has_value() && after.has_value());
        QCOMPARE(*before, QStringList{QStringLiteral("a")});
        QCOMPARE(*after, QStringList{QStringLiteral("b")});
    }
};

} // namespace corvane
