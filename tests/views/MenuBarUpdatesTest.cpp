// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Text.h"
#include "Corvane/Views/LessonScheduleRow.h"
#include "tests/support/Pictures.h"
#include "tests/views/MenuBarFixture.h"

#include <QAccessible>
#include <QTest>

#include <algorithm>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

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

} // namespace

/// Loads and ticks while the panel is shown.
class MenuBarUpdatesTest final : public MenuBarFixture {
    Q_OBJECT

private Q_SLOTS:
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
};

QUILLET_TEST(MenuBarUpdatesTest, runViewTest<MenuBarUpdatesTest>);

#include "MenuBarUpdatesTest.moc"
