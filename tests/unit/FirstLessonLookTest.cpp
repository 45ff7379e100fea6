// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/FirstLessonLook.h"

#include "tests/support/FakeDirectNotifications.h"
#include "tests/support/FakeScreens.h"
#include "tests/support/FakeSystemSounds.h"
#include "tests/support/TestProgram.h"
#include "tests/support/ViewModelFixture.h"

#include <QFile>
#include <QTest>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

struct FirstLessonLookFixture : ViewModelFixture {
    explicit FirstLessonLookFixture(const char *time) : ViewModelFixture(time)
    {
        sounds.available = {FirstLessonLook::silentSound()};
        setCalendarRead(currentDate());
    }

    CalendarMonitor calendars;
    FakeScreens screens;
    FakeSystemSounds sounds;
    FakeDirectNotifications directNotifications;
    std::unique_ptr<FirstLessonLook> look = std::make_unique<FirstLessonLook>(
        FirstLessonLook::Sources{.viewModel = *model,
                                 .calendars = calendars,
                                 .screens = screens,
                                 .sounds = sounds,
                                 .center = center,
                                 .directNotifications = directNotifications},
        u"quillet.backup."_s, logger);

    void setCalendarRead(std::optional<Date> lastRead)
    {
        CalendarStatus status;
        status.identifier = u"A"_s;
        status.name = u"A"_s;
        status.condition = lastRead ? CalendarStatus::Condition::answers : CalendarStatus::Condition::silent;
        status.lastRead = lastRead;
        calendars.setCalendars({status});
    }

    /// What the check has logged, in order.
    [[nodiscard]] QStringList said() const
    {
        const QString beginning = u"before the first lesson: "_s;
        QStringList said;
        QFile file(logger.logURL().toLocalFile());
        if (!file.open(QIODevice::ReadOnly)) {
            qFatal("the log cannot be read");
        }
        for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
            if (const qsizetype place = line.indexOf(beginning); place >= 0) {
                said.append(line.sliced(place + beginning.size()));
            }
        }
        return said;
    }

    /// The notifications other than lesson backups.
    [[nodiscard]] std::vector<NotificationRequest> told() const
    {
        std::vector<NotificationRequest> told = center.requests;
        std::erase_if(
            told, [](const auto &request) { return request.identifier.startsWith(u"quillet.backup."_s); });
        return told;
    }
};

const QStringList allReady{u"all is ready"_s};

} // namespace

class FirstLessonLookTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qputenv("TZ", "UTC"); }

    void twentyMinutesBeforeTheFirstLessonReadinessIsLoggedInOneLine()
    {
        FirstLessonLookFixture f("09:00:00");
        f.start({lessonAt("10:00:00"), lessonAt("11:00:00")});
        f.clock.advanceTo(at("09:39:59"));
        QCOMPARE(f.said(), QStringList());
        f.clock.advanceTo(at("09:40:01"));
        QCOMPARE(f.said(), allReady);
        QCOMPARE(f.sounds.played, QStringList{FirstLessonLook::silentSound()});
        f.clock.advanceTo(at("12:00:00"));
        QCOMPARE(f.said(), allReady);
        QVERIFY(f.told().empty());
    }

    void aLaterStartChecksAtOnce()
    {
        FirstLessonLookFixture f("09:58:00");
        f.start({lessonAt("10:00:00")});
        QCOMPARE(f.said(), allReady);
    }

    void afterTheFirstLessonHasBegunItDoesNotCheck()
    {
        FirstLessonLookFixture f("10:01:00");
        f.start({lessonAt("10:00:00"), lessonAt("11:00:00")});
        f.clock.advanceTo(at("12:00:00"));
        QCOMPARE(f.said(), QStringList());
    }

    void theNextDayItChecksAgain()
    {
        FirstLessonLookFixture f("09:50:00");
        f.start({lessonAt("10:00:00")});
        f.store.answer = std::vector{sampleLesson(u"Anna"_s, at("10:00:00") + minutes(1440), minutes(25))};
        f.clock.advance(Seconds{120});
        f.setCalendarRead(at("09:00:00") + minutes(1440));
        f.clock.advanceTo(at("10:00:00") + minutes(1440));
        QCOMPARE(f.said(), allReady + allReady);
    }

    void whatIsMissingIsReportedOnceAndQuietly_data()
    {
        using Break = void (*)(FirstLessonLookFixture &);
        QTest::addColumn<Break>("breakIt");
        QTest::addColumn<QString>("problem");
        const auto row = [](const char *name, Break breakIt) {
            QTest::newRow(name) << breakIt << QString::fromLatin1(name);
        };
        row("calendars=1", [](FirstLessonLookFixture &f) { f.setCalendarRead(std::nullopt); });
        row("screen", [](FirstLessonLookFixture &f) { f.screens.allScreens.clear(); });
        row("screen", [](FirstLessonLookFixture &f) { f.screens.allScreens.front().name.clear(); });
        row("sound", [](FirstLessonLookFixture &f) { f.sounds.available.clear(); });
        row("backups", [](FirstLessonLookFixture &f) { f.center.requests.clear(); });
        row("backups", [](FirstLessonLookFixture &f) { f.center.pendingFailure = Failure{u"no agent"_s}; });
    }

    void whatIsMissingIsReportedOnceAndQuietly()
    {
        using Break = void (*)(FirstLessonLookFixture &);
        QFETCH(Break, breakIt);
        QFETCH(QString, problem);
        FirstLessonLookFixture f("09:39:00");
        f.start({lessonAt("10:00:00")});
        breakIt(f);
        f.clock.advanceTo(at("09:40:29"));
        QCOMPARE(f.said(), QStringList());
        f.clock.advanceTo(at("09:40:31"));
        QCOMPARE(f.said(), (QStringList{u"missing "_s + problem, u"told"_s}));
        QCOMPARE(f.told().size(), std::size_t{1});
        const NotificationRequest request = f.told().front();
        QVERIFY(request.isQuiet);
        // One to two seconds from now, on a whole second; valid for a quarter of an hour.
        QCOMPARE(request.fireDate, at("09:40:32"));
        QCOMPARE(request.expirationDate, at("09:55:32"));
        QCOMPARE(request.identifier, u"quillet.look."_s + QString::number(static_cast<qint64>(
                                                              secondsSince1970(request.fireDate))));
        QCOMPARE(request.categoryIdentifier, u"quillet.look"_s);
        QCOMPARE(request.title, u"Please check before your first lesson"_s);
        QVERIFY(!request.body.isEmpty());
        QCOMPARE(f.directNotifications.shown, QStringList());
        f.clock.advanceTo(at("10:30:00"));
        QCOMPARE(f.told().size(), std::size_t{1});
    }

    void whatIsFixedInTimeIsNotReported()
    {
        FirstLessonLookFixture f("09:50:00");
        f.setCalendarRead(std::nullopt);
        f.sounds.available.clear();
        f.start({lessonAt("10:00:00")});
        f.clock.advance(Seconds{20});
        f.setCalendarRead(currentDate());
        f.sounds.available = {FirstLessonLook::silentSound()};
        f.clock.advance(Seconds{20});
        QCOMPARE(f.said(), allReady);
        QVERIFY(f.told().empty());
    }

    void withoutNotificationsOnlyTheLogReports()
    {
        FirstLessonLookFixture f("09:50:00");
        f.center.authorization = false;
        f.start({lessonAt("10:00:00")});
        f.clock.advance(Seconds{40});
        QCOMPARE(f.said(), (QStringList{u"missing notifications"_s,
                                        u"not reported, no service shows notifications"_s}));
        QVERIFY(f.told().empty());
        // The agent is not started needlessly, either.
        QVERIFY(!f.center.calls.contains(u"pending"_s));
    }

    void withoutTheAgentItIsReportedDirectly()
    {
        FirstLessonLookFixture f("09:39:00");
        f.start({lessonAt("10:00:00")});
        f.center.requests.clear();
        f.center.addFailure = Failure{u"no agent"_s};
        f.clock.advanceTo(at("09:41:00"));
        QCOMPARE(f.said(), (QStringList{u"missing backups"_s, u"told"_s}));
        QCOMPARE(f.directNotifications.shown,
                 QStringList{readiness::title() + u": "_s +
                             readiness::body(Readiness{.hasBackups = false}, currentDate(), QLocale())});
    }

    void anUndeliverableNoticeIsLogged()
    {
        FirstLessonLookFixture f("09:39:00");
        f.start({lessonAt("10:00:00")});
        f.center.requests.clear();
        f.center.addFailure = Failure{u"no agent"_s};
        f.directNotifications.isThere = false;
        f.clock.advanceTo(at("09:41:00"));
        QCOMPARE(f.said(), (QStringList{u"missing backups"_s, u"not told error=no agent"_s}));
    }

    void destroyingItEndsTheCheck()
    {
        FirstLessonLookFixture f("09:50:00");
        f.sounds.hold();
        f.start({lessonAt("10:00:00")});
        f.look.reset();
        f.sounds.release();
        f.clock.advance(Seconds{60});
        QCOMPARE(f.said(), QStringList());
    }
};

QUILLET_TEST(FirstLessonLookTest, runTest<FirstLessonLookTest>);
#include "FirstLessonLookTest.moc"
