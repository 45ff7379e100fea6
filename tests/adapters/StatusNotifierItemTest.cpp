// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"

#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItemAdaptor.h"
#include "tests/adapters/StatusNotifierHost.h"
#include "tests/contracts/StatusItemContract.h"
#include "tests/support/PrivateBus.h"

#include <QCursor>
#include <QDBusArgument>
#include <QGuiApplication>
#include <QScreen>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

class StatusNotifierItemTest final : public StatusItemContract {
    Q_OBJECT

protected:
    StatusItem &item() override
    {
        if (!m_item) {
            make({true, true});
        }
        return *m_item;
    }

    QStringList published() override { return m_host->labels; }

    void click() override
    {
        item();
        m_host->activate(name(), 10, 20);
    }

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
        m_item.reset();
        m_host.reset();
        QDBusConnection::disconnectFromBus(u"item"_s);
        QDBusConnection::disconnectFromBus(u"host"_s);
        m_bus.reset();
    }

    void thePanelIsToldWhatTheItemIs()
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
        QCOMPARE(properties.value(u"Menu"_s).value<QDBusObjectPath>().path(), u"/NO_DBUSMENU"_s);
        const auto toolTip = qdbus_cast<StatusToolTip>(properties.value(u"ToolTip"_s).value<QDBusArgument>());
        QCOMPARE(toolTip.title, u"Anna in 4 min"_s);
        QCOMPARE(toolTip.description, QString());
    }

    void theIconTravelsInNetworkByteOrder()
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

    void theBellHasTheSizesOfPanels()
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

    void theBellStandsOutOnALightAndOnADarkPanel()
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

    void whereThePanelShowsNoTextThereIsNoLabelAtAll()
    {
        make({false, true});
        m_item->setTitle(u"one"_s);
        QTRY_COMPARE(m_host->titleSignals, 1);
        QTRY_COMPARE(m_host->toolTipSignals, 1);
        QVERIFY(!m_host->properties(name()).contains(u"XAyatanaLabel"_s));
        QVERIFY(!m_host->introspection(name()).contains(u"Ayatana"_s));
        QVERIFY(m_host->labels.isEmpty());
    }

    void whereThePanelShowsTextThereIsALabel()
    {
        make({true, true});
        m_item->setTitle(u"one"_s);
        QCOMPARE(m_host->properties(name()).value(u"XAyatanaLabel"_s).toString(), u"one"_s);
        QCOMPARE(m_host->labels, QStringList{u"one"_s});
    }

    void theTitleSignalsComeOnlyWithAChange()
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

    void theLabelBelongsToTheDesktopsThatShowIt_data()
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

    void theLabelBelongsToTheDesktopsThatShowIt()
    {
        QFETCH(QByteArray, desktop);
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        QTEST(StatusNotifierItem::Desktop::current().showsLabel, "shown");
        qunsetenv("XDG_CURRENT_DESKTOP");
    }

    void aPanelThatComesUpLateFindsTheItem()
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

    void aPanelThatRestartsFindsTheItemAgain()
    {
        make({false, true});
        for (int restarts = 1; restarts <= 3; ++restarts) {
            m_host->stop();
            m_host->start();
            QTRY_COMPARE(m_host->registrations.size(), restarts + 1);
        }
        QCOMPARE(m_host->registrations.constLast(), name());
    }

    void anyTitleIsMadeHarmless_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("shown");
        QTest::newRow("line feed") << u"a\nb"_s << u"a b"_s;
        QTest::newRow("NUL") << QString(u"a"_s + QChar(0) + u"b"_s) << u"a b"_s;
        QTest::newRow("escape") << u"\u001b[1mx"_s << u" [1mx"_s;
        QTest::newRow("separators") << QString(u"a"_s + QChar(0x2028) + u"b"_s + QChar(0x2029)) << u"a b "_s;
        QTest::newRow("half a pair") << QString(u"a"_s + QChar(0xd83d) + u"b"_s + QChar(0xde00)) << u"ab"_s;
        QTest::newRow("emoji") << u"😀"_s << u"😀"_s;
        QTest::newRow("markup stays text") << u"<b>x</b>&amp;"_s << u"<b>x</b>&amp;"_s;
        QTest::newRow("cut within a pair") << QString(QString(199, u'x') + u"😀"_s) << QString(199, u'x');
        QTest::newRow("long") << QString(1000000, u'é') << QString(200, u'é');
        QTest::newRow("empty") << QString() << u"Quillet"_s;
    }

    void anyTitleIsMadeHarmless()
    {
        QFETCH(QString, title);
        make({true, true});
        m_item->setTitle(u"before"_s);
        m_item->setTitle(title);
        QTEST(m_host->properties(name()).value(u"Title"_s).toString(), "shown");
    }

    void aClickIsWhereThePointerIs()
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

    void whereThePointerIsNotToldAClickIsWhereThePanelSays()
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

    void whenTheBusBreaksOffTheItemIsSilent()
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
        m_item = std::make_unique<StatusNotifierItem>(connection(), statusBellImages(), desktop);
        QTRY_COMPARE(m_host->registrations, QStringList{name()});
    }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<StatusNotifierHost> m_host;
    std::unique_ptr<StatusNotifierItem> m_item;
};

QTEST_MAIN(StatusNotifierItemTest)
#include "StatusNotifierItemTest.moc"
