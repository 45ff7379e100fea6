// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/MenuBarContentView.h"
#include "Corvane/Look/ScrollView.h"
#include "Corvane/Look/SegmentedControl.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Views/LessonScheduleList.h"
#include "Corvane/Views/LessonScheduleRow.h"
#include "Corvane/Views/ScheduleStatusView.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewModelFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

using pictures::Theme;

/// Forty lessons of 25 minutes, one every half hour from 03:00 on.
std::vector<Lesson> fullDay()
{
    const QStringList students{u"Anna"_s, u"Ben"_s,   u"Class 2b"_s, u"Daniel Okafor"_s,
                               u"Mei"_s,  u"Émile"_s, u"Sofía"_s};
    std::vector<Lesson> lessons;
    lessons.reserve(40);
    for (int number = 0; number < 40; ++number) {
        lessons.push_back(sampleLesson(students.at(number % students.size()),
                                       at("03:00:00") + minutes(30) * number, minutes(25),
                                       allTeachingPlatforms.at(static_cast<std::size_t>(number) % 5)));
    }
    return lessons;
}

/// The lessons as the next load returns them: the same, with new identifiers.
std::vector<Lesson> loadedAnew(std::vector<Lesson> lessons)
{
    for (Lesson &lesson : lessons) {
        lesson.id = QUuid::createUuid();
    }
    return lessons;
}

struct Fixture : ViewModelFixture {
    explicit Fixture(const char *time = "10:20:00") : ViewModelFixture(time) {}

    std::vector<WindowName> opened;
    std::vector<WindowName> openedBeside;
    int quits = 0;
    MenuActions actions{
        .hasWindow = [](const WindowName &) { return true; },
        .openWindow = [this](const WindowName &window) { opened.push_back(window); },
        .openWindowBeside = [this](const WindowName &window) { openedBeside.push_back(window); },
        .quit = [this] { ++quits; }};

    [[nodiscard]] std::unique_ptr<MenuBarContentView> view()
    {
        auto view = std::make_unique<MenuBarContentView>(*model, actions);
        view->resize(view->sizeHint());
        return view;
    }

    /// The view shown off screen: window system events would come at unpredictable times.
    [[nodiscard]] std::unique_ptr<MenuBarContentView> pictured()
    {
        auto view = this->view();
        view->setAttribute(Qt::WA_DontShowOnScreen);
        view->show();
        return view;
    }

    /// The view on the screen, with the keyboard focus.
    [[nodiscard]] std::unique_ptr<MenuBarContentView> shown()
    {
        auto view = this->view();
        view->show();
        view->activateWindow();
        return view;
    }
};

QImage pictureOf(QWidget &view)
{
    QCoreApplication::processEvents();
    view.resize(view.sizeHint());
    QCoreApplication::processEvents();
    return view.grab().toImage();
}

void showAllToday(const QWidget &view)
{
    view.findChild<look::SegmentedControl *>()->setSelection(1);
}

LessonScheduleList &listOf(const QWidget &view)
{
    return *view.findChild<LessonScheduleList *>();
}

QScrollBar &barOf(const QWidget &view)
{
    return *view.findChild<look::ScrollView *>()->verticalScrollBar();
}

QAccessibleInterface &accessible(QObject *object)
{
    return *QAccessible::queryAccessibleInterface(object);
}

/// What a screen reader reads for each row.
QStringList rowTexts(const QWidget &view)
{
    QStringList texts;
    for (const LessonScheduleRow *row : listOf(view).rows()) {
        texts << row->accessibleName();
    }
    return texts;
}

QPushButton &button(const QWidget &view, const QString &text)
{
    const auto buttons = view.findChildren<QPushButton *>();
    return **std::ranges::find(buttons, text, [](const QPushButton *each) { return each->text(); });
}

/// Counts the paint events of a widget and its children.
class PaintCount final : public QObject {
public:
    explicit PaintCount(QWidget &widget)
    {
        widget.installEventFilter(this);
        for (QWidget *child : widget.findChildren<QWidget *>()) {
            child->installEventFilter(this);
        }
    }

    [[nodiscard]] int count() const { return m_count; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_count = 0;
};

struct Scene {
    const char *time = "10:20:00";
    std::vector<Lesson> lessons = {};
    bool isAllToday = false;
    bool hasFailed = false;
    Theme theme = Theme::light;
    double fontScale = 1;
    QString locale = u"C"_s;
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

} // namespace

Q_DECLARE_METATYPE(Scene)

class MenuBarContentViewTest final : public QObject {
    Q_OBJECT

public:
    explicit MenuBarContentViewTest(int scaleFactor) : m_scaleFactor(scaleFactor) {}

private:
    int m_scaleFactor;

private Q_SLOTS:
    void cleanup()
    {
        pictures::prepareApplication();
        QLocale::setDefault(QLocale::c());
    }

    void itLooksAsItShould_data()
    {
        QTest::addColumn<Scene>("scene");
        const std::vector<Lesson> one{sampleLesson(u"Anna"_s, at("11:00:00"), minutes(50))};
        const QString longName = u"Maximiliane Konstantina Theodora "_s.repeated(7).left(200);
        const std::vector<Lesson> longNames{
            sampleLesson(longName, at("09:00:00"), minutes(50), TeachingPlatform::microsoftTeams),
            sampleLesson(longName, at("10:00:00"), minutes(50), TeachingPlatform::microsoftTeams),
            sampleLesson(longName, at("11:00:00"), minutes(50), TeachingPlatform::microsoftTeams)};
        const std::vector<Lesson> foreign{
            sampleLesson(u"王小明"_s, at("09:00:00"), minutes(50), TeachingPlatform::lingoAce),
            sampleLesson(u"محمد الأمين (B2)"_s, at("10:00:00"), minutes(50), TeachingPlatform::googleMeet),
            sampleLesson(u"李雷 (二班) – Grammar"_s, at("11:00:00"), minutes(50))};
        const std::vector<Lesson> hostile{sampleLesson(
            u"<b>Eve</b> &amp; \n\r\u2028\t\u0007\u202EevE\u0301\u0301"_s, at("11:00:00"), minutes(50))};

        QTest::newRow("no-lessons") << Scene{};
        QTest::newRow("one") << Scene{.lessons = one};
        QTest::newRow("teaching") << Scene{.lessons = fullDay()};
        QTest::newRow("between") << Scene{.time = "10:55:00", .lessons = fullDay()};
        QTest::newRow("all-today") << Scene{.lessons = fullDay(), .isAllToday = true};
        QTest::newRow("error") << Scene{.lessons = fullDay(), .hasFailed = true};
        QTest::newRow("long-names") << Scene{.lessons = longNames};
        QTest::newRow("chinese-and-arabic") << Scene{.lessons = foreign};
        QTest::newRow("hostile") << Scene{.lessons = hostile};
        QTest::newRow("twelve-hours")
            << Scene{.time = "12:10:00", .lessons = fullDay(), .locale = u"en_US"_s};
        QTest::newRow("right-to-left")
            << Scene{.lessons = foreign, .locale = u"ar_EG"_s, .direction = Qt::RightToLeft};
        QTest::newRow("large-text") << Scene{.lessons = fullDay(), .hasFailed = true, .fontScale = 2};
        QTest::newRow("dark-no-lessons") << Scene{.theme = Theme::dark};
        QTest::newRow("dark-teaching") << Scene{.lessons = fullDay(), .theme = Theme::dark};
        QTest::newRow("dark-between")
            << Scene{.time = "10:55:00", .lessons = fullDay(), .hasFailed = true, .theme = Theme::dark};
        QTest::newRow("dark-all-today")
            << Scene{.lessons = fullDay(), .isAllToday = true, .theme = Theme::dark};
    }

    void itLooksAsItShould()
    {
        QFETCH(Scene, scene);
        pictures::prepareApplication(scene.theme, scene.fontScale);
        QLocale::setDefault(QLocale(scene.locale));
        Fixture f(scene.time);
        f.start(scene.lessons);
        if (scene.hasFailed) {
            f.store.answer = std::unexpected(LessonScheduleError(Failure{u"the service is away"_s}));
        }
        const auto view = f.pictured();
        view->setLayoutDirection(scene.direction);
        if (scene.isAllToday) {
            showAllToday(*view);
        }
        const QImage picture = pictureOf(*view);
        QCOMPARE(picture.width(), 320 * m_scaleFactor);
        const QString suffix = m_scaleFactor == 1 ? QString() : u"@%1x"_s.arg(m_scaleFactor);
        const QString difference = pictures::difference(
            picture, u"menu-bar-panel-%1%2"_s.arg(QLatin1StringView(QTest::currentDataTag()), suffix));
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    void itHasAMenusMeasures()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.view();
        (void)view->grab(); // forces the layout
        QCOMPARE(view->width(), 320);
        const auto *schedule = view->findChild<ScheduleStatusView *>();
        QCOMPARE(schedule->geometry().topLeft(), QPoint(12, 6));
        QCOMPARE(schedule->width(), 320 - 2 * 12);
        QCOMPARE(view->findChild<look::SegmentedControl *>()->width(), 150);
        QCOMPARE(view->findChild<look::ScrollView *>()->height(), 174);
        showAllToday(*view);
        QCOMPARE(view->findChild<look::ScrollView *>()->height(), 300);
    }

    void noTextIsCutAtTwiceTheFontSize()
    {
        pictures::prepareApplication(Theme::light, 2);
        Fixture f;
        f.start(fullDay());
        const auto view = f.view();
        showAllToday(*view);
        view->resize(view->sizeHint());
        (void)view->grab();
        QCOMPARE(view->width(), 320);
        const auto *picker = view->findChild<look::SegmentedControl *>();
        QVERIFY(picker->width() > 150);
        for (const auto *segment : picker->findChildren<QAbstractButton *>()) {
            QVERIFY(segment->width() >= segment->sizeHint().width());
        }
        for (const auto *command : view->findChildren<QPushButton *>()) {
            QVERIFY(command->height() >= command->heightForWidth(command->width()));
            // "Show Debug Window" is too long for one line.
            QCOMPARE(command->height() > command->sizeHint().height(),
                     command->sizeHint().width() > command->width());
        }
        for (const LessonScheduleRow *row : listOf(*view).rows()) {
            QVERIFY(row->height() > 54);
            QCOMPARE(row->height(), row->sizeHint().height());
            QVERIFY(row->toolTip().isEmpty()); // a tool tip would mean that a name is cut
        }
    }

    void anOpenPanelGrowsWithTheFont()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.pictured();
        pictures::prepareApplication(Theme::light, 2);
        QCoreApplication::processEvents();
        const auto another = f.pictured();
        QVERIFY(pictureOf(*view) == pictureOf(*another));
    }

    void anOpenPanelFollowsTheTheme()
    {
        Fixture f;
        f.start(fullDay());
        f.store.answer = std::unexpected(LessonScheduleError(Failure{u"the service is away"_s}));
        const auto view = f.pictured();
        const QImage light = pictureOf(*view);
        pictures::prepareApplication(Theme::dark);
        QCoreApplication::processEvents();
        const auto another = f.pictured();
        const QImage dark = pictureOf(*view);
        QVERIFY(dark == pictureOf(*another));
        QVERIFY(dark != light);
    }

    // --- the schedule

    void withoutLessonsItSaysSo()
    {
        Fixture f;
        f.start({});
        const auto view = f.shown();
        QStringList texts;
        for (const auto *text : view->findChildren<look::Text *>()) {
            if (text->isVisible()) {
                texts << text->text();
            }
        }
        QCOMPARE(texts, (QStringList{u"Today\u2019s schedule"_s, u"No lessons in Apple Calendar today"_s}));
        QVERIFY(!view->findChild<look::ScrollView *>()->isVisible());
    }

    void duringALessonItsNeighboursAreShown()
    {
        Fixture f("10:20:00");
        f.start({sampleLesson(u"A"_s, at("09:00:00"), minutes(50)),
                 sampleLesson(u"B"_s, at("10:00:00"), minutes(50)),
                 sampleLesson(u"C"_s, at("11:00:00"), minutes(50)),
                 sampleLesson(u"D"_s, at("12:00:00"), minutes(50))});
        const auto view = f.shown();
        QCOMPARE(rowTexts(*view),
                 (QStringList{u"09:00, A, Zoom, Completed"_s, u"10:00, B, Zoom, In progress"_s,
                              u"11:00, C, Zoom, NEXT, in 40m"_s}));
        showAllToday(*view);
        QCOMPARE(rowTexts(*view).size(), 4);
        QCOMPARE(rowTexts(*view).last(), u"12:00, D, Zoom, in 1h 40m"_s);
    }

    void aCountdownGoesDownOnceASecond()
    {
        Fixture f("10:59:15");
        f.start({sampleLesson(u"A"_s, at("11:00:00"), minutes(50))});
        const auto view = f.shown();
        QCOMPARE(rowTexts(*view), QStringList{u"11:00, A, Zoom, NEXT, in 45s"_s});
        for (int second = 44; second > 0; --second) {
            f.clock.advance(Seconds{1});
            QCOMPARE(rowTexts(*view), QStringList{u"11:00, A, Zoom, NEXT, in %1s"_s.arg(second)});
        }
        f.clock.advance(Seconds{1});
        QCOMPARE(rowTexts(*view), QStringList{u"11:00, A, Zoom, In progress"_s});
    }

    void theDaySwitchStartsOnTheCompactList()
    {
        Fixture f;
        f.start(fullDay());
        auto view = f.shown();
        showAllToday(*view);
        QCOMPARE(rowTexts(*view).size(), 40);
        view = f.shown();
        QCOMPARE(view->findChild<look::SegmentedControl *>()->selection(), 0);
        QCOMPARE(rowTexts(*view).size(), 3);
    }

    void allTodayScrollsToTheLessonsShownBefore()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        const QString first = rowTexts(*view).front();
        showAllToday(*view);
        const auto rows = listOf(*view).rows();
        const auto row = std::ranges::find(rows, first, &LessonScheduleRow::accessibleName);
        QCOMPARE((*row)->mapTo(view->findChild<look::ScrollView *>()->viewport(), QPoint()).y(), 0);
    }

    void eachAppearanceReloadsTheLessons()
    {
        Fixture f;
        f.start({});
        QCOMPARE(f.store.calls, 1);
        f.store.answer = fullDay();
        const auto view = f.shown();
        QCOMPARE(f.store.calls, 2);
        QCOMPARE(rowTexts(*view).size(), 3);
        view->hide();
        view->show();
        QCOMPARE(f.store.calls, 3);
    }

    void constructionLoadsNothing()
    {
        Fixture f;
        const auto view = f.view();
        QCOMPARE(f.store.calls, 0);
    }

    void aLoadOfTheSameLessonsKeepsTheRowsWithoutRepainting()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        showAllToday(*view);
        QTRY_VERIFY(view->isActiveWindow());
        QCoreApplication::processEvents();
        const auto rows = listOf(*view).rows();
        const PaintCount paints(listOf(*view));
        f.store.answer = loadedAnew(fullDay());
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{0});
        QCoreApplication::processEvents();
        QVERIFY(listOf(*view).rows() == rows);
        QCOMPARE(paints.count(), 0);
    }

    void anInsertedLessonKeepsTheOtherRows()
    {
        Fixture f;
        std::vector<Lesson> lessons = fullDay();
        f.start(lessons);
        const auto view = f.shown();
        showAllToday(*view);
        const auto before = listOf(*view).rows();
        lessons.insert(lessons.begin() + 5,
                       sampleLesson(u"New"_s, lessons.at(5).startTime - minutes(5), minutes(5)));
        lessons.erase(lessons.begin() + 20);
        f.store.answer = loadedAnew(lessons);
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{0});
        auto after = listOf(*view).rows();
        QCOMPARE(after.size(), std::size_t{40});
        QVERIFY(after.at(5)->accessibleName().contains(u"New"_s));
        int y = 0;
        for (const LessonScheduleRow *row : after) {
            QCOMPARE(row->y(), y);
            QVERIFY(row->isVisible());
            y += row->height() + 6;
        }
        after.erase(after.begin() + 5);
        auto kept = before;
        kept.erase(kept.begin() + 19);
        QVERIFY(after == kept);
        // Assistive tools see the rows in the same order.
        QAccessibleInterface &list = accessible(&listOf(*view));
        QCOMPARE(list.childCount(), 40);
        QCOMPARE(list.child(5)->text(QAccessible::Name), rowTexts(*view).at(5));
        QCOMPARE(list.child(6)->text(QAccessible::Name), rowTexts(*view).at(6));
    }

    void identicalLessonsHaveARowEach()
    {
        Fixture f;
        const Lesson twin = sampleLesson(u"Twin"_s, at("11:00:00"), minutes(25));
        f.start(loadedAnew({twin, twin}));
        const auto view = f.shown();
        const auto rows = listOf(*view).rows();
        QCOMPARE(rows.size(), std::size_t{2});
        f.store.answer = loadedAnew({twin, twin});
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{0});
        QVERIFY(listOf(*view).rows() == rows);
        QCOMPARE(rowTexts(*view).filter(u"NEXT"_s).size(), 1);
    }

    void loadsKeepTheScrollPosition()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        showAllToday(*view);
        barOf(*view).setValue(777);
        f.store.answer = loadedAnew(fullDay());
        f.clock.advance(minutes(3));
        QCoreApplication::processEvents();
        QCOMPARE(f.store.calls, 5);
        QCOMPARE(barOf(*view).value(), 777);
    }

    void whileHiddenItNeitherUpdatesNorPaints()
    {
        Fixture f("10:59:15");
        f.start({sampleLesson(u"A"_s, at("11:00:00"), minutes(50))});
        const auto view = f.shown();
        view->hide();
        const PaintCount paints(*view);
        f.clock.advance(Seconds{15});
        QCoreApplication::processEvents();
        QCOMPARE(rowTexts(*view), QStringList{u"11:00, A, Zoom, NEXT, in 45s"_s});
        QCOMPARE(paints.count(), 0);
        view->show();
        QCOMPARE(rowTexts(*view), QStringList{u"11:00, A, Zoom, NEXT, in 30s"_s});
    }

    void aTickThatChangesNoTextPaintsNothing()
    {
        Fixture f("10:20:10");
        f.start(fullDay());
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        QCoreApplication::processEvents();
        const PaintCount paints(*view);
        f.clock.advance(Seconds{5});
        QCoreApplication::processEvents();
        QCOMPARE(paints.count(), 0);
        f.clock.advance(Seconds{60}); // the countdown to the next lesson drops by a minute
        QCoreApplication::processEvents();
        QVERIFY(paints.count() > 0);
    }

    void aTruncatedNameCanBeReadInFull()
    {
        Fixture f;
        const QString name = u"Maximiliane <i>Konstantina</i> "_s.repeated(6).trimmed();
        f.start({sampleLesson(name, at("11:00:00"), minutes(25)),
                 sampleLesson(u"<b>Eve</b>"_s, at("12:00:00"), minutes(25))});
        const auto view = f.shown();
        const auto rows = listOf(*view).rows();
        QCOMPARE(rows.front()->toolTip(), u"<p>"_s + name.toHtmlEscaped() + u"</p>"_s);
        QCOMPARE(rows.front()->accessibleName(), u"11:00, "_s + name + u", Zoom, NEXT, in 40m"_s);
        QVERIFY(rows.back()->toolTip().isEmpty());
    }

    void aNameOfAMillionCharactersIsTruncated()
    {
        Fixture f;
        const QString name = u"王<b>\n\u202E "_s.repeated(200'000);
        f.start({sampleLesson(name, at("10:00:00"), minutes(50)),
                 sampleLesson(name, at("11:00:00"), minutes(50))});
        const auto view = f.shown();
        (void)view->grab();
        f.clock.advance(Seconds{5});
        for (const QString &text : rowTexts(*view)) {
            QVERIFY(text.size() < 1100);
            QVERIFY(!text.contains(u'\n') && !text.contains(u'\u202E'));
        }
    }

    void theStartTimeFollowsTheUsersLocale()
    {
        QLocale::setDefault(QLocale(u"en_US"_s));
        Fixture f("12:10:00");
        f.start({sampleLesson(u"A"_s, at("13:05:00"), minutes(50))});
        const auto view = f.shown();
        QCOMPARE(rowTexts(*view), QStringList{u"1:05 PM, A, Zoom, NEXT, in 55m"_s});
    }

    // --- the error line

    void withoutAnErrorThereIsNoErrorLine()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        QVERIFY(!f.model->lastErrorMessage());
        const auto texts = view->findChildren<look::Text *>(Qt::FindDirectChildrenOnly);
        QVERIFY(std::ranges::none_of(texts, &QWidget::isVisible));
    }

    void anErrorIsShownUntilALoadSucceeds()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        const int height = view->sizeHint().height();
        f.store.answer = std::unexpected(LessonScheduleError(Failure{u"the service is away"_s}));
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{0});
        const auto *error = view->findChildren<look::Text *>(Qt::FindDirectChildrenOnly).front();
        QVERIFY(error->isVisible());
        QCOMPARE(error->text(), u"Could not load today's lessons."_s);
        QCOMPARE(error->textFormat(), Qt::PlainText);
        QVERIFY(error->wordWrap());
        QVERIFY(view->sizeHint().height() > height);
        // Exactly as high as its wrapped text.
        QCOMPARE(view->sizeHint().height() - height, error->heightForWidth(320 - 2 * 12) + 10);
        f.store.answer = fullDay();
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{0});
        QVERIFY(!error->isVisible());
        QCOMPARE(view->sizeHint().height(), height);
    }

    // --- the commands

    void theCommandsAreInOrder()
    {
        Fixture f;
        const auto view = f.view();
        QStringList texts;
        int below = 0;
        (void)view->grab();
        for (const auto *command : view->findChildren<QPushButton *>()) {
            texts << command->text();
            QVERIFY(command->isEnabled());
            QVERIFY(command->y() > below);
            below = command->geometry().bottom();
        }
        QCOMPARE(texts,
                 (QStringList{u"Test Notification"_s, u"Quick Start"_s, u"User Manual"_s, u"About Quillet"_s,
                              u"Settings"_s, u"Show Debug Window"_s, u"Quit Quillet"_s}));
    }

    void aCommandWithoutAWindowIsLeftOut()
    {
        Fixture f;
        f.actions.hasWindow = [](const WindowName &window) { return window == windowNames::about(); };
        const auto view = f.view();
        QCOMPARE(view->findChildren<QPushButton *>().size(), 3);
    }

    void eachCommandActsWhenItIsClicked()
    {
        Fixture f;
        f.settings.setHasCompletedWelcome(true);
        const auto view = f.shown();
        const auto click = [&view](const QString &text) {
            QTest::mouseClick(&button(*view, text), Qt::LeftButton);
        };
        click(u"Test Notification"_s);
        QCOMPARE(f.presenter.presented.size(), std::size_t{1});
        click(u"Quick Start"_s);
        click(u"User Manual"_s);
        click(u"About Quillet"_s);
        click(u"Settings"_s);
        QCOMPARE(f.opened, (std::vector{windowNames::setup(), windowNames::help(), windowNames::about(),
                                        windowNames::settings()}));
        click(u"Quit Quillet"_s);
        QCOMPARE(f.quits, 1);
    }

    void quickStartReopensACompletedSetup()
    {
        Fixture f;
        f.settings.setHasCompletedWelcome(true);
        const auto view = f.shown();
        button(*view, u"Quick Start"_s).click();
        QCOMPARE(f.opened, std::vector{windowNames::setup()});
    }

    void afterACompletedSetupAppearingOpensNothing()
    {
        Fixture f;
        f.settings.setHasCompletedWelcome(true);
        const auto view = f.shown();
        QCoreApplication::processEvents();
        QVERIFY(f.opened.empty() && f.openedBeside.empty());
    }

    void untilSetupIsCompletedEachAppearanceBringsItForward()
    {
        Fixture f;
        const auto view = f.shown();
        QCoreApplication::processEvents();
        QCOMPARE(f.openedBeside, std::vector{windowNames::setup()});
        view->hide();
        view->show();
        QCoreApplication::processEvents();
        QCOMPARE(f.openedBeside.size(), std::size_t{2});
        QVERIFY(!f.settings.hasCompletedWelcome());
    }

    void ctrlQQuitsAtOnce()
    {
        Fixture f;
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        QTest::keyClick(view.get(), Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(f.quits, 1);
        QTest::keyClick(view.get(), Qt::Key_Q);
        QCOMPARE(f.quits, 1);
    }

    void ctrlQQuitsWhileAnotherWindowHasTheFocus()
    {
        Fixture f;
        const auto view = f.shown();
        QWidget beside;
        beside.show();
        beside.activateWindow();
        QTRY_VERIFY(beside.isActiveWindow());
        QTest::keyClick(&beside, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(f.quits, 1);
        view->hide();
        QTest::keyClick(&beside, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(f.quits, 1);
    }

    // --- keyboard

    void tabGoesFromTopToBottom()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        QCoreApplication::processEvents();
        QStringList names;
        for (int press = 0; press < 9; ++press) {
            QWidget *focused = QApplication::focusWidget();
            QVERIFY(focused != nullptr);
            names << accessible(focused).text(QAccessible::Name);
            QTest::keyClick(view.get(), Qt::Key_Tab);
        }
        QCOMPARE(names, (QStringList{u"All today"_s, u"Today\u2019s schedule"_s, u"Test Notification"_s,
                                     u"Quick Start"_s, u"User Manual"_s, u"About Quillet"_s, u"Settings"_s,
                                     u"Show Debug Window"_s, u"Quit Quillet"_s}));
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"All today"_s);
        QTest::keyClick(view.get(), Qt::Key_Tab, Qt::ShiftModifier);
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"Quit Quillet"_s);
    }

    void tabSkipsTheRowsWhenAllAreVisible()
    {
        Fixture f;
        f.start({sampleLesson(u"A"_s, at("11:00:00"), minutes(50))});
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"Compact"_s);
        QTest::keyClick(view.get(), Qt::Key_Tab);
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"Test Notification"_s);
    }

    void arrowKeysMoveTheSwitch()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        QCOMPARE(rowTexts(*view).size(), 40);
        QCOMPARE(accessible(QApplication::focusWidget()).text(QAccessible::Name), u"All today"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
        QCOMPARE(rowTexts(*view).size(), 3);
    }

    void aClickMovesTheSwitch()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        auto *picker = view->findChild<look::SegmentedControl *>();
        QTest::mouseClick(picker->findChildren<QAbstractButton *>().at(1), Qt::LeftButton);
        QCOMPARE(rowTexts(*view).size(), 40);
        QTest::mouseClick(picker->findChildren<QAbstractButton *>().at(0), Qt::LeftButton);
        QCOMPARE(rowTexts(*view).size(), 3);
    }

    void enterAndSpacePressACommand()
    {
        Fixture f;
        const auto view = f.shown();
        QTRY_VERIFY(view->isActiveWindow());
        auto &quit = button(*view, u"Quit Quillet"_s);
        quit.setFocus(Qt::TabFocusReason);
        for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
            QTest::keyClick(&quit, key);
        }
        QCOMPARE(f.quits, 3);
    }

    void theFocusedControlIsMarked()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        showAllToday(*view);
        view->resize(view->sizeHint());
        QTRY_VERIFY(view->isActiveWindow());
        for (int press = 0; press < 8; ++press) {
            QTest::keyClick(view.get(), Qt::Key_Tab);
            QWidget *focused = QApplication::focusWidget();
            const QImage with = view->grab().toImage();
            focused->clearFocus();
            const QImage without = view->grab().toImage();
            focused->setFocus(Qt::TabFocusReason);
            int changed = 0;
            for (int y = 0; y < with.height(); ++y) {
                for (int x = 0; x < with.width(); ++x) {
                    changed += with.pixel(x, y) != without.pixel(x, y) ? 1 : 0;
                }
            }
            QVERIFY2(changed > 100 * m_scaleFactor, qPrintable(accessible(focused).text(QAccessible::Name)));
        }
    }

    void theRowsScrollByKeyboardAndWheel()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        showAllToday(*view);
        auto *scroll = view->findChild<look::ScrollView *>();
        QScrollBar &bar = barOf(*view);
        scroll->setFocus(Qt::TabFocusReason);
        QTest::keyClick(scroll, Qt::Key_Home);
        QCOMPARE(bar.value(), 0);
        const auto key = [&](Qt::Key pressed) {
            const int before = bar.value();
            QTest::keyClick(scroll, pressed);
            return bar.value() - before;
        };
        QVERIFY(key(Qt::Key_Down) > 0);
        QVERIFY(key(Qt::Key_Up) < 0);
        QVERIFY(key(Qt::Key_PageDown) > 200);
        QVERIFY(key(Qt::Key_PageUp) < -200);
        QVERIFY(key(Qt::Key_Space) > 200);
        QVERIFY(key(Qt::Key_End) > 0);
        QCOMPARE(bar.value(), bar.maximum());
        const QPointF middle = scroll->viewport()->rect().center();
        QWheelEvent wheel(middle, scroll->viewport()->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(scroll->viewport(), &wheel);
        QVERIFY(bar.value() < bar.maximum());
    }

    // --- what assistive tools read

    void everyControlHasANameAndARole()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        for (auto *command : view->findChildren<QPushButton *>()) {
            QCOMPARE(accessible(command).role(), QAccessible::Button);
            QCOMPARE(accessible(command).text(QAccessible::Name), command->text());
        }
        auto *picker = view->findChild<look::SegmentedControl *>();
        QCOMPARE(accessible(picker).text(QAccessible::Name), u"Schedule view"_s);
        const auto segments = picker->findChildren<QAbstractButton *>();
        QCOMPARE(accessible(segments.at(0)).text(QAccessible::Name), u"Compact"_s);
        QCOMPARE(accessible(segments.at(1)).text(QAccessible::Name), u"All today"_s);
        QCOMPARE(accessible(segments.at(1)).role(), QAccessible::RadioButton);
        QCOMPARE(accessible(view->findChild<look::ScrollView *>()).text(QAccessible::Name),
                 u"Today\u2019s schedule"_s);
    }

    void eachRowIsOneAccessibleListItem()
    {
        Fixture f;
        f.start(fullDay());
        const auto view = f.shown();
        QAccessibleInterface &list = accessible(&listOf(*view));
        QCOMPARE(list.role(), QAccessible::List);
        QCOMPARE(list.childCount(), 3);
        for (int index = 0; index < 3; ++index) {
            QAccessibleInterface *row = list.child(index);
            QCOMPARE(row->role(), QAccessible::ListItem);
            QCOMPARE(row->childCount(), 0);
            QCOMPARE(row->text(QAccessible::Name), rowTexts(*view).at(index));
        }
    }
};

QUILLET_TEST(MenuBarContentViewTest, runViewTest<MenuBarContentViewTest>);

#include "MenuBarContentViewTest.moc"
