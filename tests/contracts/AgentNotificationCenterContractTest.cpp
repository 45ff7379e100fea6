// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include <gio/gio.h>

#include "Corvane/Platform/Linux/Freedesktop/AgentNotificationCenter.h"

#include "Corvane/Notifications/SystemNotificationScheduler.h"
#include "tests/agent/AgentRoom.h"
#include "tests/agent/RecordingServer.h"
#include "tests/contracts/UserNotificationCenterContract.h"
#include "tests/support/EventLoopWatch.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The adapter on a private bus with the real agent and a recording notification server.
class AgentNotificationCenterContractTest final : public UserNotificationCenterContract {
    Q_OBJECT

protected:
    UserNotificationCenter &center() override { return *m_center; }

    void passUntil(Date moment) override { QTRY_VERIFY_WITH_TIMEOUT(currentDate() >= moment, 10000); }

    // The per-application switch in GNOME's settings.
    void setGranted(bool isGranted) override
    {
        GSettings *settings = g_settings_new_with_path(
            "org.gnome.desktop.notifications.application",
            "/org/gnome/desktop/notifications/application/com-ordwinsoftware-quillet/");
        QVERIFY(g_settings_set_boolean(settings, "enable", isGranted ? TRUE : FALSE));
        g_object_unref(settings);
    }

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<AgentRoom>(AgentRoom::Start::byBus);
        m_server = std::make_unique<RecordingServer>(m_room->bus().address(), QStringList{u"sound"_s});
        m_center = std::make_unique<AgentNotificationCenter>(m_room->connection());
    }

    void cleanup()
    {
        m_center.reset();
        m_server.reset();
        m_room.reset();
    }

    void aRequestIsShownOnceAtItsTimeWithItsText()
    {
        const Date due = dateSince1970(std::ceil(secondsSince1970(currentDate())) + 1);
        QVERIFY(QCoro::waitFor(center().add({.identifier = u"quillet.backup.join.1.王"_s,
                                             .title = u"Quillet: join now"_s,
                                             .body = u"Join 王 & <b>Ben</b> now."_s,
                                             .categoryIdentifier = u"quillet.lesson"_s,
                                             .fireDate = due,
                                             .expirationDate = due + Seconds{30}}))
                    .has_value());
        passUntil(due + Seconds{1});
        QCOMPARE(m_server->shown.size(), std::size_t{1});
        QCOMPARE(m_server->shown[0].summary, u"Quillet: join now"_s);
        QCOMPARE(m_server->shown[0].body, u"Join 王 & <b>Ben</b> now."_s);
        QCOMPARE(m_server->shown[0].hints.value(u"category"_s).toString(), u"quillet.lesson"_s);
        const double late = static_cast<double>(m_server->shown[0].arrival) / 1000.0 - secondsSince1970(due);
        qInfo("shown %.3f s after its second began", late);
        QVERIFY2(late >= 0 && late < 1, qPrintable(QString::number(late)));
    }

    void aRequestThatOutlivesItsCentreIsShown()
    {
        const Date due = dateSince1970(std::ceil(secondsSince1970(currentDate())) + 1);
        QVERIFY(QCoro::waitFor(center().add({.identifier = u"a"_s,
                                             .title = u"later"_s,
                                             .body = {},
                                             .categoryIdentifier = {},
                                             .fireDate = due,
                                             .expirationDate = due + Seconds{30}}))
                    .has_value());
        m_center.reset();
        QTRY_COMPARE_WITH_TIMEOUT(m_server->shownWith(u"later"_s), 1, 5000);
    }

    void aFullDayIsReplacedWithoutBlockingTheProgram()
    {
        const QTemporaryDir library;
        DebugLogService logger(library.path());
        SystemNotificationScheduler scheduler(*m_center, logger, u"quillet.backup."_s);
        std::vector<Lesson> day;
        const Date first = dateSince1970(std::ceil(secondsSince1970(currentDate()))) + minutes(60);
        day.reserve(30);
        for (int number = 0; number < 30; ++number) {
            day.push_back(
                sampleLesson(u"Student %1"_s.arg(number), first + minutes(30 * number), minutes(25)));
        }
        EventLoopWatch watch;
        QElapsedTimer timer;
        timer.start();
        QCoro::waitFor(scheduler.scheduleBackupNotifications(day));
        const auto added = timer.restart();
        for (Lesson &lesson : day) {
            lesson.startTime += minutes(5);
        }
        QCoro::waitFor(scheduler.scheduleBackupNotifications(day));
        const auto replaced = timer.elapsed();
        qInfo("150 requests added in %lld ms, replaced in %lld ms, longest gap of the event loop %.0f ms",
              added, replaced, watch.longestGap() * 1e3);
        QCOMPARE(logger.latestLines().size(), 2);
        QVERIFY2(logger.latestLines().last().endsWith(u"scheduled system backup notifications lessons=30"_s),
                 qPrintable(logger.latestLines().last()));
        const auto pending = QCoro::waitFor(m_center->pendingNotificationRequests());
        QVERIFY(pending.has_value());
        QCOMPARE(pending->size(), 150);
        QVERIFY2(watch.turns() >= 5, qPrintable(QString::number(watch.turns())));
    }

private:
    std::unique_ptr<AgentRoom> m_room;
    std::unique_ptr<RecordingServer> m_server;
    std::unique_ptr<AgentNotificationCenter> m_center;
};

QUILLET_TEST(AgentNotificationCenterContractTest, runTest<AgentNotificationCenterContractTest>);
#include "AgentNotificationCenterContractTest.moc"
