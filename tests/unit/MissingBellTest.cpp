// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/MissingBell.h"

#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class MissingBellTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onGnomeItNamesTheExtensionsPackage_data()
    {
        QTest::addColumn<QByteArray>("desktop");
        QTest::addColumn<bool>("isGnome");
        QTest::newRow("GNOME") << QByteArray("GNOME") << true;
        QTest::newRow("a variant") << QByteArray("GNOME-Classic:GNOME") << true;
        QTest::newRow("Budgie") << QByteArray("Budgie:GNOME") << false;
        QTest::newRow("sway") << QByteArray("sway") << false;
        QTest::newRow("none") << QByteArray() << false;
    }

    void onGnomeItNamesTheExtensionsPackage()
    {
        QFETCH(QByteArray, desktop);
        QFETCH(bool, isGnome);
        const QString hint = missingBellHint(desktop);
        QCOMPARE(hint.contains(u"gnome-shell-extension-appindicator"_s), isGnome);
        QCOMPARE(hint.contains(u"system tray"_s), !isGnome);
        QVERIFY(hint.endsWith(u"start Quillet again to open this window."_s));
    }
};

QUILLET_TEST(MissingBellTest, runTest<MissingBellTest>);
#include "MissingBellTest.moc"
