// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/DateTimePicker.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Settings/ManualLessonList.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewWalk.h"
#include "tests/views/SettingsFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;
using pictures::Theme;

/// How the settings window looks.
class SettingsLookTest final : public SettingsFixture {
    Q_OBJECT

public:
    explicit SettingsLookTest(int scaleFactor) : m_scaleFactor(scaleFactor) {}

private:
    /// The whole column at `width`, without scrolling.
    [[nodiscard]] static QImage column(const SettingsRoom &room, int width)
    {
        room.view->resize(width, 10'000);
        (void)room.view->grab();
        room.view->resize(width, room.page()->widget()->heightForWidth(width));
        return room.view->grab().toImage();
    }

    void comparePicture(const QImage &picture, const QString &name) const
    {
        const QString suffix = m_scaleFactor == 1 ? QString() : u"@%1x"_s.arg(m_scaleFactor);
        const QString difference = pictures::difference(picture, u"settings-"_s + name + suffix);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    int m_scaleFactor;

private Q_SLOTS:
    void nothingIsCutAtAnyWindowAndTextSize_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<double>("fontScale");
        for (const int width : {250, 400, 620, 1400}) {
            for (const double scale : {0.8, 1.0, 1.5, 2.0}) {
                QTest::addRow("%d points, %.1f", width, scale) << width << scale;
            }
        }
    }

    void nothingIsCutAtAnyWindowAndTextSize()
    {
        QFETCH(int, width);
        QFETCH(double, fontScale);
        pictures::prepareApplication(Theme::light, fontScale);
        const SettingsRoom room(sampleLessons());
        room.view->resize(width, 300);
        (void)room.view->grab();
        QCOMPARE(viewWalk::cutWidgets(*room.page()->widget()).join(u'\n'), QString());
        const QSize content = room.page()->widget()->size();
        const QSize seen = room.page()->viewport()->size();
        QCOMPARE(room.page()->verticalScrollBar()->maximum(), content.height() - seen.height());
        QCOMPARE(room.page()->horizontalScrollBar()->maximum(), std::max(0, content.width() - seen.width()));
        if (width >= 620) { // at its initial width it never scrolls sideways
            QCOMPARE(room.page()->horizontalScrollBar()->maximum(), 0);
        }
    }

    void edgesAndMiddlesAreAlignedToThePixel()
    {
        const SettingsRoom room(sampleLessons());
        (void)column(room, 620);
        const auto place = [&](const QWidget *widget) {
            return QRect(widget->mapTo(room.view.get(), QPoint()), widget->size());
        };
        const int left = 20 + 16;
        const int right = 620 - 20 - 16;
        for (const QString &text : {u"Reload Today's Lessons"_s, u"Add Manual Lesson"_s,
                                    u"Open Quick Start"_s, u"Play sound with reminders"_s}) {
            QCOMPARE(place(room.button(text)).left(), left);
        }
        QCOMPARE(place(room.studentName()).left(), left);
        QCOMPARE(place(room.studentName()).right() + 1, right);
        QList<QWidget *> controls{room.view->findChild<look::DateTimePicker *>()};
        for (auto *picker : room.view->findChildren<QComboBox *>()) {
            controls << picker;
        }
        for (auto *remove : room.list()->findChildren<QPushButton *>()) {
            controls << remove;
        }
        for (const QWidget *control : controls) {
            QCOMPARE(place(control).right() + 1, right);
            QCOMPARE(control->height(), room.studentName()->height());
        }
        int labels = 0;
        for (const auto *label : room.view->findChildren<QLabel *>()) {
            if (const QWidget *buddy = label->buddy()) {
                QCOMPARE(place(label).left(), left);
                QVERIFY(std::abs(place(label).center().y() - place(buddy).center().y()) <= 1);
                ++labels;
            }
        }
        QCOMPARE(labels, 5);
    }

    void anOpenWindowFollowsTheDesktopsColoursAndFont()
    {
        const SettingsRoom room(sampleLessons());
        room.show();
        pictures::prepareApplication(Theme::dark, 1.5);
        QTRY_COMPARE(room.studentName()->font(), look::font(look::TextStyle::body));
        room.view->hide(); // on the screen it would also show the focus mark
        const QImage followed = column(room, 620);
        const SettingsRoom fresh(sampleLessons());
        QVERIFY(followed == column(fresh, 620));
    }

    void itLooksAsItShould_data()
    {
        QTest::addColumn<Theme>("theme");
        QTest::addColumn<double>("fontScale");
        QTest::addColumn<std::vector<ManualLessonEntry>>("lessons");
        QTest::addColumn<double>("duration");
        QTest::newRow("names-light") << Theme::light << 1.0 << sampleLessons() << 7.5;
        QTest::newRow("names-dark") << Theme::dark << 1.0 << sampleLessons() << 7.5;
        if (m_scaleFactor == 1) {
            const std::vector<ManualLessonEntry> none;
            QTest::newRow("light") << Theme::light << 1.0 << none << 10.0;
            QTest::newRow("dark") << Theme::dark << 1.0 << none << 10.0;
            QTest::newRow("large-light") << Theme::light << 2.0 << sampleLessons() << 10.0;
            QTest::newRow("large-dark") << Theme::dark << 2.0 << sampleLessons() << 10.0;
        }
    }

    void itLooksAsItShould()
    {
        QFETCH(Theme, theme);
        QFETCH(double, fontScale);
        QFETCH(std::vector<ManualLessonEntry>, lessons);
        QFETCH(double, duration);
        pictures::prepareApplication(theme, fontScale);
        SettingsRoom room(lessons);
        room.settings.setNotificationDuration(duration);
        comparePicture(column(room, 620), QLatin1StringView(QTest::currentDataTag()));
    }

    void theEndOfAHundredLessonsLooksAsItShould()
    {
        const SettingsRoom room(aHundredLessons());
        (void)room.view->grab();
        room.page()->ensureWidgetVisible(room.list()->rowOf(99));
        comparePicture(room.view->grab().toImage(), u"hundred"_s);
    }

    void aSmallWindowLooksAsItShould()
    {
        const SettingsRoom room(sampleLessons());
        room.view->resize(320, 420);
        comparePicture(room.view->grab().toImage(), u"small"_s);
    }

    void aWideWindowLooksAsItShould()
    {
        const SettingsRoom room;
        room.view->resize(1000, 700);
        comparePicture(room.view->grab().toImage(), u"wide"_s);
    }

    void fromRightToLeftItLooksAsItShould()
    {
        QApplication::setLayoutDirection(Qt::RightToLeft);
        const auto restore = qScopeGuard([] { QApplication::setLayoutDirection(Qt::LeftToRight); });
        const SettingsRoom room(sampleLessons());
        comparePicture(column(room, 620), u"right-to-left"_s);
    }

    void theCalendarLooksAsItShould_data()
    {
        QTest::addColumn<Theme>("theme");
        QTest::newRow("calendar-light") << Theme::light;
        QTest::newRow("calendar-dark") << Theme::dark;
    }

    void theCalendarLooksAsItShould()
    {
        QFETCH(Theme, theme);
        pictures::prepareApplication(theme);
        const SettingsRoom room;
        room.show();
        room.start()->setDate(QDate(2026, 11, 25)); // not today, which is the 21st
        room.button(u"Choose a day for Start"_s)->click();
        QWidget *popup = QApplication::activePopupWidget();
        QVERIFY(popup != nullptr);
        comparePicture(popup->grab().toImage(), QLatin1StringView(QTest::currentDataTag()));
        popup->close();
    }
};

QUILLET_TEST(SettingsLookTest, runViewTest<SettingsLookTest>);

#include "SettingsLookTest.moc"
