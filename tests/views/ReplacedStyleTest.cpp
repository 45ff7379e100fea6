// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Style.h"
#include "tests/support/TestProgram.h"

#include <QApplication>
#include <QCheckBox>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

look::Style *own()
{
    return qobject_cast<look::Style *>(QApplication::style());
}

bool isDark()
{
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}

} // namespace

/// A desktop that sets another style for the application.
class ReplacedStyleTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_isComposited = true;
        look::Style::install([this] { return m_isComposited; });
        QVERIFY(own() != nullptr);
    }

    void theOwnStyleComesBack()
    {
        QCheckBox shown(u"Play sound"_s);
        shown.show();
        const QSize size = shown.sizeHint();
        for (int time = 0; time < 3; ++time) {
            QApplication::setStyle(u"Fusion"_s);
            QVERIFY(own() == nullptr);
            QTRY_VERIFY(own() != nullptr);
            QCOMPARE(shown.style(), QApplication::style());
            QCOMPARE(shown.sizeHint(), size);
        }
    }

    void itKeepsTheAppearance()
    {
        own()->follow({.scheme = Appearance::Scheme::dark, .reducesMotion = true});
        QVERIFY(isDark());
        QApplication::setStyle(u"Fusion"_s);
        QTRY_VERIFY(own() != nullptr);
        QVERIFY(isDark());
        QCOMPARE(own()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, nullptr, nullptr), 0);
        own()->follow({.scheme = Appearance::Scheme::light});
        QVERIFY(!isDark());
    }

    void itStillAsksWhetherWindowsAreComposited()
    {
        QApplication::setStyle(u"Fusion"_s);
        QTRY_VERIFY(own() != nullptr);
        QVERIFY(own()->isComposited());
        m_isComposited = false;
        QVERIFY(!own()->isComposited());
    }

    void anInstalledStyleReplacesAnEarlierOneForGood()
    {
        look::Style::install([] { return false; });
        const auto *last = QApplication::style();
        QCoreApplication::processEvents();
        QCOMPARE(QApplication::style(), last);
        QVERIFY(!own()->isComposited());
    }

private:
    bool m_isComposited = true;
};

QUILLET_TEST(ReplacedStyleTest, runTest<ReplacedStyleTest, QApplication>);

#include "ReplacedStyleTest.moc"
