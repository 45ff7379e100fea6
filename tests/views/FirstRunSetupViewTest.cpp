// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/FirstRunSetupView.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Symbols.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Views/PageIndicator.h"
#include "Corvane/Views/SetupStep.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/Pictures.h"
#include "tests/support/TemporarySettings.h"
#include "tests/support/ViewWalk.h"

#include <QApplication>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;
using pictures::Theme;

namespace {

/// The setup window's content, and how often it asked to close.
struct SetupRoom {
    explicit SetupRoom(bool hasCompleted = false)
    {
        if (hasCompleted) {
            settings.setHasCompletedWelcome(true);
        }
        view = std::make_unique<FirstRunSetupView>(settings, [this] { ++dismissals; });
        view->resize(680, 500);
    }

    void show() const
    {
        view->show();
        QTRY_VERIFY(view->isActiveWindow());
    }

    [[nodiscard]] QAbstractButton *back() const { return viewWalk::button(*view, u"Back"_s); }
    /// The Continue or Finish button.
    [[nodiscard]] QAbstractButton *forward() const { return view->findChildren<QPushButton *>().last(); }
    [[nodiscard]] PageIndicator *indicator() const { return view->findChild<PageIndicator *>(); }
    [[nodiscard]] QScrollArea *page() const { return view->findChild<QScrollArea *>(); }
    [[nodiscard]] QRect place(const QWidget *widget) const
    {
        return {widget->mapTo(view.get(), QPoint()), widget->size()};
    }
    void goTo(int step) const
    {
        while (view->step() < step) {
            forward()->click();
        }
    }

    std::unique_ptr<TemporarySettings> file = std::make_unique<TemporarySettings>();
    FakeLoginItem loginItem;
    AppSettings settings{file->store(), file->store(), loginItem};
    int dismissals = 0;
    std::unique_ptr<FirstRunSetupView> view;
};

} // namespace

class FirstRunSetupViewTest final : public QObject {
    Q_OBJECT

public:
    explicit FirstRunSetupViewTest(int scaleFactor) : m_scaleFactor(scaleFactor) {}

private:
    void comparePicture(const QImage &picture, const QString &name) const
    {
        const QString suffix = m_scaleFactor == 1 ? QString() : u"@%1x"_s.arg(m_scaleFactor);
        const QString difference = pictures::difference(picture, u"setup-"_s + name + suffix);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    int m_scaleFactor;

private Q_SLOTS:
    void init() { pictures::prepareApplication(); }

    void itShowsExactlyTheseTexts()
    {
        const QList<QStringList> pages{
            {u"Welcome to Quillet"_s,
             u"Quillet watches your lesson calendar and gives you clear prompts to wrap up and join your next lesson on time."_s,
             u"Back"_s, u"Continue"_s},
            {u"Allow Calendar Access"_s,
             u"When Quillet asks for permission, choose Allow. Calendar access lets the app read today's lesson times and titles. It never edits your calendar."_s,
             u"Back"_s, u"Continue"_s},
            {u"Check Your Notifications"_s,
             u"Use Test Notification from the menu-bar icon. You should see a banner and hear a sound. If either is missing, use the Troubleshooting section in Help."_s,
             u"Back"_s, u"Continue"_s},
            {u"Choose Your Preferences"_s,
             u"Open Settings from the menu-bar icon to choose banner position, display time, and sound. The default centre position is designed to be hard to miss during a lesson."_s,
             u"Back"_s, u"Continue"_s},
            {u"You Are Ready"_s,
             u"Keep Quillet running in your menu bar while you teach. It will guide you through the next transition so you can avoid late-start penalties."_s,
             u"Back"_s, u"Finish"_s}};
        const SetupRoom room;
        for (int page = 0; page < 5; ++page) {
            room.goTo(page);
            QCOMPARE(viewWalk::texts(*room.view), pages[page]);
        }
    }

    void thePagesHaveTheseSymbols()
    {
        QStringList symbols;
        for (const SetupStep &step : setupSteps()) {
            symbols << step.symbolName;
            QVERIFY2(look::hasSymbol(step.symbolName), qPrintable(step.symbolName));
        }
        QCOMPARE(symbols, (QStringList{u"graduationcap.fill"_s, u"calendar"_s, u"bell.badge.fill"_s,
                                       u"slider.horizontal.3"_s, u"checkmark.seal.fill"_s}));
    }

    void onTheFirstPageBackIsDisabledAndTheLastOneReadsFinish()
    {
        const SetupRoom room;
        QVERIFY(!room.back()->isEnabled());
        QCOMPARE(room.forward()->text(), u"Continue"_s);
        room.goTo(1);
        QVERIFY(room.back()->isEnabled());
        room.goTo(3);
        QCOMPARE(room.forward()->text(), u"Continue"_s);
        room.goTo(4);
        QCOMPARE(room.forward()->text(), u"Finish"_s);
        QVERIFY(room.back()->isEnabled());
    }

    void backLeadsToThePageBefore()
    {
        const SetupRoom room;
        room.goTo(4);
        room.back()->click();
        QCOMPARE(room.view->step(), 3);
        QCOMPARE(room.forward()->text(), u"Continue"_s);
        for (int click = 0; click < 10; ++click) {
            room.back()->click();
        }
        QCOMPARE(room.view->step(), 0);
        QCOMPARE(viewWalk::texts(*room.view).first(), u"Welcome to Quillet"_s);
    }

    void finishingIsStoredAtOnceAndClosesTheWindow()
    {
        SetupRoom room;
        room.goTo(4);
        QCOMPARE(room.settings.hasCompletedWelcome(), false);
        room.forward()->click();
        QCOMPARE(room.settings.hasCompletedWelcome(), true);
        QCOMPARE(QSettings(room.file->path(), QSettings::IniFormat).value(u"hasCompletedWelcome"_s).toBool(),
                 true);
        QCOMPARE(room.dismissals, 1);
    }

    void aCompletedSetupCanBeRepeated()
    {
        SetupRoom room(true);
        for (int page = 0; page < 5; ++page) {
            QCOMPARE(room.view->step(), page);
            QCOMPARE(room.settings.hasCompletedWelcome(), true);
            room.forward()->click();
        }
        QCOMPARE(room.settings.hasCompletedWelcome(), true);
        QCOMPARE(room.dismissals, 1);
    }

    void closingItEarlyDoesNotFinishIt()
    {
        SetupRoom room;
        room.show();
        room.goTo(4);
        room.view->close();
        room.view.reset();
        QCOMPARE(room.settings.hasCompletedWelcome(), false);
        QCOMPARE(room.dismissals, 0);
    }

    void aNewWindowBeginsAtTheFirstPage()
    {
        SetupRoom room;
        room.goTo(3);
        const FirstRunSetupView other(room.settings, [] {});
        QCOMPARE(other.step(), 0);
    }

    void enterAndSpaceContinue()
    {
        SetupRoom room;
        room.show();
        QCOMPARE(room.view->focusWidget(), room.forward());
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Return);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Enter);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Space);
        QCOMPARE(room.view->step(), 3);
        QTest::keyClick(room.view.get(), Qt::Key_Return); // without focus on a button
        QCOMPARE(room.view->step(), 4);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Return);
        QCOMPARE(room.dismissals, 1);
    }

    void aHeldEnterContinuesOnce()
    {
        const SetupRoom room;
        room.show();
        for (const bool isRepeat : {false, true, true, true}) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s, isRepeat);
            QApplication::sendEvent(room.view->focusWidget(), &press);
        }
        QCOMPARE(room.view->step(), 1);
    }

    void tabReachesBothButtons()
    {
        const SetupRoom room;
        room.show();
        room.goTo(1);
        QStringList order = viewWalk::tabOrder(*room.view);
        order.sort();
        QCOMPARE(order, (QStringList{u"Back"_s, u"Continue"_s}));
    }

    void theFocusLeavesBackWhenItIsDisabled()
    {
        const SetupRoom room;
        room.show();
        room.goTo(1);
        room.back()->setFocus();
        QTest::keyClick(room.back(), Qt::Key_Space);
        QCOMPARE(room.view->focusWidget(), room.forward());
    }

    void everythingHasAName()
    {
        const SetupRoom room;
        room.show();
        QCOMPARE(viewWalk::unnamedControls(room.view.get()).join(u'\n'), QString());
    }

    void theIndicatorNamesThePage()
    {
        const SetupRoom room;
        for (int page = 0; page < 5; ++page) {
            room.goTo(page);
            QCOMPARE(QAccessible::queryAccessibleInterface(room.indicator())->text(QAccessible::Name),
                     u"Page %1 of 5"_s.arg(page + 1));
        }
    }

    void bothButtonsAreDescribedByThePagesText()
    {
        const SetupRoom room;
        for (int page = 0; page < 5; ++page) {
            room.goTo(page);
            const SetupStep &step = setupSteps()[static_cast<std::size_t>(page)];
            for (QAbstractButton *button : {room.back(), room.forward()}) {
                QCOMPARE(QAccessible::queryAccessibleInterface(button)->text(QAccessible::Description),
                         step.title + u". "_s + step.detail);
            }
        }
    }

    void itHasExactlyTheseMeasures()
    {
        const SetupRoom room;
        QCOMPARE(room.view->minimumSize(), QSize(620, 420));
        QCOMPARE(room.view->minimumSizeHint().boundedTo(QSize(620, 420)), room.view->minimumSizeHint());
        for (const QSize size : {QSize(620, 420), QSize(680, 500), QSize(1200, 900)}) {
            room.view->resize(size);
            (void)room.view->grab();
            const QRect page = room.place(room.page()->widget());
            const QRect indicator = room.place(room.indicator());
            const QRect back = room.place(room.back());
            const QRect forward = room.place(room.forward());
            QCOMPARE(page.width(), 500);
            QCOMPARE(page.left(), (size.width() - 500) / 2);
            QCOMPARE(indicator.size(), QSize(26 + 4 * 8 + 4 * 8, 8));
            QCOMPARE(indicator.left(), (size.width() - 90) / 2);
            QCOMPARE(indicator.top() - (page.bottom() + 1), 24);
            QCOMPARE(back.top() - (indicator.bottom() + 1), 24);
            QCOMPARE(back.left(), page.left());
            QCOMPARE(forward.right(), page.right());
            QCOMPARE(forward.top(), back.top());
            QCOMPARE(forward.height(), back.height());
            QVERIFY(std::abs(page.top() - (size.height() - 1 - back.bottom())) <= 1); // in the middle
            QVERIFY(page.top() >= 42);
        }
    }

    void theControlsStayInPlaceFromPageToPage()
    {
        const SetupRoom room;
        (void)room.view->grab();
        const QRect indicator = room.place(room.indicator());
        const QRect back = room.place(room.back());
        const int right = room.place(room.forward()).right();
        for (int page = 1; page < 5; ++page) {
            room.goTo(page);
            (void)room.view->grab();
            QCOMPARE(room.place(room.indicator()), indicator);
            QCOMPARE(room.place(room.back()), back);
            QCOMPARE(room.place(room.forward()).right(), right);
        }
    }

    void nothingIsCutAtAnyTextSize_data()
    {
        QTest::addColumn<double>("fontScale");
        for (const double scale : {0.8, 1.0, 1.25, 1.5, 2.0}) {
            QTest::addRow("%.2f", scale) << scale;
        }
    }

    void nothingIsCutAtAnyTextSize()
    {
        QFETCH(double, fontScale);
        pictures::prepareApplication(Theme::light, fontScale);
        const SetupRoom room;
        room.view->resize(620, 420);
        for (int page = 0; page < 5; ++page) {
            room.goTo(page);
            (void)room.view->grab();
            QCOMPARE(viewWalk::cutWidgets(*room.view).join(u'\n'), QString());
            QCOMPARE(room.view->size(), QSize(620, 420));
            QCOMPARE(room.page()->verticalScrollBar()->maximum(),
                     room.page()->widget()->height() - room.page()->viewport()->height());
            QCOMPARE(room.page()->horizontalScrollBar()->maximum(), 0);
        }
    }

    void itReportsTheHeightThatShowsEveryPageWhole()
    {
        for (const double scale : {1.0, 1.5, 2.0}) {
            pictures::prepareApplication(Theme::light, scale);
            const SetupRoom room;
            const int height = room.view->heightForWidth(680);
            for (const int less : {0, 1}) {
                room.view->resize(680, std::max(height - less, 420));
                (void)room.view->grab();
                QCOMPARE(room.page()->verticalScrollBar()->maximum(), height > 420 ? less : 0);
            }
        }
    }

    void aTallPageScrollsByKeyAndTheNextBeginsAtItsTop()
    {
        pictures::prepareApplication(Theme::light, 2);
        const SetupRoom room;
        room.view->resize(620, 420);
        room.show();
        const QScrollBar *bar = room.page()->verticalScrollBar();
        QVERIFY(bar->maximum() > 0);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_PageDown);
        QVERIFY(bar->value() > 0);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_PageUp);
        QCOMPARE(bar->value(), 0);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_PageDown);
        QTest::keyClick(room.view->focusWidget(), Qt::Key_Return);
        QCOMPARE(bar->value(), 0);
    }

    void anOpenWindowFollowsTheDesktopsColoursAndFont()
    {
        const SetupRoom room;
        room.show();
        pictures::prepareApplication(Theme::dark, 1.5);
        QTRY_COMPARE(room.forward()->font(), look::font(look::TextStyle::body));
        room.view->hide(); // on the screen it would also show the focus mark
        const QImage followed = room.view->grab().toImage();
        const SetupRoom fresh;
        QVERIFY(followed == fresh.view->grab().toImage());
    }

    void itLooksAsItShould_data()
    {
        QTest::addColumn<Theme>("theme");
        QTest::addColumn<double>("fontScale");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("step");
        for (int step = 0; step < 5; ++step) {
            QTest::addRow("%d-light", step + 1) << Theme::light << 1.0 << QSize(680, 500) << step;
            if (m_scaleFactor == 1) {
                QTest::addRow("%d-dark", step + 1) << Theme::dark << 1.0 << QSize(680, 500) << step;
            }
        }
        if (m_scaleFactor == 1) {
            QTest::addRow("least") << Theme::light << 1.0 << QSize(620, 420) << 3;
            QTest::addRow("large") << Theme::light << 2.0 << QSize(680, 500) << 1;
            QTest::addRow("large-dark") << Theme::dark << 2.0 << QSize(900, 800) << 3;
        }
    }

    void itLooksAsItShould()
    {
        QFETCH(Theme, theme);
        QFETCH(double, fontScale);
        QFETCH(QSize, size);
        QFETCH(int, step);
        pictures::prepareApplication(theme, fontScale);
        const SetupRoom room;
        room.view->resize(size);
        room.goTo(step);
        comparePicture(room.view->grab().toImage(), QLatin1StringView(QTest::currentDataTag()));
    }
};

QUILLET_TEST(FirstRunSetupViewTest, runViewTest<FirstRunSetupViewTest>);

#include "FirstRunSetupViewTest.moc"
