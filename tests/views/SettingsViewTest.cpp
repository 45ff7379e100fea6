// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/SettingsView.h"
#include "Corvane/Look/DateTimePicker.h"
#include "Corvane/Look/ElidedText.h"
#include "Corvane/Look/Glow.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Style.h"
#include "Corvane/Look/SymbolTurn.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Settings/ManualLessonList.h"
#include "Corvane/Utilities/DateText.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Pictures.h"
#include "tests/support/TemporarySettings.h"
#include "tests/support/ViewWalk.h"

#include <qcoro/qcorotimer.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QStyleOptionSpinBox>
#include <QTableView>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimeZone>
#include <QWheelEvent>

#include <chrono>
#include <ctime>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;
using pictures::Theme;

namespace {

constexpr Date saturday = dateSince1970(1'795'257'017.5); // Saturday, 2026-11-21 10:30:17.5 UTC
constexpr Date wholeMinute = dateSince1970(1'795'257'000);

ManualLessonEntry entry(const QString &name, TeachingPlatform platform = TeachingPlatform::zoom,
                        double secondsFromNow = 3600, qint64 minutes = 45)
{
    return {.id = QUuid::createUuid(),
            .studentName = name,
            .platform = platform,
            .startTime = wholeMinute + Seconds{secondsFromNow},
            .durationMinutes = minutes};
}

const QString longStudentName = u"Maximiliane Konstantina Theodora "_s.repeated(7).left(200);

std::vector<ManualLessonEntry> sampleLessons()
{
    return {entry(u"Anna"_s, TeachingPlatform::onlineLesson, 1800, 15),
            entry(longStudentName, TeachingPlatform::lingoAce, 86'400),
            entry(u"王小明 (二班)"_s, TeachingPlatform::microsoftTeams, 90'000, 60),
            entry(u"محمد الأمين (B2)"_s, TeachingPlatform::zoom, 864'000, 20),
            entry(u"<b>Eve</b> &amp;\n\t\u0007\u202EevE"_s, TeachingPlatform::googleMeet, -86'400, 7)};
}

std::vector<ManualLessonEntry> aHundredLessons()
{
    std::vector<ManualLessonEntry> entries;
    entries.reserve(100);
    for (int index = 0; index < 100; ++index) {
        entries.push_back(entry(u"Student %1"_s.arg(index + 1),
                                allTeachingPlatforms.at(static_cast<std::size_t>(index) % 5), index * 1800));
    }
    return entries;
}

/// The settings window's content, with a record of its requests.
struct SettingsRoom {
    explicit SettingsRoom(const std::vector<ManualLessonEntry> &lessons = {})
    {
        if (!lessons.empty()) {
            settings.setManualLessons(lessons);
        }
        view = std::make_unique<SettingsView>(
            settings,
            [this]() -> QCoro::Task<void> {
                ++reloads;
                if (loadTakes > 0) {
                    co_await QCoro::sleepFor(std::chrono::milliseconds(loadTakes));
                }
            },
            [this](const WindowName &window) { opened << window.identifier + u"|"_s + window.title; });
        view->resize(620, 700);
    }

    void show() const
    {
        view->show();
        QTRY_VERIFY(view->isActiveWindow());
    }

    [[nodiscard]] QLineEdit *studentName() const
    {
        for (auto *field : view->findChildren<QLineEdit *>()) {
            if (field->accessibleName() == u"Student name"_s) {
                return field;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QAbstractButton *button(const QString &text) const { return viewWalk::button(*view, text); }
    [[nodiscard]] QComboBox *picker(const QString &name) const
    {
        for (auto *picker : view->findChildren<QComboBox *>()) {
            if (picker->accessibleName() == name) {
                return picker;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QCheckBox *toggle(const QString &text) const
    {
        return qobject_cast<QCheckBox *>(button(text));
    }
    [[nodiscard]] QDateTimeEdit *start() const { return view->findChild<QDateTimeEdit *>(); }
    [[nodiscard]] QScrollArea *page() const { return view->findChild<QScrollArea *>(); }
    [[nodiscard]] ManualLessonList *list() const { return view->findChild<ManualLessonList *>(); }
    [[nodiscard]] QVariant stored(const QString &key) const
    {
        return QSettings(file->path(), QSettings::IniFormat).value(key);
    }
    [[nodiscard]] const ManualLessonEntry &lastLesson() const { return settings.manualLessons().back(); }

    /// Clicks one of the start field's arrows.
    void step(QStyle::SubControl arrow) const
    {
        QStyleOptionSpinBox option;
        option.initFrom(start());
        const QRect area = start()->style()->subControlRect(QStyle::CC_SpinBox, &option, arrow, start());
        QTest::mouseClick(start(), Qt::LeftButton, {}, area.center());
    }

    /// Chooses as a user does: opens the list and presses Return on an item.
    static void choose(QComboBox *picker, const QString &text)
    {
        picker->setFocus();
        picker->showPopup();
        const int row = picker->findText(text);
        QVERIFY(row >= 0);
        picker->view()->setCurrentIndex(picker->model()->index(row, 0));
        QTest::keyClick(picker->view(), Qt::Key_Return);
    }

    std::unique_ptr<TemporarySettings> file = std::make_unique<TemporarySettings>();
    FakeLoginItem loginItem;
    AppSettings settings{file->store(), file->store(), loginItem};
    int reloads = 0;
    int loadTakes = 0; ///< milliseconds
    QStringList opened;
    std::unique_ptr<SettingsView> view;
};

void roll(QWidget *widget)
{
    const QPointF middle = QRectF(widget->rect()).center();
    QWheelEvent event(middle, widget->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event); // only a spontaneous event propagates to the parent
    qApp->notify(widget, &event);
}

} // namespace

class SettingsViewTest final : public QObject {
    Q_OBJECT

public:
    explicit SettingsViewTest(int scaleFactor) : m_scaleFactor(scaleFactor) {}

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
    std::unique_ptr<ManualClock> m_clock;

private Q_SLOTS:
    void init()
    {
        pictures::prepareApplication();
        m_clock = std::make_unique<ManualClock>(saturday);
    }
    void cleanup() { m_clock.reset(); }

    void itShowsExactlyTheseTexts()
    {
        const SettingsRoom room({entry(u"Anna"_s)});
        QCOMPARE(
            viewWalk::texts(*room.view),
            (QStringList{
                u"Settings"_s,
                u"Choose how Quillet follows your teaching day."_s,
                u"Calendar Connection"_s,
                u"Apple Calendar"_s,
                u"Quillet reads today's lessons from the calendars enabled on this Mac."_s,
                u"Google Calendar"_s,
                u"Add your Google account in macOS Calendar or Internet Accounts. Its lessons then appear here automatically."_s,
                u"Reload Today's Lessons"_s,
                u"Manual Lesson Entry"_s,
                u"Use this if a lesson is not in your calendar. Manual lessons use the same working Quillet reminders."_s,
                u"Student name"_s,
                u"Platform"_s,
                u"Online Lesson"_s,
                u"LingoAce"_s,
                u"Microsoft Teams"_s,
                u"Zoom"_s,
                u"Google Meet"_s,
                u"Start"_s,
                u"Length"_s,
                u"15 min"_s,
                u"20 min"_s,
                u"25 min"_s,
                u"30 min"_s,
                u"40 min"_s,
                u"45 min"_s,
                u"60 min"_s,
                u"Add Manual Lesson"_s,
                u"Anna"_s,
                u"Sat 21 Nov 2026 11:30"_s,
                u"45 min"_s,
                u"Remove"_s,
                u"Reminders & Display"_s,
                u"Play sound with reminders"_s,
                u"Start Quillet when I log in"_s,
                u"Popup Position"_s,
                u"Center"_s,
                u"Top"_s,
                u"Bottom"_s,
                u"Top Left"_s,
                u"Top Right"_s,
                u"Bottom Left"_s,
                u"Bottom Right"_s,
                u"Notification Duration"_s,
                u"5 seconds"_s,
                u"10 seconds"_s,
                u"Help"_s,
                u"Your pop-up timings are already set to guide you through each lesson changeover."_s,
                u"Open Quick Start"_s,
                u"Open User Manual"_s,
            }));
    }

    void aBlankNameAddsNothingAndKeepsTheField()
    {
        const SettingsRoom room;
        room.studentName()->setText(u"   "_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QTest::keyClick(room.studentName(), Qt::Key_Return);
        QVERIFY(room.settings.manualLessons().empty());
        QVERIFY(!room.stored(u"manualLessons"_s).isValid());
        QCOMPARE(room.studentName()->text(), u"   "_s);
        QCOMPARE(room.reloads, 0);
    }

    void aStoredDurationOfSevenSecondsShowsFiveAndPickingTenStoresTen()
    {
        SettingsRoom room;
        room.settings.setNotificationDuration(7.0);
        auto *duration = room.picker(u"Notification Duration"_s);
        QCOMPARE(duration->currentText(), u"5 seconds"_s);
        room.show();
        SettingsRoom::choose(duration, u"10 seconds"_s);
        QCOMPARE(room.settings.notificationDuration(), 10.0);
        QCOMPARE(room.stored(u"notificationDuration"_s).toDouble(), 10.0);
    }

    void aStoredDurationBetweenTheOptionsIsKeptUntilOneIsChosen()
    {
        SettingsRoom room;
        room.settings.setNotificationDuration(7.5);
        room.show();
        auto *duration = room.picker(u"Notification Duration"_s);
        QCOMPARE(duration->currentText(), u"5 seconds"_s);
        QCOMPARE(room.settings.notificationDuration(), 7.5);
        SettingsRoom::choose(duration, u"5 seconds"_s); // the one already shown
        QCOMPARE(room.settings.notificationDuration(), 5.0);
    }

    void theReloadArrowTurnsWhileLessonsAreLoaded()
    {
        SettingsRoom room;
        room.show();
        const auto *button = room.button(u"Reload Today's Lessons"_s);
        room.loadTakes = 50;
        room.button(u"Reload Today's Lessons"_s)->click();
        QTRY_VERIFY(look::SymbolTurn::degrees(button) > 90);
        QTRY_COMPARE(look::SymbolTurn::degrees(button), 0.0); // stops after a full turn
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click(); // this loads lessons, too
        QTRY_VERIFY(look::SymbolTurn::degrees(button) > 90);
        room.view.reset(); // while it turns
        QCOMPARE(room.reloads, 2);
        QTest::qWait(2 * room.loadTakes);
    }

    void anAddedLessonGlowsForAMoment()
    {
        const SettingsRoom room({entry(u"Anna"_s)});
        room.show();
        QVERIFY(room.view->findChild<look::Glow *>() == nullptr);
        room.studentName()->setText(u"Ben"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QTRY_VERIFY(room.view->findChild<look::Glow *>() != nullptr);
        const QPointer<look::Glow> glow = room.view->findChild<look::Glow *>();
        QWidget *row = room.list()->rowOf(1);
        const auto area = [&](const QWidget *widget) {
            return QRect(widget->mapTo(room.view.get(), QPoint()), widget->size());
        };
        QVERIFY(area(glow).contains(area(row)));
        QVERIFY(!area(glow).intersects(area(room.list()->rowOf(0))));
        room.button(u"Remove"_s)->click(); // removes Anna, so Ben's row moves up
        QCOMPARE(room.list()->rowOf(0), row);
        QTRY_COMPARE(row->y(), 0); // it has moved up
        QTRY_VERIFY(area(glow).contains(area(row)) && area(glow).height() < 2 * row->height());
        QTRY_VERIFY(glow.isNull());
    }

    void aRemovedLessonsGlowEnds()
    {
        const SettingsRoom room;
        room.show();
        room.studentName()->setText(u"Ben"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QTRY_VERIFY(room.view->findChild<look::Glow *>() != nullptr);
        const QPointer<look::Glow> glow = room.view->findChild<look::Glow *>();
        room.button(u"Remove"_s)->click();
        QVERIFY(glow->isHidden());
        QTRY_VERIFY_WITH_TIMEOUT(glow.isNull(), 500);
    }

    void withoutMotionNothingGlows()
    {
        qobject_cast<look::Style *>(QApplication::style())->follow({.reducesMotion = true});
        const SettingsRoom room;
        room.show();
        room.studentName()->setText(u"Ben"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QTest::qWait(50);
        QVERIFY(room.view->findChild<look::Glow *>() == nullptr);
    }

    void removingTheLastLessonSavesAnEmptyList()
    {
        const SettingsRoom room({entry(u"Anna"_s)});
        room.button(u"Remove"_s)->click();
        QVERIFY(room.settings.manualLessons().empty());
        QCOMPARE(room.stored(u"manualLessons"_s).toByteArray(), QByteArray("[]"));
        QCOMPARE(room.reloads, 1);
        QVERIFY(room.list()->isHidden());
    }

    void eachRemoveButtonRemovesItsOwnLesson()
    {
        const std::vector<ManualLessonEntry> lessons = sampleLessons();
        const SettingsRoom room(lessons);
        const auto removed = [&](std::size_t index) {
            viewWalk::button(*room.list()->rowOf(index), u"Remove"_s)->click();
        };
        removed(2);
        QCOMPARE(room.settings.manualLessons(),
                 (std::vector{lessons[0], lessons[1], lessons[3], lessons[4]}));
        removed(3);
        removed(0);
        QCOMPARE(room.settings.manualLessons(), (std::vector{lessons[1], lessons[3]}));
        QCOMPARE(room.reloads, 3);
    }

    void aDoublePressOnRemoveRemovesOneLesson()
    {
        const SettingsRoom room({entry(u"Anna"_s), entry(u"Ben"_s)});
        auto *remove = room.button(u"Remove"_s);
        remove->click();
        remove->click();
        QCOMPARE(room.settings.manualLessons().size(), std::size_t{1});
    }

    void ofTwoIdenticalEntriesOneIsRemoved()
    {
        const ManualLessonEntry twin = entry(u"Anna"_s);
        const SettingsRoom room({twin, twin});
        viewWalk::button(*room.list()->rowOf(1), u"Remove"_s)->click();
        QCOMPARE(room.settings.manualLessons(), std::vector{twin});
    }

    void theFormBeginsWithAnOnlineLessonOfThirtyMinutesInHalfAnHour()
    {
        const SettingsRoom room;
        QCOMPARE(room.studentName()->text(), QString());
        QCOMPARE(room.picker(u"Platform"_s)->currentText(), u"Online Lesson"_s);
        QCOMPARE(room.picker(u"Length"_s)->currentText(), u"30 min"_s);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 11:00"_s);
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE((room.lastLesson().startTime - wholeMinute).count(), 1800.0);
        QCOMPARE(room.lastLesson().durationMinutes, 30);
        QCOMPARE(room.lastLesson().platform, TeachingPlatform::onlineLesson);
    }

    void addingALessonSavesItAtOnceAndReloadsTheLessons()
    {
        const SettingsRoom room({entry(u"Anna"_s)});
        room.studentName()->setText(u" \tBen \u2028"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE(room.settings.manualLessons().size(), std::size_t{2});
        QCOMPARE(room.lastLesson().studentName, u"Ben"_s);
        QVERIFY(!room.lastLesson().id.isNull());
        const auto stored = decodeManualLessons(room.stored(u"manualLessons"_s).toByteArray());
        QVERIFY(stored.has_value());
        QCOMPARE(*stored, room.settings.manualLessons());
        QCOMPARE(room.reloads, 1);
        QCOMPARE(room.studentName()->text(), QString());
    }

    void platformStartAndLengthStayForTheNextLesson()
    {
        SettingsRoom room;
        room.show();
        SettingsRoom::choose(room.picker(u"Platform"_s), u"Google Meet"_s);
        SettingsRoom::choose(room.picker(u"Length"_s), u"45 min"_s);
        room.start()->setDateTime(QDateTime(QDate(2026, 12, 1), QTime(9, 15)));
        for (const QString &name : {u"Anna"_s, u"Ben"_s}) {
            room.studentName()->setText(name);
            room.button(u"Add Manual Lesson"_s)->click();
            QCOMPARE(room.lastLesson().studentName, name);
            QCOMPARE(room.lastLesson().platform, TeachingPlatform::googleMeet);
            QCOMPARE(room.lastLesson().durationMinutes, 45);
            QCOMPARE(toDateTime(room.lastLesson().startTime),
                     QDateTime(QDate(2026, 12, 1), QTime(9, 15), QTimeZone::utc()));
        }
        QVERIFY(room.settings.manualLessons()[0].id != room.settings.manualLessons()[1].id);
    }

    void enterInTheNameAddsTheLessonAndTheNextNameCanBeTyped()
    {
        const SettingsRoom room;
        room.show();
        room.studentName()->setFocus();
        QTest::keyClicks(room.studentName(), u"Anna"_s);
        QTest::keyClick(room.studentName(), Qt::Key_Return);
        QTest::keyClicks(room.studentName(), u"Ben"_s);
        QTest::keyClick(room.studentName(), Qt::Key_Enter);
        QCOMPARE(room.settings.manualLessons().size(), std::size_t{2});
        QCOMPARE(room.lastLesson().studentName, u"Ben"_s);
        QCOMPARE(room.view->focusWidget(), room.studentName());
    }

    void anyNameIsShownAsPlainTextOnOneLine()
    {
        const SettingsRoom room(sampleLessons());
        (void)room.view->grab();
        for (std::size_t index = 0; index < sampleLessons().size(); ++index) {
            const auto *name = room.list()->rowOf(index)->findChild<look::ElidedText *>();
            QCOMPARE(name->textFormat(), Qt::PlainText);
            for (const QChar c : {u'\n', u'\t', u'\u0007', u'\u202E'}) {
                QVERIFY(!name->text().contains(c));
            }
        }
        QCOMPARE(room.list()->rowOf(4)->findChild<look::ElidedText *>()->text(), u"<b>Eve</b> &amp; evE"_s);
    }

    void aTruncatedNamesToolTipShowsItInFull()
    {
        const SettingsRoom room({entry(u"Anna"_s), entry(u"<i>"_s + longStudentName)});
        (void)room.view->grab();
        QCOMPARE(room.list()->rowOf(0)->findChild<look::ElidedText *>()->toolTip(), QString());
        const auto *cut = room.list()->rowOf(1)->findChild<look::ElidedText *>();
        QCOMPARE(QTextDocumentFragment::fromHtml(cut->toolTip()).toPlainText(),
                 (u"<i>"_s + longStudentName).trimmed());
        QCOMPARE(QAccessible::queryAccessibleInterface(const_cast<look::ElidedText *>(cut))
                     ->text(QAccessible::Name),
                 (u"<i>"_s + longStudentName).trimmed());
    }

    void eachRemoveButtonDescribesItsLesson()
    {
        const SettingsRoom room({entry(u"Anna"_s, TeachingPlatform::microsoftTeams)});
        auto *remove = room.button(u"Remove"_s);
        const auto *interface = QAccessible::queryAccessibleInterface(remove);
        QCOMPARE(interface->text(QAccessible::Name), u"Remove"_s);
        QCOMPARE(interface->text(QAccessible::Description),
                 u"Anna, Microsoft Teams, Sat 21 Nov 2026 11:30, 45 min"_s);
    }

    void theSwitchesAreSavedAtOnce()
    {
        SettingsRoom room;
        auto *sound = room.toggle(u"Play sound with reminders"_s);
        QVERIFY(sound->isChecked());
        sound->click();
        QCOMPARE(room.settings.playsSound(), false);
        QCOMPARE(room.stored(u"playsSound"_s).toBool(), false);
        auto *login = room.toggle(u"Start Quillet when I log in"_s);
        QVERIFY(login->isChecked());
        QVERIFY(room.loginItem.isRegistered);
        login->click();
        QCOMPARE(room.stored(u"startAtLogin"_s).toBool(), false);
        QVERIFY(!room.loginItem.isRegistered);
        login->click();
        QVERIFY(room.loginItem.isRegistered);
    }

    void theSwitchesAreSavedWhenAnAssistiveToolTogglesThem()
    {
        const SettingsRoom room;
        for (const QString &text : {u"Play sound with reminders"_s, u"Start Quillet when I log in"_s}) {
            auto *interface = QAccessible::queryAccessibleInterface(room.toggle(text))->actionInterface();
            QVERIFY(interface->actionNames().contains(QAccessibleActionInterface::toggleAction()));
            interface->doAction(QAccessibleActionInterface::toggleAction());
        }
        QCOMPARE(room.settings.playsSound(), false);
        QCOMPARE(room.stored(u"playsSound"_s).toBool(), false);
        QCOMPARE(room.settings.startAtLogin(), false);
        QVERIFY(!room.loginItem.isRegistered);
    }

    void eachPopupPositionCanBeChosen()
    {
        SettingsRoom room;
        room.show();
        auto *position = room.picker(u"Popup Position"_s);
        QCOMPARE(position->currentText(), u"Center"_s);
        for (const NotificationPosition choice : allNotificationPositions) {
            SettingsRoom::choose(position, title(choice));
            QCOMPARE(room.settings.notificationPosition(), choice);
            QCOMPARE(room.stored(u"notificationPosition"_s).toString(), rawValue(choice));
        }
    }

    void aChangeMadeElsewhereIsShownAtOnceAndNotWrittenBack()
    {
        SettingsRoom room;
        room.settings.setPlaysSound(false);
        room.settings.setStartAtLogin(false);
        room.settings.setNotificationPosition(NotificationPosition::bottomLeft);
        room.settings.setNotificationDuration(6.0);
        QVERIFY(!room.toggle(u"Play sound with reminders"_s)->isChecked());
        QVERIFY(!room.toggle(u"Start Quillet when I log in"_s)->isChecked());
        QCOMPARE(room.picker(u"Popup Position"_s)->currentText(), u"Bottom Left"_s);
        QCOMPARE(room.picker(u"Notification Duration"_s)->currentText(), u"5 seconds"_s);
        QCOMPARE(room.settings.notificationDuration(), 6.0);
        room.settings.setManualLessons({entry(u"Anna"_s)});
        QVERIFY(room.button(u"Remove"_s) != nullptr);
        QCOMPARE(room.reloads, 0);
    }

    void reloadAsksForTodaysLessons()
    {
        const SettingsRoom room;
        room.button(u"Reload Today's Lessons"_s)->click();
        QCOMPARE(room.reloads, 1);
    }

    void quickStartRestartsTheSetup()
    {
        SettingsRoom room;
        room.settings.setHasCompletedWelcome(true);
        room.button(u"Open Quick Start"_s)->click();
        QCOMPARE(room.settings.hasCompletedWelcome(), false);
        QCOMPARE(room.stored(u"hasCompletedWelcome"_s).toBool(), false);
        QCOMPARE(room.opened, QStringList{u"setup|Welcome to Quillet"_s});
    }

    void theUserManualOpensTheHelp()
    {
        SettingsRoom room;
        room.settings.setHasCompletedWelcome(true);
        room.button(u"Open User Manual"_s)->click();
        QCOMPARE(room.opened, QStringList{u"help|Quillet Help"_s});
        QCOMPARE(room.settings.hasCompletedWelcome(), true);
    }

    void theWheelScrollsThePageAndChangesNothing()
    {
        const SettingsRoom room(sampleLessons());
        room.show();
        QList<QWidget *> fields{room.start()};
        for (auto *picker : room.view->findChildren<QComboBox *>()) {
            fields << picker;
        }
        for (QWidget *field : fields) {
            field->setFocus();
            room.page()->verticalScrollBar()->setValue(0);
            const QString before =
                QAccessible::queryAccessibleInterface(field)->text(QAccessible::Value) + room.start()->text();
            roll(field);
            QCOMPARE(QAccessible::queryAccessibleInterface(field)->text(QAccessible::Value) +
                         room.start()->text(),
                     before);
            QVERIFY2(room.page()->verticalScrollBar()->value() > 0, qPrintable(field->accessibleName()));
        }
    }

    void aStartCanBeTyped()
    {
        const SettingsRoom room;
        room.show();
        room.start()->setFocus(Qt::TabFocusReason);
        room.start()->setSelectedSection(QDateTimeEdit::HourSection);
        QTest::keyClicks(room.start(), u"1745"_s); // the cursor moves to the minute by itself
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE(toDateTime(room.lastLesson().startTime),
                 QDateTime(QDate(2026, 11, 21), QTime(17, 45), QTimeZone::utc()));
    }

    void aClickIntoTheStartSelectsTheUnitToType()
    {
        const SettingsRoom room;
        room.show();
        auto *field = room.start()->findChild<QLineEdit *>();
        QCOMPARE(room.start()->text(), u"21 Nov 2026 11:00"_s);
        const auto clickBefore = [&](int position) {
            // Clicks where the cursor is drawn for that position.
            field->setCursorPosition(position);
            QTest::mouseClick(field, Qt::LeftButton, {},
                              field->inputMethodQuery(Qt::ImCursorRectangle).toRectF().center().toPoint());
        };
        clickBefore(13); // between the digits of the hour
        QTRY_COMPARE(field->selectedText(), u"11"_s);
        QTest::keyClicks(room.start(), u"1745"_s);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 17:45"_s);
        clickBefore(1);
        QTRY_COMPARE(field->selectedText(), u"21"_s);
        QTest::keyClicks(room.start(), u"24"_s);
        QCOMPARE(room.start()->text(), u"24 Nov 2026 17:45"_s);
        // A selection made by dragging stays.
        field->setSelection(0, 6);
        QTest::mouseRelease(field, Qt::LeftButton, {}, QPoint(1, 1));
        QCoreApplication::processEvents();
        QCOMPARE(field->selectedText(), u"24 Nov"_s);
    }

    void aStartCanBeTypedInAnyLocale_data()
    {
        QTest::addColumn<QLocale>("locale");
        for (const auto *name : {u"en_US", u"en_GB", u"de_DE", u"zh_CN", u"zh_TW", u"fr_CA", u"ja_JP",
                                 u"ar_EG", u"fa_IR", u"he_IL", u"hi_IN"}) {
            const QString text = QString::fromUtf16(name);
            QTest::newRow(qPrintable(text)) << QLocale(text);
        }
    }

    void aStartCanBeTypedInAnyLocale()
    {
        QFETCH(QLocale, locale);
        const QLocale before;
        QLocale::setDefault(locale);
        const auto restore = qScopeGuard([before] { QLocale::setDefault(before); });
        const SettingsRoom room;
        room.show();
        auto *start = room.start();
        QVERIFY(start->displayedSections() & QDateTimeEdit::YearSection);
        start->setDateTime(QDateTime(QDate(2026, 12, 24), QTime(9, 15)));
        start->setFocus(Qt::TabFocusReason);
        start->setSelectedSection(QDateTimeEdit::DaySection);
        QTest::keyClick(start, Qt::Key_Down);
        start->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClicks(start, u"40"_s);
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE(toDateTime(room.lastLesson().startTime),
                 QDateTime(QDate(2026, 12, 23), QTime(9, 40), QTimeZone::utc()));
    }

    void aStartSkippedByDaylightSavingBecomesAValidOne()
    {
        const QByteArray before = qgetenv("TZ");
        qputenv("TZ", "Europe/Berlin");
        tzset();
        const auto restore = qScopeGuard([before] {
            qputenv("TZ", before);
            tzset();
        });
        const SettingsRoom room;
        room.show();
        room.start()->setDateTime(QDateTime(QDate(2027, 3, 28), QTime(1, 30)));
        room.start()->setFocus(Qt::TabFocusReason);
        room.start()->setSelectedSection(QDateTimeEdit::HourSection);
        QTest::keyClick(room.start(), Qt::Key_Up);
        QCOMPARE(room.start()->dateTime().time(), QTime(3, 30));
        QTest::keyClicks(room.start(), u"02"_s);
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        const QDateTime start = toDateTime(room.lastLesson().startTime);
        QVERIFY(start == QDateTime(QDate(2027, 3, 28), QTime(1, 30), QTimeZone::utc()) ||
                start == QDateTime(QDate(2027, 3, 28), QTime(0, 30), QTimeZone::utc()));
    }

    void arrowKeysStepTheStartAndCarryIntoTheNextUnit()
    {
        const SettingsRoom room;
        room.show();
        room.start()->setFocus(Qt::TabFocusReason);
        room.start()->setSelectedSection(QDateTimeEdit::MinuteSection);
        QTest::keyClick(room.start(), Qt::Key_Down);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 10:59"_s);
        QTest::keyClick(room.start(), Qt::Key_Up);
        QTest::keyClick(room.start(), Qt::Key_Up);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 11:01"_s);
        room.start()->setSelectedSection(QDateTimeEdit::DaySection);
        for (int day = 0; day < 10; ++day) {
            QTest::keyClick(room.start(), Qt::Key_Up);
        }
        QCOMPARE(room.start()->text(), u"1 Dec 2026 11:01"_s);
        room.start()->setSelectedSection(QDateTimeEdit::MonthSection);
        QTest::keyClick(room.start(), Qt::Key_Up);
        QCOMPARE(room.start()->text(), u"1 Jan 2027 11:01"_s);
    }

    void aStartCanBeSteppedWithTheMouse()
    {
        const SettingsRoom room;
        room.show();
        room.step(QStyle::SC_SpinBoxUp);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 12:00"_s);
        QVERIFY(room.start()->hasFocus());
        room.step(QStyle::SC_SpinBoxDown);
        room.step(QStyle::SC_SpinBoxDown);
        QCOMPARE(room.start()->text(), u"21 Nov 2026 10:00"_s);
        room.start()->setSelectedSection(QDateTimeEdit::YearSection);
        room.step(QStyle::SC_SpinBoxUp);
        QCOMPARE(room.start()->text(), u"21 Nov 2027 10:00"_s);
    }

    void aChosenStartIsAWholeMinute()
    {
        const SettingsRoom room;
        room.show();
        room.step(QStyle::SC_SpinBoxUp);
        room.studentName()->setText(u"Anna"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QCOMPARE(toDateTime(room.lastLesson().startTime),
                 QDateTime(QDate(2026, 11, 21), QTime(12, 0), QTimeZone::utc()));
    }

    void aDayCanBeClickedInTheCalendar()
    {
        const SettingsRoom room;
        room.show();
        auto *open = room.button(u"Choose a day for Start"_s);
        QVERIFY(open != nullptr);
        QTest::mouseClick(open, Qt::LeftButton);
        QWidget *popup = QApplication::activePopupWidget();
        QVERIFY(popup != nullptr);
        QCOMPARE(viewWalk::unnamedControls(popup).join(u'\n'), QString());
        auto *calendar = popup->findChild<QCalendarWidget *>();
        QCOMPARE(calendar->selectedDate(), QDate(2026, 11, 21));
        auto *days = calendar->findChild<QTableView *>();
        const auto day = [&]() -> QModelIndex {
            for (int week = 1; week < days->model()->rowCount(); ++week) {
                for (int weekday = 0; weekday < days->model()->columnCount(); ++weekday) {
                    const QModelIndex index = days->model()->index(week, weekday);
                    if (index.data().toInt() == 25 && week > 2) { // not the 25th of October
                        return index;
                    }
                }
            }
            return {};
        }();
        QVERIFY(day.isValid());
        QTest::mouseClick(days->viewport(), Qt::LeftButton, {}, days->visualRect(day).center());
        QCOMPARE(room.start()->text(), u"25 Nov 2026 11:00"_s);
        QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
    }

    void keysChooseADayInTheCalendarAndEscapeCancels()
    {
        const SettingsRoom room;
        room.show();
        auto *open = room.button(u"Choose a day for Start"_s);
        open->setFocus();
        QTest::keyClick(open, Qt::Key_Space);
        QWidget *popup = QApplication::activePopupWidget();
        QVERIFY(popup != nullptr);
        QWidget *days = popup->findChild<QTableView *>();
        QTest::keyClick(days, Qt::Key_Down);
        QTest::keyClick(days, Qt::Key_Return);
        QCOMPARE(room.start()->text(), u"28 Nov 2026 11:00"_s);
        QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);

        QTest::keyClick(open, Qt::Key_Space);
        popup = QApplication::activePopupWidget();
        QVERIFY(popup != nullptr);
        days = popup->findChild<QTableView *>();
        QTest::keyClick(days, Qt::Key_Up);
        QTest::keyClick(days, Qt::Key_Escape);
        QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
        QCOMPARE(room.start()->text(), u"28 Nov 2026 11:00"_s);
        room.view->close();
    }

    void addingOrRemovingALessonKeepsTheOtherRows()
    {
        std::vector<ManualLessonEntry> lessons = aHundredLessons();
        SettingsRoom room(lessons);
        std::vector<QWidget *> rows;
        rows.reserve(100);
        for (std::size_t index = 0; index < 100; ++index) {
            rows.push_back(room.list()->rowOf(index));
        }
        lessons.push_back(entry(u"New"_s));
        room.settings.setManualLessons(lessons);
        lessons.erase(lessons.begin() + 50);
        room.settings.setManualLessons(lessons);
        rows.erase(rows.begin() + 50);
        for (std::size_t index = 0; index < 99; ++index) {
            QCOMPARE(room.list()->rowOf(index), rows[index]);
        }
    }

    void anAddedRowIsScrolledIntoView()
    {
        const SettingsRoom room(aHundredLessons());
        room.show();
        QCOMPARE(room.page()->verticalScrollBar()->value(), 0);
        QTest::keyClicks(room.studentName(), u"New"_s);
        QTest::keyClick(room.studentName(), Qt::Key_Return);
        const QWidget *added = room.list()->rowOf(100);
        const auto isSeen = [&](const QWidget *widget) {
            const QWidget *viewport = room.page()->viewport();
            return viewport->rect().contains(QRect(widget->mapTo(viewport, QPoint()), widget->size()));
        };
        QTRY_VERIFY(isSeen(added));
        QTest::keyClicks(room.studentName(), u"A"_s); // typing the next name scrolls the field back into view
        QVERIFY(isSeen(room.studentName()));
    }

    void theFocusMovesToTheNeighbourOfARemovedRow()
    {
        const SettingsRoom room({entry(u"Anna"_s), entry(u"Ben"_s), entry(u"Cleo"_s)});
        room.show();
        const auto remove = [&](std::size_t row) {
            return viewWalk::button(*room.list()->rowOf(row), u"Remove"_s);
        };
        remove(1)->setFocus();
        QTest::keyClick(remove(1), Qt::Key_Space);
        QCOMPARE(room.view->focusWidget(), remove(1)); // Cleo's
        QTest::keyClick(remove(1), Qt::Key_Return);
        QCOMPARE(room.view->focusWidget(), remove(0));
        QTest::keyClick(remove(0), Qt::Key_Space);
        QCOMPARE(room.view->focusWidget(), room.button(u"Add Manual Lesson"_s));
    }

    void tabReachesEveryControlInReadingOrder()
    {
        SettingsRoom room({entry(u"Anna"_s)});
        room.show();
        room.studentName()->setText(u"Ben"_s);
        room.button(u"Add Manual Lesson"_s)->click();
        QStringList order = viewWalk::tabOrder(*room.view);
        const auto first = order.indexOf(u"Reload Today's Lessons"_s);
        QVERIFY(first >= 0);
        order = order.mid(first) + order.first(first);
        const QStringList wanted{u"Reload Today's Lessons"_s,
                                 u"Student name"_s,
                                 u"Platform"_s,
                                 u"Start"_s,
                                 u"Choose a day for Start"_s,
                                 u"Length"_s,
                                 u"Add Manual Lesson"_s,
                                 u"Remove"_s,
                                 u"Remove"_s,
                                 u"Play sound with reminders"_s,
                                 u"Start Quillet when I log in"_s,
                                 u"Popup Position"_s,
                                 u"Notification Duration"_s,
                                 u"Open Quick Start"_s,
                                 u"Open User Manual"_s};
        QCOMPARE(order.join(u'|'), wanted.join(u'|'));
    }

    void tabMovesFromAddToTheFirstLessonsButton()
    {
        const SettingsRoom room; // without a lesson at first
        room.show();
        for (const QString &name : {u"Anna"_s, u"Ben"_s}) {
            room.studentName()->setText(name);
            room.button(u"Add Manual Lesson"_s)->click();
        }
        room.button(u"Add Manual Lesson"_s)->setFocus();
        for (const QString &name : {u"Remove"_s, u"Remove"_s, u"Play sound with reminders"_s}) {
            QTest::keyClick(room.view->focusWidget(), Qt::Key_Tab);
            QCOMPARE(qobject_cast<QAbstractButton *>(room.view->focusWidget())->text(), name);
        }
    }

    void everyControlHasAName()
    {
        const SettingsRoom room(sampleLessons());
        room.show();
        QCOMPARE(viewWalk::unnamedControls(room.view.get()).join(u'\n'), QString());
    }

    void thePageScrollsByKeyWhereverTheFocusIs()
    {
        const SettingsRoom room(sampleLessons());
        room.show();
        room.button(u"Reload Today's Lessons"_s)->setFocus();
        QTest::keyClick(room.view->focusWidget(), Qt::Key_PageDown);
        QVERIFY(room.page()->verticalScrollBar()->value() > 100);
    }

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

QUILLET_TEST(SettingsViewTest, runViewTest<SettingsViewTest>);

#include "SettingsViewTest.moc"
