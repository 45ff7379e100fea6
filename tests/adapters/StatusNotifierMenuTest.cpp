// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItemAdaptor.h"
#include "tests/adapters/StatusNotifierRoom.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QDBusMessage>
#include <QSignalSpy>
#include <QTest>

#include <vector>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The item's menu as a host reads it.
class StatusNotifierMenuTest final : public QObject, private StatusNotifierRoom {
    Q_OBJECT

private Q_SLOTS:
    void init() { begin(); }
    void cleanup()
    {
        m_chosen.clear();
        end();
    }

    void theMenuHasItsEntriesInOrder()
    {
        makeWithMenu({u"Today’s schedule"_s, {}, u"a_b & <c>"_s});
        const MenuLayout menu = m_host->menu(name());
        QCOMPARE(menu.id, 0);
        QCOMPARE(menu.properties, (QVariantMap{{u"children-display"_s, u"submenu"_s}}));
        QCOMPARE(menu.children.size(), 3);
        QList<QVariantMap> lines;
        for (const MenuLayout &line : menu.children) {
            QCOMPARE(line.id, lines.size() + 1);
            QVERIFY(line.children.isEmpty());
            lines.append(line.properties);
        }
        QCOMPARE(lines.at(0), (QVariantMap{{u"label"_s, u"Today’s schedule"_s}}));
        QCOMPARE(lines.at(1), (QVariantMap{{u"type"_s, u"separator"_s}}));
        // A single underscore would mark an access key.
        QCOMPARE(lines.at(2), (QVariantMap{{u"label"_s, u"a__b & <c>"_s}}));
    }

    void onlyTheRequestedPartOfTheMenuIsReturned()
    {
        makeWithMenu({u"One"_s, u"Two"_s});
        QDBusMessage answer = m_host->askMenu(name(), u"GetLayout"_s, {0, 0, QStringList()});
        QCOMPARE(answer.signature(), u"u(ia{sv}av)"_s);
        QVERIFY(qdbus_cast<MenuLayout>(answer.arguments().at(1)).children.isEmpty());
        answer = m_host->askMenu(name(), u"GetLayout"_s, {2, -1, QStringList{u"label"_s}});
        const auto line = qdbus_cast<MenuLayout>(answer.arguments().at(1));
        QCOMPARE(line.id, 2);
        QCOMPARE(line.properties, (QVariantMap{{u"label"_s, u"Two"_s}}));
        answer = m_host->askMenu(name(), u"GetLayout"_s, {0, -1, QStringList{u"type"_s}});
        QCOMPARE(qdbus_cast<MenuLayout>(answer.arguments().at(1)).children.at(1).properties, QVariantMap());
    }

    void propertiesOfEntriesAreReturnedSinglyAndInGroups()
    {
        makeWithMenu({u"One"_s, {}, u"Three"_s});
        QDBusMessage answer = m_host->askMenu(name(), u"GetProperty"_s, {3, u"label"_s});
        QCOMPARE(answer.arguments().constFirst().value<QDBusVariant>().variant().toString(), u"Three"_s);
        const auto together = [&](const QList<int> &ids, const QStringList &names) {
            answer = m_host->askMenu(name(), u"GetGroupProperties"_s, {QVariant::fromValue(ids), names});
            QMap<int, QVariantMap> lines;
            for (const MenuLineProperties &line :
                 qdbus_cast<MenuLinesProperties>(answer.arguments().value(0))) {
                lines.insert(line.id, line.properties);
            }
            return lines;
        };
        QCOMPARE(together({1, 2, 77}, {}),
                 (QMap<int, QVariantMap>{{1, {{u"label"_s, u"One"_s}}}, {2, {{u"type"_s, u"separator"_s}}}}));
        QCOMPARE(answer.signature(), u"a(ia{sv})"_s);
        QCOMPARE(together({1, 2}, {u"type"_s}),
                 (QMap<int, QVariantMap>{{1, {}}, {2, {{u"type"_s, u"separator"_s}}}}));
        QCOMPARE(together({}, {}).keys(), (QList<int>{0, 1, 2, 3}));
    }

    void unknownEntriesAreErrors()
    {
        makeWithMenu({u"One"_s});
        QSignalSpy openings(m_item.get(), &StatusItem::menuAboutToShow);
        for (const int id : {-1, 2, 2147483647}) {
            QCOMPARE(m_host->askMenu(name(), u"GetLayout"_s, {id, -1, QStringList()}).type(),
                     QDBusMessage::ErrorMessage);
            QCOMPARE(m_host->askMenu(name(), u"GetProperty"_s, {id, u"label"_s}).type(),
                     QDBusMessage::ErrorMessage);
            m_host->chooseLine(name(), id);
            const QDBusMessage answer = m_host->askMenu(name(), u"AboutToShow"_s, {id});
            QCOMPARE(answer.arguments(), QVariantList{false});
        }
        QCOMPARE(m_host->askMenu(name(), u"GetProperty"_s, {1, u"icon-name"_s}).type(),
                 QDBusMessage::ErrorMessage);
        m_host->chooseLine(name(), 0);
        // It still answers, and nothing was chosen.
        QCOMPARE(m_host->menu(name()).children.size(), 1);
        QVERIFY(m_chosen.isEmpty());
        QVERIFY(openings.isEmpty());
    }

    void eventsMayComeInGroups()
    {
        makeWithMenu({u"One"_s, {}, u"Three"_s});
        const auto event = [](int id, const QString &what) {
            return MenuEvent{id, what, QDBusVariant(0), 0};
        };
        const MenuEvents events{event(3, u"clicked"_s), event(1, u"hovered"_s), event(9, u"clicked"_s),
                                event(2, u"clicked"_s), event(1, u"clicked"_s), event(0, u"opened"_s)};
        const QDBusMessage answer = m_host->askMenu(name(), u"EventGroup"_s, {QVariant::fromValue(events)});
        QVERIFY2(answer.type() == QDBusMessage::ReplyMessage, qPrintable(answer.errorMessage()));
        QCOMPARE(answer.signature(), u"ai"_s);
        QCOMPARE(qdbus_cast<QList<int>>(answer.arguments().constFirst()), QList<int>{9});
        QTRY_COMPARE(m_chosen, (QStringList{u"Three"_s, u"One"_s}));
    }

    void aboutToShowBeforeTheMenuIsReadIsNoOpening()
    {
        makeWithMenu({u"One"_s});
        QSignalSpy openings(m_item.get(), &StatusItem::menuAboutToShow);
        (void)m_host->askMenu(name(), u"AboutToShow"_s, {0});
        QVERIFY(openings.isEmpty());
        (void)m_host->menu(name());
        (void)m_host->askMenu(name(), u"AboutToShow"_s, {0});
        QCOMPARE(openings.size(), 1);
    }

    void anOpeningReportedTwiceCountsOnce()
    {
        makeWithMenu({u"One"_s});
        (void)m_host->menu(name());
        QSignalSpy openings(m_item.get(), &StatusItem::menuAboutToShow);
        const QVariant nothing = QVariant::fromValue(QDBusVariant(0));
        for (int times = 1; times <= 2; ++times) {
            (void)m_host->askMenu(name(), u"Event"_s, {0, u"opened"_s, nothing, uint{0}});
            (void)m_host->askMenu(name(), u"AboutToShow"_s, {0});
            QCOMPARE(openings.size(), times);
            (void)m_host->askMenu(name(), u"Event"_s, {0, u"closed"_s, nothing, uint{0}});
        }
    }

    void anOpeningInAGroupIsReported()
    {
        makeWithMenu({u"One"_s});
        (void)m_host->menu(name());
        QSignalSpy openings(m_item.get(), &StatusItem::menuAboutToShow);
        const QDBusMessage answer =
            m_host->askMenu(name(), u"AboutToShowGroup"_s, {QVariant::fromValue(QList<int>{0, 1, 5})});
        QCOMPARE(answer.signature(), u"aiai"_s);
        QCOMPARE(qdbus_cast<QList<int>>(answer.arguments().at(0)), QList<int>());
        QCOMPARE(qdbus_cast<QList<int>>(answer.arguments().at(1)), QList<int>{5});
        QCOMPARE(openings.size(), 1);
    }

    void aNewMenuIsAnnouncedOnceWithAHigherRevision()
    {
        makeWithMenu({u"One"_s});
        QTRY_COMPARE(m_host->layouts.size(), 1);
        uint first = 0;
        (void)m_host->menu(name(), &first);
        QCOMPARE(m_host->layouts.constLast(), (std::pair<uint, int>{first, 0}));
        m_item->setMenu(entries({u"One"_s})); // the same again
        m_item->setMenu(entries({u"One"_s, u"Two"_s}));
        uint second = 0;
        QCOMPARE(m_host->menu(name(), &second).children.size(), 2);
        QVERIFY(second > first);
        QCOMPARE(m_host->layouts.size(), 2);
        QCOMPARE(m_host->layouts.constLast(), (std::pair<uint, int>{second, 0}));
    }

    void theMenusPropertiesDescribeIt()
    {
        makeWithMenu({u"One"_s});
        auto message = QDBusMessage::createMethodCall(name(), u"/StatusNotifierItem/Menu"_s,
                                                      u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s);
        message << u"com.canonical.dbusmenu"_s;
        const QDBusMessage answer = m_host->ask(message);
        const auto properties = qdbus_cast<QVariantMap>(answer.arguments().value(0));
        QCOMPARE(properties.value(u"Version"_s).toUInt(), 3U);
        QCOMPARE(properties.value(u"Status"_s).toString(), u"normal"_s);
        QCOMPARE(properties.value(u"TextDirection"_s).toString(), u"ltr"_s);
    }

    void aChosenEntryMayDestroyTheItem()
    {
        makeWithMenu({});
        m_item->setMenu({{u"Quit"_s, [this] { m_item.reset(); }}});
        const QDBusMessage answer = m_host->askMenu(
            name(), u"Event"_s, {1, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), uint{0}});
        QCOMPARE(answer.type(), QDBusMessage::ReplyMessage);
        QTRY_VERIFY(!m_item);
    }

private:
    std::vector<StatusMenuEntry> entries(const QStringList &texts)
    {
        std::vector<StatusMenuEntry> lines;
        for (const QString &text : texts) {
            lines.push_back({text, [this, text] { m_chosen.append(text); }});
        }
        return lines;
    }

    void makeWithMenu(const QStringList &texts)
    {
        m_host->registrations.clear();
        make({.showsLabel = true, .tellsPointer = true});
        m_item->setMenu(entries(texts));
    }

    QStringList m_chosen;
};

QUILLET_TEST(StatusNotifierMenuTest, runTest<StatusNotifierMenuTest, QApplication>);
#include "StatusNotifierMenuTest.moc"
