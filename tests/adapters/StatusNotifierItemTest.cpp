// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItemAdaptor.h"
#include "tests/adapters/StatusNotifierRoom.h"
#include "tests/contracts/StatusItemContract.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QCursor>
#include <QDBusArgument>
#include <QGuiApplication>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

/// What a host shows of the item, and what the item learns of a click.
class StatusNotifierItemTest final : public StatusItemContract, private StatusNotifierRoom {
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
    void init() { begin(); }
    void cleanup() { end(); }

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
};

QUILLET_TEST(StatusNotifierItemTest, runTest<StatusNotifierItemTest, QApplication>);
#include "StatusNotifierItemTest.moc"
