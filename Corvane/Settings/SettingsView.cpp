// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/SettingsView.h"

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/DateTimePicker.h"
#include "Corvane/Look/FlowRow.h"
#include "Corvane/Look/Glow.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Scrolling.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Surfaces.h"
#include "Corvane/Look/SymbolTurn.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Settings/ManualLessonList.h"
#include "Corvane/Settings/NotificationDurationOption.h"
#include "Corvane/Settings/SettingsCard.h"
#include "Corvane/Settings/SettingsRow.h"
#include "Corvane/Utilities/DateText.h"
#include "Corvane/Utilities/Spawn.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// The labels of `choices`, for a picker.
template <typename Choices, typename Word>
QStringList words(const Choices &choices, Word word)
{
    QStringList texts;
    for (const auto &choice : choices) {
        texts << word(choice);
    }
    return texts;
}

/// The index of `choice` in `choices`; -1 if it is not there.
template <typename Choices, typename Choice>
int indexOf(const Choices &choices, const Choice &choice)
{
    const auto found = std::ranges::find(choices, choice);
    return found != choices.end() ? static_cast<int>(found - choices.begin()) : -1;
}

/// A labelled control: beside its label, or below it if the line is too narrow.
QLayout *formLine(const QString &name, QWidget *control)
{
    auto *label = new look::Text(name, look::TextStyle::body);
    label->setWordWrap(false);
    label->setBuddy(control);
    return new look::FlowRow(look::space::medium, look::space::tight, look::FlowRow::Ends::apart,
                             {label, control});
}

/// A button at the beginning of its line.
QLayout *leading(QWidget *button)
{
    return look::row(0, {button, look::Spacer{}});
}

} // namespace

SettingsView::SettingsView(AppSettings &settings, ReloadLessons reloadLessons, OpenWindow openWindow,
                           QWidget *parent)
    : QWidget(parent)
    , m_settings(settings)
    , m_reloadLessons(std::move(reloadLessons))
    , m_openWindow(std::move(openWindow))
    , m_form(ManualLessonForm::at(currentDate()))
    , m_studentName(look::textField(u"Student name"_s))
    , m_add(look::pushButton(u"Add Manual Lesson"_s, look::Role::prominent, u"plus"_s))
    , m_manualLessons(new ManualLessonList(*m_add))
{
    using namespace look;
    // Without a description, a screen reader would read the placeholder twice.
    m_studentName->setAccessibleDescription(u"Return adds the lesson"_s);
    auto *cards = column(settings::spacing, {header(), calendarConnection(), manualLessonEntry(),
                                             remindersAndDisplay(), help()});
    cards->addStretch(1);
    auto *content = new QWidget;
    content->setMaximumWidth(settings::columnWidth);
    content->setLayout(
        padded({settings::padding, settings::padding, settings::padding, settings::padding}, cards));
    m_page = scrolling(content);
    setLayout(column(0, {m_page}));
    followDesktopFont(*this);
}

QWidget *SettingsView::header() const
{
    using namespace look;
    auto *header = new QWidget;
    auto *texts = column(space::hair, {heading(new Text(u"Settings"_s, TextStyle::title, QFont::Bold)),
                                       new Text(u"Choose how Quillet follows your teaching day."_s,
                                                TextStyle::body, Ink::secondary)});
    auto *line = row(space::medium,
                     {new SymbolView(u"slider.horizontal.3"_s, TextStyle::largeTitle, Ink::accent), texts});
    line->setStretch(1, 1);
    header->setLayout(line);
    return header;
}

QWidget *SettingsView::calendarConnection()
{
    using namespace look;
    auto *reload = pushButton(u"Reload Today's Lessons"_s, Role::bordered, u"arrow.clockwise"_s);
    m_reloading = new SymbolTurn(*reload);
    connect(reload, &QAbstractButton::clicked, this, [this] { spawn(SettingsView::reload(this)); });
    return new SettingsCard(
        u"Calendar Connection"_s, u"calendar"_s,
        column(
            card::spacing,
            {new SettingsRow(u"Apple Calendar"_s,
                             u"Quillet reads today's lessons from the calendars enabled on this Mac."_s,
                             u"checkmark.circle.fill"_s, Ink::green),
             new Divider,
             new SettingsRow(u"Google Calendar"_s,
                             u"Add your Google account in macOS Calendar or Internet Accounts. Its lessons "
                             "then appear here automatically."_s,
                             u"g.circle.fill"_s, Ink::blue),
             leading(reload)}));
}

QWidget *SettingsView::manualLessonEntry()
{
    using namespace look;
    QComboBox *platform = picker(
        u"Platform"_s, words(allTeachingPlatforms, [](TeachingPlatform choice) { return rawValue(choice); }));
    platform->setCurrentIndex(indexOf(allTeachingPlatforms, m_form.platform));
    auto *start = new DateTimePicker(u"Start"_s, startFormat(locale()));
    start->setDateTime(toDateTime(m_form.startTime));
    QComboBox *length = picker(u"Length"_s, words(manualLessonLengths, lengthText));
    length->setCurrentIndex(indexOf(manualLessonLengths, m_form.durationMinutes));

    connect(m_studentName, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_form.studentName = text; });
    connect(m_studentName, &QLineEdit::textEdited, this,
            [this] { m_page->ensureWidgetVisible(m_studentName); }); // an added row may have scrolled it away
    connect(m_studentName, &QLineEdit::returnPressed, this, &SettingsView::addManualLesson);
    connect(platform, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_form.platform = allTeachingPlatforms.at(static_cast<std::size_t>(index));
    });
    connect(start, &DateTimePicker::edited, this,
            [this](const QDateTime &shown) { m_form.startTime = chosenStart(shown); });
    connect(length, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_form.durationMinutes = manualLessonLengths.at(static_cast<std::size_t>(index));
    });
    connect(m_add, &QAbstractButton::clicked, this, &SettingsView::addManualLesson);

    const auto showLessons = [this] { m_manualLessons->setEntries(m_settings.manualLessons()); };
    connect(&m_settings, &AppSettings::manualLessonsChanged, this, showLessons);
    connect(m_manualLessons, &ManualLessonList::removeRequested, this, &SettingsView::removeManualLesson);
    connect(m_manualLessons, &ManualLessonList::focusLeft, m_add,
            [this] { m_add->setFocus(Qt::OtherFocusReason); });
    showLessons();

    return new SettingsCard(
        u"Manual Lesson Entry"_s, u"square.and.pencil"_s,
        column(card::spacing,
               {new Text(u"Use this if a lesson is not in your calendar. Manual lessons use the same working "
                         "Quillet reminders."_s,
                         TextStyle::subheadline, Ink::secondary),
                column(settings::formSpacing, {m_studentName, formLine(u"Platform"_s, platform),
                                               formLine(u"Start"_s, start), formLine(u"Length"_s, length)}),
                leading(m_add), m_manualLessons}));
}

QWidget *SettingsView::remindersAndDisplay()
{
    using namespace look;
    auto *sound = new QCheckBox(u"Play sound with reminders"_s);
    // toggled(), not clicked(): assistive tools toggle without a click.
    connect(sound, &QAbstractButton::toggled, this, [this](bool isOn) {
        if (isOn != m_settings.playsSound()) {
            m_settings.setPlaysSound(isOn);
        }
    });
    const auto showSound = [this, sound] { sound->setChecked(m_settings.playsSound()); };
    connect(&m_settings, &AppSettings::playsSoundChanged, sound, showSound);
    showSound();

    auto *login = new QCheckBox(u"Start Quillet when I log in"_s);
    connect(login, &QAbstractButton::toggled, this, [this](bool isOn) {
        if (isOn != m_settings.startAtLogin()) {
            m_settings.setStartAtLogin(isOn);
        }
    });
    const auto showLogin = [this, login] { login->setChecked(m_settings.startAtLogin()); };
    connect(&m_settings, &AppSettings::startAtLoginChanged, login, showLogin);
    showLogin();

    QComboBox *position =
        picker(u"Popup Position"_s,
               words(allNotificationPositions, [](NotificationPosition choice) { return title(choice); }));
    connect(position, &QComboBox::activated, this, [this](int index) {
        m_settings.setNotificationPosition(allNotificationPositions.at(static_cast<std::size_t>(index)));
    });
    const auto showPosition = [this, position] {
        position->setCurrentIndex(indexOf(allNotificationPositions, m_settings.notificationPosition()));
    };
    connect(&m_settings, &AppSettings::notificationPositionChanged, position, showPosition);
    showPosition();

    QComboBox *duration = picker(u"Notification Duration"_s,
                                 words(allNotificationDurationOptions,
                                       [](NotificationDurationOption choice) { return title(choice); }));
    connect(duration, &QComboBox::activated, this, [this](int index) {
        m_settings.setNotificationDuration(
            rawValue(allNotificationDurationOptions.at(static_cast<std::size_t>(index))));
    });
    const auto showDuration = [this, duration] {
        duration->setCurrentIndex(
            indexOf(allNotificationDurationOptions,
                    nearestNotificationDurationOption(m_settings.notificationDuration())));
    };
    connect(&m_settings, &AppSettings::notificationDurationChanged, duration, showDuration);
    showDuration();

    return new SettingsCard(
        u"Reminders & Display"_s, u"bell.badge"_s,
        column(card::spacing,
               {column(settings::formSpacing, {sound, login}), new Divider,
                column(settings::formSpacing, {formLine(u"Popup Position"_s, position),
                                               formLine(u"Notification Duration"_s, duration)})}));
}

QWidget *SettingsView::help()
{
    using namespace look;
    auto *quickStart = pushButton(u"Open Quick Start"_s);
    connect(quickStart, &QAbstractButton::clicked, this, &SettingsView::openQuickStart);
    auto *userManual = pushButton(u"Open User Manual"_s);
    connect(userManual, &QAbstractButton::clicked, this, [this] { m_openWindow(windowNames::help()); });
    return new SettingsCard(
        u"Help"_s, u"questionmark.circle"_s,
        column(
            card::spacing,
            {new Text(u"Your pop-up timings are already set to guide you through each lesson changeover."_s,
                      TextStyle::subheadline, Ink::secondary),
             new FlowRow(space::small, space::small, FlowRow::Ends::together, {quickStart, userManual})}));
}

QCoro::Task<void> SettingsView::reload(QPointer<SettingsView> self)
{
    self->m_reloading->begin();
    co_await self->m_reloadLessons();
    if (self != nullptr) {
        self->m_reloading->end();
    }
}

void SettingsView::addManualLesson()
{
    const auto entry = m_form.makeEntry(QUuid::createUuid());
    if (!entry) {
        return;
    }
    std::vector<ManualLessonEntry> entries = m_settings.manualLessons();
    entries.push_back(*entry);
    m_settings.setManualLessons(std::move(entries));
    m_studentName->clear();
    look::announce(*this, u"Added: %1"_s.arg(entry->studentName));
    // Deferred until the layout has placed the row.
    QWidget *added = m_manualLessons->rowOf(m_settings.manualLessons().size() - 1);
    QTimer::singleShot(0, added, [this, added] {
        m_page->ensureWidgetVisible(added);
        look::Glow::behind(*added, *m_manualLessons->parentWidget());
    });
    spawn(reload(this));
}

void SettingsView::removeManualLesson(std::size_t index)
{
    std::vector<ManualLessonEntry> entries = m_settings.manualLessons();
    const auto removed = entries.begin() + static_cast<std::ptrdiff_t>(index);
    look::announce(*this, u"Removed: %1"_s.arg(removed->studentName));
    entries.erase(removed);
    m_settings.setManualLessons(std::move(entries));
    spawn(reload(this));
}

void SettingsView::openQuickStart()
{
    m_settings.setHasCompletedWelcome(false);
    m_openWindow(windowNames::setup());
}

} // namespace corvane
