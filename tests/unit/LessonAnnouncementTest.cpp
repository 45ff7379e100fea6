// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/TestProgram.h"
#include "tests/support/ViewModelFixture.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// What an alert is about, and when it counts as already raised.
class LessonAnnouncementTest : public QObject {
    Q_OBJECT

    static Lesson lesson(const QString &student, const char *start, double length,
                         TeachingPlatform platform = TeachingPlatform::zoom)
    {
        return sampleLesson(student, at(start), minutes(length), platform);
    }

    /// Each alert's time and message, as "10:24:00 Finish up Anna".
    static QStringList alerts(const ViewModelFixture &f)
    {
        QStringList alerts;
        for (const auto &presented : f.presenter.presented) {
            alerts.append(descriptionText(presented.moment).sliced(11, 8) + u' ' + presented.action.message);
        }
        return alerts;
    }

    /// The alerts raised by a reload, in the same phase, that replaces Anna's lesson with `changed`.
    static QStringList alertsAfterAChangeTo(const Lesson &changed)
    {
        ViewModelFixture f("09:59:30");
        f.start({lesson(u"Anna"_s, "10:00:00", 25)});
        f.store.answer = std::vector{changed};
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{0});
        return alerts(f).sliced(1);
    }

private Q_SLOTS:
    void theSameLessonWithANewIdentifierIsNotAnnouncedAgain()
    {
        QCOMPARE(alertsAfterAChangeTo(lesson(u"Anna"_s, "10:00:00", 25)), QStringList());
    }

    void anotherPlatformIsAnnouncedAgain()
    {
        QCOMPARE(alertsAfterAChangeTo(lesson(u"Anna"_s, "10:00:00", 25, TeachingPlatform::googleMeet)),
                 QStringList{u"09:59:30 Join Google Meet now"_s});
    }

    void anotherStudentIsAnnouncedAgain()
    {
        QCOMPARE(alertsAfterAChangeTo(lesson(u"Ben"_s, "10:00:00", 25)),
                 QStringList{u"09:59:30 Join Zoom now"_s});
    }

    void aTestNotificationUsesTheFirstLessonAndTheCurrentTime()
    {
        ViewModelFixture f("09:30:00");
        const Lesson ben = lesson(u"Ben"_s, "10:00:00", 25, TeachingPlatform::onlineLesson);
        f.start({ben, lesson(u"Cleo"_s, "11:00:00", 25)});
        f.model->testNotification();
        QCOMPARE(f.presenter.presented.size(), std::size_t{1});
        QVERIFY(f.presenter.presented.back().action ==
                (TeachingAction{.state = LessonState::joinPlatform,
                                .lesson = ben,
                                .nextLesson = ben,
                                .message = u"Join Ben now"_s,
                                .priority = TeachingActionPriority::urgent,
                                .effectiveDate = at("09:30:00"),
                                .nextTransitionDate = std::nullopt}));
    }

    void eachOverlappingLessonIsWrappedUp()
    {
        ViewModelFixture f("10:15:00");
        f.start({lesson(u"Anna"_s, "10:00:00", 25), lesson(u"Ben"_s, "10:10:00", 25),
                 lesson(u"Cleo"_s, "11:00:00", 25)});
        f.clock.advance(minutes(30));
        QCOMPARE(alerts(f), (QStringList{u"10:24:00 Finish up Anna"_s, u"10:34:00 Finish up Ben"_s}));
    }

    void aWrapUpRightAfterAnotherIsAnnounced()
    {
        ViewModelFixture f("10:15:00");
        f.start({lesson(u"Anna"_s, "10:00:00", 25), lesson(u"Ben"_s, "10:10:00", 15.5)});
        f.clock.advance(minutes(30));
        QCOMPARE(alerts(f), (QStringList{u"10:24:00 Finish up Anna"_s, u"10:25:00 Finish up Ben"_s}));
    }
};

QUILLET_TEST(LessonAnnouncementTest, runTest<LessonAnnouncementTest>);
#include "LessonAnnouncementTest.moc"
