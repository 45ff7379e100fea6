// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/HelpTopic.h"

#include "Corvane/Utilities/Product.h"

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

/// `text` without case distinctions by the rules of `locale`.
QString folded(const QString &text, const QLocale &locale)
{
    // First lower case by the locale's rules; case folding then unifies the rest, for example the two small
    // sigmas.
    return locale.toLower(text).toCaseFolded();
}

QList<HelpSection> contactSections()
{
    return {
        {.title = u"Quillet"_s,
         .points = {u"Quillet is designed for online teachers."_s,
                    u"For help, email "_s + product::supportAddress() + u". Visit "_s + product::webSite() +
                        u" for updates."_s,
                    u"Use the Debug Window and this Help Centre when reporting a problem, and include the "
                    "time and the lesson involved."_s}}};
}

} // namespace

QString rawValue(HelpTopic topic)
{
    switch (topic) {
    case HelpTopic::welcome:
        return u"welcome"_s;
    case HelpTopic::installation:
        return u"installation"_s;
    case HelpTopic::quickStart:
        return u"quickStart"_s;
    case HelpTopic::notifications:
        return u"notifications"_s;
    case HelpTopic::settings:
        return u"settings"_s;
    case HelpTopic::troubleshooting:
        return u"troubleshooting"_s;
    case HelpTopic::faq:
        return u"faq"_s;
    case HelpTopic::versionHistory:
        return u"versionHistory"_s;
    case HelpTopic::contact:
        return u"contact"_s;
    }
    Q_UNREACHABLE();
}

std::optional<HelpTopic> helpTopic(const QString &rawValue)
{
    for (const HelpTopic topic : allHelpTopics) {
        if (corvane::rawValue(topic) == rawValue) {
            return topic;
        }
    }
    return std::nullopt;
}

QString title(HelpTopic topic)
{
    switch (topic) {
    case HelpTopic::welcome:
        return u"Welcome"_s;
    case HelpTopic::installation:
        return u"Installation & Permissions"_s;
    case HelpTopic::quickStart:
        return u"Quick Start"_s;
    case HelpTopic::notifications:
        return u"Notification Guide"_s;
    case HelpTopic::settings:
        return u"Settings"_s;
    case HelpTopic::troubleshooting:
        return u"Troubleshooting"_s;
    case HelpTopic::faq:
        return u"Frequently Asked Questions"_s;
    case HelpTopic::versionHistory:
        return u"Version History"_s;
    case HelpTopic::contact:
        return u"About & Contact"_s;
    }
    Q_UNREACHABLE();
}

QString symbolName(HelpTopic topic)
{
    switch (topic) {
    case HelpTopic::welcome:
        return u"graduationcap.fill"_s;
    case HelpTopic::installation:
        return u"lock.shield.fill"_s;
    case HelpTopic::quickStart:
        return u"bolt.fill"_s;
    case HelpTopic::notifications:
        return u"bell.badge.fill"_s;
    case HelpTopic::settings:
        return u"gearshape.fill"_s;
    case HelpTopic::troubleshooting:
        return u"wrench.and.screwdriver.fill"_s;
    case HelpTopic::faq:
        return u"questionmark.circle.fill"_s;
    case HelpTopic::versionHistory:
        return u"clock.arrow.circlepath"_s;
    case HelpTopic::contact:
        return u"info.circle.fill"_s;
    }
    Q_UNREACHABLE();
}

QList<HelpSection> sections(HelpTopic topic)
{
    switch (topic) {
    case HelpTopic::welcome:
        return {
            {.title = u"What Quillet Does"_s,
             .points = {u"Quillet reads your lesson schedule and shows the next action you need to take."_s,
                        u"It is designed to help you wrap up and join your next lesson before late-start "
                        "penalties become a risk."_s,
                        u"Quillet stays in the menu bar and does not show a Dock icon."_s}}};
    case HelpTopic::installation:
        return {
            {.title = u"First Launch"_s,
             .points = {u"Open Quillet. It appears as a bell in the menu bar at the top of your screen."_s,
                        u"When macOS asks for calendar access, choose Allow. Quillet only reads lesson "
                        u"information; "
                        "it does not change calendar events."_s,
                        u"If macOS asks for notification permission, choose Allow so alerts can reach you "
                        "reliably."_s}},
            {.title = u"If Permissions Were Denied"_s,
             .points = {u"Open System Settings > Privacy & Security > Calendars and allow Quillet."_s,
                        u"Open System Settings > Notifications and allow notifications and sounds for "
                        "Quillet."_s}}};
    case HelpTopic::quickStart:
        return {{.title = u"Teaching in Under Two Minutes"_s,
                 .points = {u"Launch Quillet and leave the menu-bar bell running."_s,
                            u"Allow calendar and notification access when asked."_s,
                            u"Open the bell menu and choose Test Notification."_s,
                            u"Confirm that you see the banner and hear the sound."_s,
                            u"Begin teaching. Quillet will follow your calendar's lesson times."_s}}};
    case HelpTopic::notifications:
        return {
            {.title = u"What Each Alert Means"_s,
             .points = {u"Green - Wrap up: begin closing the current lesson so you are ready for the next "
                        "student."_s,
                        u"Blue - Prepare or join: open the next teaching platform and get ready to start."_s,
                        u"Red - Start now: the next lesson is due. Join immediately."_s}},
            {.title = u"Banner Behaviour"_s,
             .points = {u"Banners appear in the position selected in Settings and dismiss automatically."_s,
                        u"The centre position is recommended when you need a reminder that is difficult to "
                        "miss."_s}}};
    case HelpTopic::settings:
        return {{.title = u"Available Preferences"_s,
                 .points = {u"Play sound turns the alert sound on or off."_s,
                            u"Popup Position controls where banners appear on your display."_s,
                            u"Notification Duration controls how long each banner stays visible."_s,
                            u"Start at Login is reserved for a future release."_s}}};
    case HelpTopic::troubleshooting:
        return {{.title = u"No Alerts"_s,
                 .points =
                     {u"Check that the Quillet bell is still visible in the menu bar."_s,
                      u"Choose Test Notification. If it fails, confirm notification permissions in System "
                      "Settings."_s,
                      u"Open Show Debug Window from the bell menu to check whether lessons were loaded."_s}},
                {.title = u"No Lessons Found"_s,
                 .points =
                     {u"Confirm your lesson events are present in Apple Calendar."_s,
                      u"Confirm Quillet has Calendar permission in System Settings."_s,
                      u"Use clear event titles containing the student name and platform where possible."_s}},
                {.title = u"No Sound"_s,
                 .points = {u"Confirm Play sound is enabled in Settings."_s,
                            u"Check your Mac volume and make sure it is not muted."_s}}};
    case HelpTopic::faq:
        return {
            {.title = u"Answers"_s,
             .points = {
                 u"Does Quillet edit my calendar? No. It only reads upcoming lesson events."_s,
                 u"Does it work with Teams, Zoom, Chrome, Safari, and LingoAce? Yes. Banners are designed to "
                 "appear above your work while you teach."_s,
                 u"Can I test it before a real lesson? Yes. Choose Test Notification from the menu-bar "
                 "menu."_s}}};
    case HelpTopic::versionHistory:
        return {{.title = u"1.0.6"_s,
                 .points = {u"Apple Calendar workflow integration."_s,
                            u"Reliable menu-bar lesson reminders and custom floating banners."_s,
                            u"Built-in Help Centre, Quick Start, About window, and printable manual."_s}}};
    case HelpTopic::contact:
        return contactSections();
    }
    Q_UNREACHABLE();
}

QString summary(const QList<HelpSection> &sections)
{
    return sections.isEmpty() ? QString() : sections.front().points.value(0);
}

QString summary(HelpTopic topic)
{
    return summary(sections(topic));
}

QString searchableText(HelpTopic topic)
{
    QStringList texts{title(topic)};
    for (const HelpSection &section : sections(topic)) {
        texts += section.points;
    }
    return texts.join(u' ');
}

QList<HelpTopic> visibleHelpTopics(const QString &searchText, const QLocale &locale)
{
    const QString wanted = folded(searchText.trimmed(), locale);
    QList<HelpTopic> visible;
    for (const HelpTopic topic : allHelpTopics) {
        if (wanted.isEmpty() || folded(searchableText(topic), locale).contains(wanted)) {
            visible.push_back(topic);
        }
    }
    return visible;
}

} // namespace corvane
