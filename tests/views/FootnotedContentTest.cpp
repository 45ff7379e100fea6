// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/FootnotedContent.h"

#include "Corvane/Look/Text.h"
#include "Corvane/Services/MissingBell.h"
#include "Corvane/Views/MenuBarContentView.h"
#include "Corvane/Views/MenuBarPanel.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/FakeWindowSystem.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewModelFixture.h"

#include <QApplication>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using pictures::Theme;

} // namespace

/// The hint on how to get the bell, below the menu bar panel's content.
class FootnotedContentTest final : public QObject {
    Q_OBJECT

public:
    explicit FootnotedContentTest(int scaleFactor) : m_suffix(scaleFactor == 2 ? u"@2x"_s : QString()) {}

private Q_SLOTS:
    void cleanup() { pictures::prepareApplication(); }

    void itLooksAsItShould_data()
    {
        QTest::addColumn<QByteArray>("desktop");
        QTest::addColumn<Theme>("theme");
        QTest::addColumn<double>("fontScale");
        QTest::newRow("gnome") << QByteArray("GNOME") << Theme::light << 1.0;
        QTest::newRow("gnome-dark") << QByteArray("GNOME") << Theme::dark << 1.0;
        QTest::newRow("gnome-large") << QByteArray("GNOME") << Theme::light << 1.6;
        QTest::newRow("other") << QByteArray("sway") << Theme::light << 1.0;
    }

    void itLooksAsItShould()
    {
        QFETCH(QByteArray, desktop);
        QFETCH(Theme, theme);
        QFETCH(double, fontScale);
        pictures::prepareApplication(theme, fontScale);
        ViewModelFixture fixture("10:20:00");
        fixture.start({sampleLesson(u"Anna"_s, at("10:30:00"), minutes(25))});
        FootnotedContent content(contentOf(fixture), missingBellHint(desktop));
        content.setAttribute(Qt::WA_DontShowOnScreen);
        content.show();
        QCoreApplication::processEvents();
        content.resize(content.sizeHint());
        QCoreApplication::processEvents();
        const QString name = u"missing-bell-"_s + QString::fromLatin1(QTest::currentDataTag()) + m_suffix;
        const QString difference = pictures::difference(content.grab().toImage(), name);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    void theFootnoteIsBelowTheContentUntilItIsRemoved()
    {
        FakeWindowSystem windowSystem;
        const FakeScreens screens;
        MenuBarPanel menuBarPanel(
            [] {
                auto content = std::make_unique<QWidget>();
                content->setFixedSize(320, 200);
                return content;
            },
            screens, windowSystem);
        menuBarPanel.openAsWindow(u"how to get the bell"_s);
        const auto *text = menuBarPanel.window()->findChild<look::Text *>();
        QVERIFY(text != nullptr);
        QCOMPARE(text->text(), u"how to get the bell"_s);
        QVERIFY(text->isVisible());
        const int whole = menuBarPanel.window()->height();
        QVERIFY(whole > 200);
        QVERIFY(text->mapTo(menuBarPanel.window(), QPoint()).y() >= 200);
        // As when a bell has appeared.
        menuBarPanel.removeFootnote();
        QVERIFY(!text->isVisible());
        QTRY_COMPARE(menuBarPanel.window()->height(), 200);
        menuBarPanel.close();
        menuBarPanel.removeFootnote();
        menuBarPanel.open(std::nullopt);
        QVERIFY(menuBarPanel.window()->findChild<look::Text *>() == nullptr);
    }

private:
    static std::unique_ptr<QWidget> contentOf(ViewModelFixture &fixture)
    {
        const MenuActions actions{.hasWindow = [](const WindowName &) { return true; },
                                  .openWindow = [](const WindowName &) {},
                                  .openWindowBeside = [](const WindowName &) {},
                                  .quit = [] {}};
        return std::make_unique<MenuBarContentView>(*fixture.model, actions);
    }

    QString m_suffix;
};

QUILLET_TEST(FootnotedContentTest, runViewTest<FootnotedContentTest>);

#include "FootnotedContentTest.moc"
