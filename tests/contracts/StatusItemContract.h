// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/StatusItem.h"

#include <QSignalSpy>
#include <QStringList>
#include <QTest>

namespace corvane {

/// What every implementation of StatusItem must do. A test class derives from it and hands in an item, the
/// texts that a panel was told, and a click.
class StatusItemContract : public QObject {
    Q_OBJECT

protected:
    /// The item under test, made anew for each test and already known to its panel.
    virtual StatusItem &item() = 0;
    /// The texts that the panel was told, oldest first.
    [[nodiscard]] virtual QStringList published() = 0;
    /// The teacher clicks the item in the panel.
    virtual void click() = 0;

private Q_SLOTS:
    void aTitleReachesThePanel()
    {
        item().setTitle(QStringLiteral("Anna in 4 min"));
        QTRY_COMPARE(published(), QStringList{QStringLiteral("Anna in 4 min")});
    }

    void aTitleIsPublishedOnlyWhenItChanges()
    {
        item().setTitle(QStringLiteral("one"));
        item().setTitle(QStringLiteral("one"));
        item().setTitle(QStringLiteral("two"));
        item().setTitle(QStringLiteral("two"));
        item().setTitle(QStringLiteral("one"));
        const QStringList expected{QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("one")};
        QTRY_COMPARE(published(), expected);
    }

    void aTitleOfAnyLengthIsTaken()
    {
        item().setTitle(QString(1000000, u'x'));
        item().setTitle(QStringLiteral("after"));
        QTRY_VERIFY(!published().isEmpty() && published().constLast() == QStringLiteral("after"));
    }

    void aClickIsToldAndLosesNothing()
    {
        QSignalSpy clicks(&item(), &StatusItem::activated);
        click();
        QTRY_COMPARE(clicks.size(), 1);
        item().setTitle(QStringLiteral("still there"));
        QTRY_COMPARE(published(), QStringList{QStringLiteral("still there")});
    }
};

} // namespace corvane
