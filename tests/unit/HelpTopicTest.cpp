// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/HelpTopic.h"
#include "tests/support/TestProgram.h"

#include <QSet>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

struct Section {
    QString title;
    QStringList points;
};

struct Topic {
    HelpTopic topic;
    QString rawValue;
    QString title;
    QString symbolName;
    QList<Section> sections;
};

// clang-format off
const QList<Topic> topics{
    {HelpTopic::welcome, u"welcome"_s, u"Welcome"_s, u"graduationcap.fill"_s, {
        {u"What Quillet Does"_s, {
            u"Quillet reads your lesson schedule and shows the next action you need to take."_s,
            u"It is designed to help you wrap up and join your next lesson before "
            "late-start penalties become a risk."_s,
            u"Quillet stays in the menu bar and does not show a Dock icon."_s,
        }},
    }},
    {HelpTopic::installation, u"installation"_s, u"Installation & Permissions"_s, u"lock.shield.fill"_s, {
        {u"First Launch"_s, {
            u"Open Quillet. It appears as a bell in the menu bar at the top of your screen."_s,
            u"When macOS asks for calendar access, choose Allow. Quillet only reads lesson "
            "information; it does not change calendar events."_s,
            u"If macOS asks for notification permission, choose Allow so alerts can reach "
            "you reliably."_s,
        }},
        {u"If Permissions Were Denied"_s, {
            u"Open System Settings > Privacy & Security > Calendars and allow Quillet."_s,
            u"Open System Settings > Notifications and allow notifications and sounds for "
            "Quillet."_s,
        }},
    }},
    {HelpTopic::quickStart, u"quickStart"_s, u"Quick Start"_s, u"bolt.fill"_s, {
        {u"Teaching in Under Two Minutes"_s, {
            u"Launch Quillet and leave the menu-bar bell running."_s,
            u"Allow calendar and notification access when asked."_s,
            u"Open the bell menu and choose Test Notification."_s,
            u"Confirm that you see the banner and hear the sound."_s,
            u"Begin teaching. Quillet will follow your calendar's lesson times."_s,
        }},
    }},
    {HelpTopic::notifications, u"notifications"_s, u"Notification Guide"_s, u"bell.badge.fill"_s, {
        {u"What Each Alert Means"_s, {
            u"Green - Wrap up: begin closing the current lesson so you are ready for the "
            "next student."_s,
            u"Blue - Prepare or join: open the next teaching platform and get ready to "
            "start."_s,
            u"Red - Start now: the next lesson is due. Join immediately."_s,
        }},
        {u"Banner Behaviour"_s, {
            u"Banners appear in the position selected in Settings and dismiss automatically."_s,
            u"The centre position is recommended when you need a reminder that is difficult "
            "to miss."_s,
        }},
    }},
    {HelpTopic::settings, u"settings"_s, u"Settings"_s, u"gearshape.fill"_s, {
        {u"Available Preferences"_s, {
            u"Play sound turns the alert sound on or off."_s,
            u"Popup Position controls where banners appear on your display."_s,
            u"Notification Duration controls how long each banner stays visible."_s,
            u"Start at Login is reserved for a future release."_s,
        }},
    }},
    {HelpTopic::troubleshooting, u"troubleshooting"_s, u"Troubleshooting"_s, u"wrench.and.screwdriver.fill"_s, {
        {u"No Alerts"_s, {
            u"Check that the Quillet bell is still visible in the menu bar."_s,
            u"Choose Test Notification. If it fails, confirm notification permissions in "
            "System Settings."_s,
            u"Open Show Debug Window from the bell menu to check whether lessons were "
            "loaded."_s,
        }},
        {u"No Lessons Found"_s, {
            u"Confirm your lesson events are present in Apple Calendar."_s,
            u"Confirm Quillet has Calendar permission in System Settings."_s,
            u"Use clear event titles containing the student name and platform where "
            "possible."_s,
        }},
        {u"No Sound"_s, {
            u"Confirm Play sound is enabled in Settings."_s,
            u"Check your Mac volume and make sure it is not muted."_s,
        }},
    }},
    {HelpTopic::faq, u"faq"_s, u"Frequently Asked Questions"_s, u"questionmark.circle.fill"_s, {
        {u"Answers"_s, {
            u"Does Quillet edit my calendar? No. It only reads upcoming lesson events."_s,
            u"Does it work with Teams, Zoom, Chrome, Safari, and LingoAce? Yes. Banners are "
            "designed to appear above your work while you teach."_s,
            u"Can I test it before a real lesson? Yes. Choose Test Notification from the "
            "menu-bar menu."_s,
        }},
    }},
    {HelpTopic::versionHistory, u"versionHistory"_s, u"Version History"_s, u"clock.arrow.circlepath"_s, {
        {u"1.0.6"_s, {
            u"Apple Calendar workflow integration."_s,
            u"Reliable menu-bar lesson reminders and custom floating banners."_s,
            u"Built-in Help Centre, Quick Start, About window, and printable manual."_s,
        }},
    }},
    {HelpTopic::contact, u"contact"_s, u"About & Contact"_s, u"info.circle.fill"_s, {
        {u"Quillet"_s, {
            u"Quillet is designed for online teachers."_s,
            u"For help, email support@quillet.example. Visit https://quillet.example for "
            "updates."_s,
            u"Use the Debug Window and this Help Centre when reporting a problem, and "
            "include the time and the lesson involved."_s,
        }},
    }},
};
// clang-format on

QStringList found(const QString &searchText, const QLocale &locale = QLocale::c())
{
    QStringList names;
    for (const HelpTopic topic : visibleHelpTopics(searchText, locale)) {
        names.push_back(rawValue(topic));
    }
    return names;
}

QStringList all()
{
    QStringList names;
    for (const Topic &topic : topics) {
        names.push_back(topic.rawValue);
    }
    return names;
}

} // namespace

class HelpTopicTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theTopicsAreInOrder()
    {
        QCOMPARE(allHelpTopics.size(), std::size_t{9});
        for (std::size_t index = 0; index < allHelpTopics.size(); ++index) {
            QCOMPARE(allHelpTopics.at(index), topics.at(static_cast<qsizetype>(index)).topic);
            QCOMPARE(static_cast<std::size_t>(allHelpTopics.at(index)), index);
        }
    }

    void everyTextIsExact()
    {
        for (const Topic &topic : topics) {
            QCOMPARE(rawValue(topic.topic), topic.rawValue);
            QCOMPARE(title(topic.topic), topic.title);
            QCOMPARE(symbolName(topic.topic), topic.symbolName);
            const QList<HelpSection> article = sections(topic.topic);
            QCOMPARE(article.size(), topic.sections.size());
            for (qsizetype index = 0; index < article.size(); ++index) {
                QCOMPARE(article.at(index).title, topic.sections.at(index).title);
                QCOMPARE(article.at(index).points, topic.sections.at(index).points);
            }
        }
    }

    void aTopicIsFoundOnlyByItsRawValue()
    {
        QSet<QString> names;
        for (const Topic &topic : topics) {
            QCOMPARE(helpTopic(topic.rawValue), std::optional(topic.topic));
            names.insert(topic.rawValue);
        }
        QCOMPARE(names.size(), 9);
        QCOMPARE(helpTopic(u"Welcome"_s), std::nullopt);
        QCOMPARE(helpTopic(QString()), std::nullopt);
    }

    void theSummaryIsTheFirstPointOfTheFirstSection()
    {
        for (const Topic &topic : topics) {
            QCOMPARE(summary(topic.topic), topic.sections.front().points.front());
        }
        QCOMPARE(summary(HelpTopic::quickStart), u"Launch Quillet and leave the menu-bar bell running."_s);
    }

    void withoutASectionOrAPointTheSummaryIsEmpty()
    {
        QCOMPARE(summary(QList<HelpSection>()), QString());
        QCOMPARE(summary({HelpSection{.title = u"Empty"_s, .points = {}},
                          HelpSection{.title = u"Full"_s, .points = {u"Point"_s}}}),
                 QString());
    }

    void theSearchableTextIsTheTitleAndAllPointsJoinedWithSpaces()
    {
        QCOMPARE(
            searchableText(HelpTopic::settings),
            u"Settings Play sound turns the alert sound on or off. Popup Position controls where banners "
            "appear on your display. Notification Duration controls how long each banner stays visible. "
            "Start at Login is reserved for a future release."_s);
        for (const Topic &topic : topics) {
            QStringList texts{topic.title};
            for (const auto &section : topic.sections) {
                texts += section.points;
            }
            QCOMPARE(searchableText(topic.topic), texts.join(u' '));
        }
    }

    void anEmptySearchShowsAllTopicsInOrder()
    {
        QCOMPARE(found({}), all());
        QCOMPARE(found(u"   "_s), all());
        QCOMPARE(found(u" \t\r\n\u00A0\u2028 "_s), all());
    }

    void zoomInSpacesMatchesOnlyTheQuestions() { QCOMPARE(found(u"  zoom  "_s), QStringList{u"faq"_s}); }

    void lineBreaksAroundTheSearchTextAreIgnored()
    {
        QCOMPARE(found(u"\n\tzoom\r\n"_s), QStringList{u"faq"_s});
    }

    void settingsMatchesInAnyLetterCase()
    {
        const QStringList wanted{u"installation"_s, u"notifications"_s, u"settings"_s, u"troubleshooting"_s};
        QCOMPARE(found(u"settings"_s), wanted);
        QCOMPARE(found(u"Settings"_s), wanted);
        QCOMPARE(found(u"sETTINGS"_s), wanted);
    }

    void aWordOnlyInASectionTitleMatchesNothing()
    {
        QCOMPARE(found(u"Answers"_s), QStringList());
        QCOMPARE(found(u"First Launch"_s), QStringList());
        QCOMPARE(found(u"Teaching in Under Two Minutes"_s), QStringList());
    }

    void anAbsentWordMatchesNothing() { QCOMPARE(found(u"xylophone"_s), QStringList()); }

    void resultsAreInTheOrderOfTheTopics()
    {
        QCOMPARE(found(u"quillet"_s), (QStringList{u"welcome"_s, u"installation"_s, u"quickStart"_s,
                                                   u"troubleshooting"_s, u"faq"_s, u"contact"_s}));
    }

    void spacesWithinTheSearchTextCount()
    {
        QCOMPARE(found(u"apple calendar"_s), (QStringList{u"troubleshooting"_s, u"versionHistory"_s}));
        QCOMPARE(found(u"apple  calendar"_s), QStringList());
    }

    void aMatchMaySpanTheTitleAndTheFirstPoint()
    {
        QCOMPARE(found(u"quick start launch"_s), QStringList{u"quickStart"_s});
    }

    void patternCharactersAreLiteral()
    {
        QCOMPARE(found(u"& permissions"_s), QStringList{u"installation"_s});
        QCOMPARE(found(u".*"_s), QStringList());
        QCOMPARE(found(u"settings > privacy"_s), QStringList{u"installation"_s});
        QCOMPARE(found(u"["_s), QStringList());
    }

    void anAccentIsADifferentLetter() { QCOMPARE(found(u"zóom"_s), QStringList()); }

    void inTurkishTheCapitalIBelongsToTheDotlessOne()
    {
        const QLocale turkish(QLocale::Turkish, QLocale::Turkey);
        QCOMPARE(found(u"ın under"_s, turkish), QStringList());
        QCOMPARE(found(u"it is designed"_s, QLocale(QLocale::English)), QStringList{u"welcome"_s});
        QCOMPARE(found(u"it is designed"_s, turkish), QStringList());
        QCOMPARE(found(u"ıt is designed"_s, turkish), QStringList{u"welcome"_s});
        QCOMPARE(found(u"İt is designed"_s, turkish), QStringList());
        QCOMPARE(found(u"ZOOM"_s, turkish), QStringList{u"faq"_s});
        QCOMPARE(found(u"QUİCK START LAUNCH"_s, turkish), QStringList{u"quickStart"_s});
        QCOMPARE(found(u"QUICK START LAUNCH"_s, turkish), QStringList());
    }

    void aSearchTextOfAMillionCharactersIsHandled()
    {
        QCOMPARE(found(u"z"_s.repeated(1'000'000)), QStringList());
    }
};

QUILLET_TEST(HelpTopicTest, runTest<HelpTopicTest>);
#include "HelpTopicTest.moc"
