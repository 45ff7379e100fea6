// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"

#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItemAdaptor.h"
#include "tests/adapters/StatusNotifierHost.h"
#include "tests/contracts/StatusItemContract.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestProgram.h"

#include <QCursor>
#include <QDBusArgument>
#include <QGuiApplication>
#include <QScreen>

#include <memory>
#include <vector>

using namespace corvane;
using namespace Qt::StringLiterals;

class StatusNotifierItemTest final : public StatusItemContract {
    Q_OBJECT

protected:
    StatusItem &item() override
    {
        if (!m_item) {
            make({.showsLabel = true, .tellsPointer = false});
        }
        return *m_item;
    }

    QStringList published() override { return m_host->labels; }

    QStringList toolTip() override { return m_host->toolTip(name()); }

    void click(const QString &token) override
    {
        item();
        if (!token.isEmpty()) {
            m_host->giveToken(name(), token);
        }
        m_host->activate(name(), 10, 20);
    }

    std::optional<Point> placeOfClick() override
    {
        return Point{10, QGuiApplication::primaryScreen()->geometry().height() - 20.0};
    }

    void setHostThere(bool isThere) override { isThere ? m_host->start() : m_host->stop(); }
    void openMenu() override { m_host->openMenu(name()); }
    void chooseLine(int index) override { m_host->chooseLine(name(), index + 1); }

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        m_host =
            std::make_unique<StatusNotifierHost>(QDBusConnection::connectToBus(m_bus->address(), u"host"_s));
        m_host->start();
    }

    void cleanup()
    {
        m_chosen.clear();
        m_item.reset();
        m_host.reset();
        QDBusConnection::disconnectFromBus(u"item"_s);
        QDBusConnection::disconnectFromBus(u"host"_s);
        m_bus.reset();
    }

    void theItemsPropertiesDescribeIt()
    {
        make({false, true});
        m_item->setTitle(u"Anna in 4 min"_s);
        const QVariantMap properties = m_host->properties(name());
        QCOMPARE(properties.value(u"Id"_s).toString(), u"com.ordwinsoftware.Quillet"_s);
        QCOMPARE(properties.value(u"Category"_s).toString(), u"ApplicationStatus"_s);
        QCOMPARE(properties.value(u"Status"_s).toString(), u"Active"_s);
        QCOMPARE(properties.value(u"Title"_s).toString(), u"Anna in 4 min"_s);
        QCOMPARE(properties.value(u"IconAccessibleDesc"_s).toString(), u"Anna in 4 min"_s);
        QCOMPARE(properties.value(u"ItemIsMenu"_s), QVariant(false));
        QCOMPARE(properties.value(u"Menu"_s).value<QDBusObjectPath>().path(), u"/StatusNotifierItem/Menu"_s);
        const auto toolTip = qdbus_cast<StatusToolTip>(properties.value(u"ToolTip"_s).value<QDBusArgument>());
        QCOMPARE(toolTip.title, u"Anna in 4 min"_s);
        QCOMPARE(toolTip.description, QString());
    }

    void theIconIsSentInNetworkByteOrder()
    {
        QImage dot(1, 1, QImage::Format_ARGB32);
        dot.fill(QColor(0x11, 0x22, 0x33, 0x80));
        m_item = std::make_unique<StatusNotifierItem>(connection(), QList<QImage>{dot},
                                                      StatusNotifierItem::Desktop{});
        const QVariantMap properties = m_host->properties(name());
        const auto icons =
            qdbus_cast<StatusIconPixmaps>(properties.value(u"IconPixmap"_s).value<QDBusArgument>());
        QCOMPARE(icons.size(), 1);
        QCOMPARE(icons.first().pixels, QByteArray("\x80\x11\x22\x33", 4));
    }

    void theBellHasTheSizesThatHostsUse()
    {
        make({false, true});
        const QVariantMap properties = m_host->properties(name());
        const auto icons =
            qdbus_cast<StatusIconPixmaps>(properties.value(u"IconPixmap"_s).value<QDBusArgument>());
        QList<int> widths;
        for (const StatusIconPixmap &icon : icons) {
            widths.append(icon.width);
            QCOMPARE(icon.pixels.size(), icon.width * icon.height * 4);
        }
        QCOMPARE(widths, (QList<int>{16, 22, 24, 32, 48, 64}));
    }

    void theBellIsVisibleOnLightAndDarkHosts()
    {
        for (const QImage &bell : statusBellImages()) {
            int light = 0;
            int dark = 0;
            for (int y = 0; y < bell.height(); ++y) {
                for (int x = 0; x < bell.width(); ++x) {
                    const QColor colour = bell.pixelColor(x, y);
                    if (colour.alpha() > 180) {
                        light += colour.lightness() > 190;
                        dark += colour.lightness() < 90;
                    }
                }
            }
            QVERIFY2(light * 20 > bell.width() * bell.height(), qPrintable(QString::number(bell.width())));
            QVERIFY2(dark * 40 > bell.width() * bell.height(), qPrintable(QString::number(bell.width())));
        }
    }

    void aHostThatShowsNoTextGetsNoLabel()
    {
        make({false, true});
        m_item->setTitle(u"one"_s);
        QTRY_COMPARE(m_host->titleSignals, 1);
        QTRY_COMPARE(m_host->toolTipSignals, 1);
        QVERIFY(!m_host->properties(name()).contains(u"XAyatanaLabel"_s));
        QVERIFY(!m_host->introspection(name()).contains(u"Ayatana"_s));
        QVERIFY(m_host->labels.isEmpty());
    }

    void aHostThatShowsTextGetsALabel()
    {
        make({true, true});
        m_item->setTitle(u"one"_s);
        QCOMPARE(m_host->properties(name()).value(u"XAyatanaLabel"_s).toString(), u"one"_s);
        QCOMPARE(m_host->labels, QStringList{u"one"_s});
    }

    void titleSignalsAreSentOnlyOnAChange()
    {
        make({false, true});
        for (int i = 0; i < 50; ++i) {
            m_item->setTitle(u"one"_s);
        }
        m_item->setTitle(u"two"_s);
        // The property's answer follows the signals on the same connection.
        QCOMPARE(m_host->properties(name()).value(u"Title"_s).toString(), u"two"_s);
        QCOMPARE(m_host->titleSignals, 2);
        QCOMPARE(m_host->toolTipSignals, 2);
    }

    void theHostGetsNoControlCharacters()
    {
        make({true, true});
        m_item->setTitle(u"Anna\n\x1b[1m\u009b\u202E!"_s);
        QCOMPARE(m_host->properties(name()).value(u"Title"_s).toString(), u"Anna  [1m !"_s);
        QCOMPARE(m_host->labels, QStringList{u"Anna  [1m !"_s});
    }

    void aNoticeReachesTheHostAndTheScreenReader()
    {
        make({false, true});
        m_item->setTitle(u"Anna"_s);
        m_item->setNotice(u"No answer from “<b>A</b>”"_s);
        m_item->setNotice(u"No answer from “<b>A</b>”"_s);
        const QVariantMap properties = m_host->properties(name());
        QCOMPARE(m_host->toolTipSignals, 2);
        QCOMPARE(properties.value(u"Title"_s).toString(), u"Anna"_s);
        QCOMPARE(properties.value(u"IconAccessibleDesc"_s).toString(), u"Anna. No answer from “<b>A</b>”"_s);
        const auto toolTip = qdbus_cast<StatusToolTip>(properties.value(u"ToolTip"_s).value<QDBusArgument>());
        QCOMPARE(toolTip.description, u"No answer from “&lt;b&gt;A&lt;/b&gt;”"_s);
    }

    void onlyDesktopsThatShowALabelGetOne_data()
    {
        QTest::addColumn<QByteArray>("desktop");
        QTest::addColumn<bool>("shown");
        QTest::newRow("GNOME") << QByteArray("GNOME") << true;
        QTest::newRow("Ubuntu") << QByteArray("ubuntu:GNOME") << true;
        QTest::newRow("Unity") << QByteArray("Unity:Unity7") << true;
        QTest::newRow("Budgie") << QByteArray("Budgie:GNOME") << true;
        QTest::newRow("Xfce") << QByteArray("XFCE") << false;
        QTest::newRow("MATE") << QByteArray("MATE") << false;
        QTest::newRow("KDE") << QByteArray("KDE") << false;
        QTest::newRow("GNOME-like name") << QByteArray("GNOMEish") << false;
        QTest::newRow("none") << QByteArray() << false;
    }

    void onlyDesktopsThatShowALabelGetOne()
    {
        QFETCH(QByteArray, desktop);
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        QTEST(StatusNotifierItem::Desktop::current().showsLabel, "shown");
        qunsetenv("XDG_CURRENT_DESKTOP");
    }

    void aHostThatStartsLaterFindsTheItem()
    {
        m_host->stop();
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(),
                                                      StatusNotifierItem::Desktop{});
        QSignalSpy failures(m_item.get(), &StatusNotifierItem::registrationFailed);
        QCOMPARE(m_host->properties(name()).value(u"Status"_s).toString(), u"Active"_s);
        QVERIFY(m_host->registrations.isEmpty());
        m_host->start();
        QTRY_COMPARE(m_host->registrations, QStringList{name()});
        QVERIFY(failures.isEmpty());
    }

    void aHostThatRestartsFindsTheItemAgain()
    {
        make({false, true});
        for (int restarts = 1; restarts <= 3; ++restarts) {
            m_host->stop();
            m_host->start();
            QTRY_COMPARE(m_host->registrations.size(), restarts + 1);
        }
        QCOMPARE(m_host->registrations.constLast(), name());
    }

    void anItemRegisteredWithAHostIsShown()
    {
        m_host->stop();
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(),
                                                      StatusNotifierItem::Desktop{});
        QVERIFY(!m_item->isShown());
        QVERIFY(!m_item->isAbsent()); // not known yet
        QSignalSpy changes(m_item.get(), &StatusItem::shownChanged);
        QTRY_VERIFY(m_item->isAbsent());
        QVERIFY(!m_item->isShown());
        m_host->start();
        QTRY_VERIFY(m_item->isShown());
        QVERIFY(!m_item->isAbsent());
        m_host->stop();
        QTRY_VERIFY(m_item->isAbsent());
        QCOMPARE(changes, (QList<QVariantList>{{true}, {false}}));
    }

    void aWatcherWithoutAHostShowsNothing()
    {
        m_host->setHasHost(false);
        make({false, true});
        QTRY_VERIFY(m_item->isAbsent());
        QVERIFY(!m_item->isShown());
        QSignalSpy changes(m_item.get(), &StatusItem::shownChanged);
        QSignalSpy absences(m_item.get(), &StatusNotifierItem::absenceFound);
        m_host->setHasHost(true);
        QTRY_VERIFY(m_item->isShown());
        m_host->setHasHost(false);
        QTRY_VERIFY(!m_item->isShown());
        QCOMPARE(changes, (QList<QVariantList>{{true}, {false}}));
        QCOMPARE(absences.size(), 1);
        // The watcher keeps the item all the time.
        QCOMPARE(m_host->registrations.size(), 1);
    }

    void aSilentWatcherIsAskedAgainAndReportedOnce()
    {
        m_host->isSilent = true;
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(),
                                                      StatusNotifierItem::Desktop{});
        QSignalSpy failures(m_item.get(), &StatusNotifierItem::registrationFailed);
        QTRY_COMPARE_WITH_TIMEOUT(m_host->registrations.size(), 3, 20000);
        QCOMPARE(failures.size(), 1);
        QVERIFY(!m_item->isShown());
        QVERIFY(!m_item->isAbsent());
        m_host->isSilent = false;
        QTRY_VERIFY_WITH_TIMEOUT(m_item->isShown(), 10000);
        QCOMPARE(m_host->registrations.size(), 4);
        QCOMPARE(failures.size(), 1);
    }

    void aWatcherThatRefusesIsReportedAndNotAskedAgain()
    {
        m_host->refuses = true;
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(),
                                                      StatusNotifierItem::Desktop{});
        QSignalSpy failures(m_item.get(), &StatusNotifierItem::registrationFailed);
        QTRY_COMPARE(failures.size(), 1);
        QCOMPARE(failures.first().first().toString(), u"not here"_s);
        QVERIFY(!m_item->isShown());
        QCOMPARE(m_host->registrations.size(), 1);
        // A new watcher in its place is asked.
        m_host->refuses = false;
        m_host->stop();
        m_host->start();
        QTRY_VERIFY(m_item->isShown());
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

    void anyTitleIsSanitised_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("shown");
        QTest::newRow("line feed") << u"a\nb"_s << u"a b"_s;
        QTest::newRow("NUL") << QString(u"a"_s + QChar(0) + u"b"_s) << u"a b"_s;
        QTest::newRow("escape") << u"\u001b[1mx"_s << u" [1mx"_s;
        QTest::newRow("separators") << QString(u"a"_s + QChar(0x2028) + u"b"_s + QChar(0x2029)) << u"a b "_s;
        QTest::newRow("half a surrogate pair")
            << QString(u"a"_s + QChar(0xd83d) + u"b"_s + QChar(0xde00)) << u"ab"_s;
        QTest::newRow("emoji") << u"😀"_s << u"😀"_s;
        QTest::newRow("markup stays text") << u"<b>x</b>&amp;"_s << u"<b>x</b>&amp;"_s;
        QTest::newRow("cut within a surrogate pair")
            << QString(QString(199, u'x') + u"😀"_s) << QString(199, u'x');
        QTest::newRow("long") << QString(1000000, u'é') << QString(200, u'é');
        QTest::newRow("empty") << QString() << u"Quillet"_s;
    }

    void anyTitleIsSanitised()
    {
        QFETCH(QString, title);
        make({true, true});
        m_item->setTitle(u"before"_s);
        m_item->setTitle(title);
        QTEST(m_host->properties(name()).value(u"Title"_s).toString(), "shown");
    }

    void aClickHasThePointersPosition()
    {
        make({false, true});
        QCursor::setPos(123, 45);
        QSignalSpy clicks(m_item.get(), &StatusItem::activated);
        m_host->activate(name(), 0, 27);
        QTRY_COMPARE(clicks.size(), 1);
        const auto position = clicks.first().first().value<std::optional<Point>>();
        const int height = QGuiApplication::primaryScreen()->geometry().height();
        QVERIFY(position.has_value());
        QCOMPARE(*position, (Point{123.0, height - 45.0}));
    }

    void anActivationByKeyboardHasTheHostsPosition()
    {
        make({false, true});
        QCursor::setPos(123, 445);
        QSignalSpy clicks(m_item.get(), &StatusItem::activated);
        m_host->activate(name(), 600, 12);
        QTRY_COMPARE(clicks.size(), 1);
        const int height = QGuiApplication::primaryScreen()->geometry().height();
        QCOMPARE(clicks.first().first().value<std::optional<Point>>(), (Point{600.0, height - 12.0}));
    }

    void withoutAPointerPositionAClickHasTheHostsPosition()
    {
        make({false, false});
        QSignalSpy clicks(m_item.get(), &StatusItem::activated);
        m_host->activate(name(), 300, 12);
        m_host->activate(name(), 0, 0);
        QTRY_COMPARE(clicks.size(), 2);
        const int height = QGuiApplication::primaryScreen()->geometry().height();
        const auto first = clicks.at(0).first().value<std::optional<Point>>();
        QVERIFY(first.has_value());
        QCOMPARE(*first, (Point{300.0, height - 12.0}));
        QVERIFY(!clicks.at(1).first().value<std::optional<Point>>().has_value());
    }

    void withoutABusTheItemIsSilent()
    {
        StatusNotifierItem item(QDBusConnection(u"no such connection"_s), statusBellImages(), {});
        item.setTitle(u"one"_s);
    }

    void afterTheLossOfTheBusTheItemIsSilent()
    {
        make({true, true});
        m_bus->stop();
        QTRY_VERIFY(!connection().isConnected());
        m_item->setTitle(u"one"_s);
        m_item->setTitle(u"two"_s);
    }

private:
    QDBusConnection connection()
    {
        const QDBusConnection known(u"item"_s);
        return known.isConnected() || m_item ? known
                                             : QDBusConnection::connectToBus(m_bus->address(), u"item"_s);
    }

    [[nodiscard]] QString name() { return connection().baseService(); }

    void make(StatusNotifierItem::Desktop desktop)
    {
        desktop.labelPause = {};
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(), desktop);
        QTRY_COMPARE(m_host->registrations, QStringList{name()});
        QTRY_VERIFY(m_host->labelReads > 0);
    }

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
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<StatusNotifierHost> m_host;
    std::unique_ptr<StatusNotifierItem> m_item;
};

QUILLET_TEST(StatusNotifierItemTest, runTest<StatusNotifierItemTest, QApplication>);
#include "StatusNotifierItemTest.moc"
