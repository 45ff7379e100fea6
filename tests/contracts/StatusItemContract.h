// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/StatusItem.h"

#include <QSignalSpy>
#include <QStringList>
#include <QTest>

#include <cmath>
#include <optional>

namespace corvane {

/// What every implementation of StatusItem must do. A test class derives from it and provides an item, the
/// texts that a host received, and the actions of a teacher and a host.
class StatusItemContract : public QObject {
    Q_OBJECT

protected:
    /// The item under test, new for each test and already known to its host.
    virtual StatusItem &item() = 0;
    /// The texts that the host received, oldest first.
    [[nodiscard]] virtual QStringList published() = 0;
    /// The part of `texts`, set one after another, that published() shows: all of them, or only the last if
    /// the host fetches the text when it needs it.
    [[nodiscard]] virtual QStringList seenOf(const QStringList &texts) { return texts; }
    /// The lines of the host's tool tip as plain text.
    [[nodiscard]] virtual QStringList toolTip() = 0;
    /// The teacher clicks the item in the host, which passes `token` along unless it is empty.
    virtual void click(const QString &token) = 0;
    /// The token that the item must report after click(token): `token`, or none if the host has no tokens.
    [[nodiscard]] virtual QString given(const QString &token) { return token; }
    /// The position that the item must report for click(), to within 4 points; empty if it knows none.
    virtual std::optional<Point> placeOfClick() = 0;
    /// The host opens the item's menu; the teacher chooses the entry at `index`.
    virtual void openMenu() = 0;
    virtual void chooseLine(int index) = 0;
    /// The host disappears or comes back.
    virtual void setHostThere(bool isThere) = 0;

private Q_SLOTS:
    void aTitleReachesTheHost()
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
        QTRY_COMPARE(published(), seenOf(expected));
    }

    void aVeryLongTitleIsAccepted()
    {
        item().setTitle(QString(1000000, u'x'));
        item().setTitle(QStringLiteral("after"));
        QTRY_VERIFY(!published().isEmpty() && published().constLast() == QStringLiteral("after"));
    }

    void aNoticeIsShownBelowTheTitleAndChangesNothingElse()
    {
        const QString title = QStringLiteral("Anna");
        const QString notice = QStringLiteral("No answer from <b>A</b> & B");
        item().setTitle(title);
        item().setNotice(notice);
        QTRY_COMPARE(toolTip(), (QStringList{title, notice}));
        item().setTitle(QStringLiteral("Ben"));
        QTRY_COMPARE(toolTip(), (QStringList{QStringLiteral("Ben"), notice}));
        item().setNotice({});
        QTRY_COMPARE(toolTip(), (QStringList{QStringLiteral("Ben")}));
        QCOMPARE(published(), seenOf({title, QStringLiteral("Ben")}));
    }

    void aVeryLongNoticeIsAccepted()
    {
        item().setTitle(QStringLiteral("Anna"));
        item().setNotice(QString(1000000, u'x'));
        QTRY_COMPARE(toolTip().size(), 2);
        QVERIFY(toolTip().constLast().startsWith(u'x'));
        item().setNotice(QStringLiteral("after"));
        QTRY_COMPARE(toolTip(), (QStringList{QStringLiteral("Anna"), QStringLiteral("after")}));
    }

    void aClickIsReportedAndTheItemStillWorks()
    {
        QSignalSpy clicks(&item(), &StatusItem::activated);
        click({});
        QTRY_COMPARE(clicks.size(), 1);
        item().setTitle(QStringLiteral("still there"));
        QTRY_COMPARE(published(), QStringList{QStringLiteral("still there")});
    }

    void aClickReportsItsPositionAndToken()
    {
        QSignalSpy clicks(&item(), &StatusItem::activated);
        const auto place = placeOfClick();
        click(QStringLiteral("token"));
        // A token belongs only to the click that it came with.
        click({});
        QTRY_COMPARE(clicks.size(), 2);
        for (const QList<QVariant> &click : clicks) {
            const auto told = click.constFirst().value<std::optional<Point>>();
            QCOMPARE(told.has_value(), place.has_value());
            QVERIFY(!told || (std::abs(told->x - place->x) <= 4 && std::abs(told->y - place->y) <= 4));
        }
        QCOMPARE(clicks.at(0).at(1).toString(), given(QStringLiteral("token")));
        QCOMPARE(clicks.at(1).at(1).toString(), QString());
    }

    void itIsShownWhileAHostIsThere()
    {
        QTRY_VERIFY(item().isShown());
        QSignalSpy changes(&item(), &StatusItem::shownChanged);
        setHostThere(false);
        QTRY_COMPARE(changes, (QList<QVariantList>{{false}}));
        QVERIFY(!item().isShown());
        setHostThere(true);
        QTRY_COMPARE(changes, (QList<QVariantList>{{false}, {true}}));
        QVERIFY(item().isShown());
    }

    void openingTheMenuIsReported()
    {
        item().setMenu({{QStringLiteral("One"), [] {}}});
        QSignalSpy openings(&item(), &StatusItem::menuAboutToShow);
        openMenu();
        QTRY_COMPARE(openings.size(), 1);
        openMenu();
        QTRY_COMPARE(openings.size(), 2);
    }

    void aChosenEntryActsAndASeparatorDoesNot()
    {
        QStringList chosen;
        const auto line = [&](const QString &text) {
            return StatusMenuEntry{text, [&chosen, text] { chosen.append(text); }};
        };
        item().setMenu({line(QStringLiteral("One")), {}, line(QStringLiteral("Three"))});
        chooseLine(1);
        chooseLine(2);
        chooseLine(0);
        const QStringList expected{QStringLiteral("Three"), QStringLiteral("One")};
        QTRY_COMPARE(chosen, expected);
    }

    void openingTheMenuIsNoClick()
    {
        item().setMenu({{QStringLiteral("One"), [] {}}});
        QSignalSpy openings(&item(), &StatusItem::menuAboutToShow);
        QSignalSpy clicks(&item(), &StatusItem::activated);
        openMenu();
        QTRY_COMPARE(openings.size(), 1);
        QVERIFY(clicks.isEmpty());
    }

    void aNewMenuReplacesTheOldOne()
    {
        QStringList chosen;
        item().setMenu({{QStringLiteral("Old"), [&] { chosen.append(QStringLiteral("Old")); }}});
        item().setMenu({{QStringLiteral("New"), [&] { chosen.append(QStringLiteral("New")); }}});
        chooseLine(0);
        QTRY_COMPARE(chosen, QStringList{QStringLiteral("New")});
    }
};

} // namespace corvane
