// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/X11/DesktopScale.h"

#include "Corvane/Platform/Linux/X11/XcbRef.h"
#include "tests/adapters/PublishedSettings.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestProgram.h"

#include <xcb/xcb.h>

#include <QDataStream>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr auto factorName = "Gdk/WindowScalingFactor";

PublishedSettings littleEndian()
{
    return PublishedSettings(QDataStream::LittleEndian);
}

} // namespace

class DesktopScaleTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aNumberIsFoundAmongSettingsOfEachKind()
    {
        for (const auto order : {QDataStream::LittleEndian, QDataStream::BigEndian}) {
            const QByteArray settings = PublishedSettings(order)
                                            .text("Net/ThemeName", "Adwaita")
                                            .colour("Net/Colour")
                                            .text("Empty", "")
                                            .number("Xft/DPI", 98304)
                                            .number(factorName, 2)
                                            .number("Below", -1)
                                            .bytes();
            QCOMPARE(desktopScale::number(settings, factorName), std::optional(2));
            QCOMPARE(desktopScale::number(settings, "Xft/DPI"), std::optional(98304));
            QCOMPARE(desktopScale::number(settings, "Below"), std::optional(-1));
            QVERIFY(!desktopScale::number(settings, "Net/ThemeName"));
            QVERIFY(!desktopScale::number(settings, "Absent"));
        }
    }

    void settingsThatEndTooEarlyHaveNoNumber()
    {
        const QByteArray settings = littleEndian().text("Net/ThemeName", "A").number(factorName, 2).bytes();
        QVERIFY(desktopScale::number(settings, factorName));
        for (qsizetype length = 0; length < settings.size(); ++length) {
            QVERIFY(!desktopScale::number(settings.first(length), factorName));
        }
    }

    void wrongLengthsAndKindsEndTheSearch()
    {
        QByteArray endless = littleEndian().text("A", "B").number(factorName, 2).bytes();
        endless.replace(24, 4, QByteArray(4, '\xff')); // the text's length
        QVERIFY(!desktopScale::number(endless, factorName));
        QVERIFY(!desktopScale::number(littleEndian().unknown("A").number(factorName, 2).bytes(), factorName));
    }

    void onlyXfcesFactorIsMissing()
    {
        QVERIFY(desktopScale::isMissingOn("XFCE"));
        QVERIFY(desktopScale::isMissingOn("Ours:xfce"));
        for (const char *other : {"", "GNOME", "MATE", "X-Cinnamon", "KDE"}) {
            QVERIFY(!desktopScale::isMissingOn(other));
        }
    }

    void theFactorIsInTheSettings()
    {
        for (const qint32 factor : {2, 3, 4}) {
            const QByteArray settings = littleEndian().number(factorName, factor).bytes();
            QCOMPARE(desktopScale::missingFactor(settings), std::optional(factor));
        }
    }

    void aFactorOutsideItsRangeIsIgnored()
    {
        for (const qint32 factor : {-2, 0, 1, 5}) {
            const QByteArray settings = littleEndian().number(factorName, factor).bytes();
            QVERIFY(!desktopScale::missingFactor(settings));
        }
        QVERIFY(!desktopScale::missingFactor({}));
    }

    void publishedSettingsAreReadFromTheServer()
    {
        QCOMPARE(desktopScale::publishedSettings(), QByteArray());
        const QByteArray settings = littleEndian().number(factorName, 3).bytes();
        {
            const SettingsPublisher publisher(settings);
            QCOMPARE(desktopScale::publishedSettings(), settings);
        }
        QTRY_COMPARE(desktopScale::publishedSettings(), QByteArray());
    }

    void withoutAServerNothingIsPublished()
    {
        const QByteArray display = qgetenv("DISPLAY");
        qputenv("DISPLAY", ":7777");
        QCOMPARE(desktopScale::publishedSettings(), QByteArray());
        qputenv("DISPLAY", display);
    }
};

QUILLET_TEST(DesktopScaleTest, [](int argc, char *argv[]) {
    const TestDesktop desktop(QSize(640, 480));
    // The server starts anew when its last client has gone, and breaks connections that begin meanwhile.
    const x11::OwnConnection client(xcb_connect(nullptr, nullptr));
    return runTest<DesktopScaleTest>(argc, argv);
});

#include "DesktopScaleTest.moc"
