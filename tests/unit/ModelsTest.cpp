// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Models/LessonState.h"
#include "Corvane/Models/TeachingAction.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class ModelsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLessonIsInProgressFromItsStartToBeforeItsEnd()
    {
        const Lesson lesson = sampleLesson(u"Anna"_s, at("10:00:00"), minutes(30));
        QVERIFY(!lesson.isInProgress(at("09:59:59.999")));
        QVERIFY(lesson.isInProgress(at("10:00:00")));
        QVERIFY(lesson.isInProgress(at("10:29:59.999")));
        QVERIFY(!lesson.isInProgress(at("10:30:00")));
    }

    void aLessonIsUpcomingOnlyBeforeItsStart()
    {
        const Lesson lesson = sampleLesson(u"Anna"_s, at("10:00:00"), minutes(30));
        QVERIFY(lesson.isUpcoming(at("09:59:59.999")));
        QVERIFY(!lesson.isUpcoming(at("10:00:00")));
    }

    void aLessonOfZeroDurationIsNeverInProgress()
    {
        const Lesson lesson = sampleLesson(u"Anna"_s, at("10:00:00"), Seconds{0});
        QVERIFY(!lesson.isInProgress(at("10:00:00")));
        QVERIFY(!lesson.isInProgress(at("09:59:59")));
        QVERIFY(!lesson.isInProgress(at("10:00:01")));
    }

    void lessonsAreEqualOnlyInAllTheirFields()
    {
        const Lesson lesson = sampleLesson(u"Anna"_s, at("10:00:00"), minutes(30));
        QVERIFY(lesson == Lesson(lesson));
        const auto differs = [&lesson](auto change) {
            Lesson other = lesson;
            change(other);
            return !(other == lesson);
        };
        QVERIFY(differs([](Lesson &other) { other.id = QUuid::createUuid(); }));
        QVERIFY(differs([](Lesson &other) { other.studentName = u"anna"_s; }));
        QVERIFY(differs([](Lesson &other) { other.platform = TeachingPlatform::lingoAce; }));
        QVERIFY(differs([](Lesson &other) { other.startTime += Seconds{0.001}; }));
        QVERIFY(differs([](Lesson &other) { other.duration += Seconds{0.001}; }));
        QVERIFY(differs([](Lesson &other) { other.profile.id = QUuid::createUuid(); }));
        QVERIFY(differs([](Lesson &other) { other.profile.joinEarlyTime = Seconds{31}; }));
    }

    void lessonsThatStartTogetherAreOrderedByNameThenPlatform()
    {
        const Date start = at("10:00:00");
        const Lesson anna = sampleLesson(u"Anna"_s, start, minutes(30));
        const Lesson ben = sampleLesson(u"Ben"_s, start, minutes(30));
        const Lesson annaOnTeams =
            sampleLesson(u"Anna"_s, start, minutes(30), TeachingPlatform::microsoftTeams);
        QVERIFY(precedes(anna, ben));
        QVERIFY(!precedes(ben, anna));
        QVERIFY(precedes(annaOnTeams, anna));
        QVERIFY(!precedes(anna, annaOnTeams));
        QVERIFY(!precedes(anna, anna));
        QVERIFY(precedes(ben, sampleLesson(u"Anna"_s, start + Seconds{0.5}, minutes(30))));
    }

    void aStateIsMadeOnlyFromItsExactName()
    {
        QCOMPARE(lessonState(u"oneMinuteWarning"_s), LessonState::oneMinuteWarning);
        QVERIFY(!lessonState(u"OneMinuteWarning"_s));
        QVERIFY(!lessonState(QString()));
    }

    void eachStateReadsBackFromItsName()
    {
        const QStringList names{u"scheduled"_s,        u"wrapUp"_s,       u"prepare"_s,
                                u"oneMinuteWarning"_s, u"joinPlatform"_s, u"startNow"_s,
                                u"teaching"_s,         u"feedback"_s,     u"completed"_s};
        QStringList found;
        for (const LessonState state : allLessonStates) {
            found.append(rawValue(state));
            QCOMPARE(lessonState(rawValue(state)), state);
        }
        QCOMPARE(found, names);
    }

    void microsoftTeamsIsEncodedByNameAndDecodesBack()
    {
        QCOMPARE(encode(TeachingPlatform::microsoftTeams), QJsonValue(u"Microsoft Teams"_s));
        QCOMPARE(decodeTeachingPlatform(u"Microsoft Teams"_s).value(), TeachingPlatform::microsoftTeams);
    }

    void decodingAnUnknownPlatformFails()
    {
        QVERIFY(!decodeTeachingPlatform(u"microsoft teams"_s));
        QVERIFY(!decodeTeachingPlatform(3));
        QVERIFY(!decodeTeachingPlatform(QJsonValue()));
    }

    void platformsAreNamedAndOrdered()
    {
        QStringList names;
        for (const TeachingPlatform platform : allTeachingPlatforms) {
            names.append(id(platform));
        }
        QCOMPARE(names, (QStringList{u"Online Lesson"_s, u"LingoAce"_s, u"Microsoft Teams"_s, u"Zoom"_s,
                                     u"Google Meet"_s}));
    }

    void eachPlatformHasOneStableDefaultProfile()
    {
        const auto first = PlatformProfile::defaults();
        const auto second = PlatformProfile::defaults();
        QCOMPARE(first.size(), std::size_t{5});
        for (const TeachingPlatform platform : allTeachingPlatforms) {
            const PlatformProfile &profile = first.at(platform);
            QCOMPARE(profile.platform, platform);
            QCOMPARE(profile.id, second.at(platform).id);
            QCOMPARE(profile.joinEarlyTime,
                     Seconds{platform == TeachingPlatform::microsoftTeams ? 60.0 : 30.0});
            QCOMPARE(profile.wrapUpLeadTime, Seconds{360});
            QCOMPARE(profile.finishUpLeadTime, Seconds{60});
            QCOMPARE(profile.preparationLeadTime, Seconds{240});
        }
    }

    void idleWithoutANextLessonSaysSo()
    {
        const auto action = TeachingAction::idle(at("09:00:00"), std::nullopt);
        QCOMPARE(action.state, LessonState::scheduled);
        QCOMPARE(action.message, u"No lessons remaining"_s);
        QCOMPARE(action.priority, TeachingActionPriority::calm);
        QVERIFY(!action.lesson && !action.nextLesson && !action.nextTransitionDate);
        QCOMPARE(action.effectiveDate, at("09:00:00"));
    }

    void idleNamesTheNextLessonAndChangesSixMinutesBeforeIt()
    {
        const Lesson anna = sampleLesson(u"Anna"_s, at("10:00:00"), minutes(30));
        const auto action = TeachingAction::idle(at("09:00:00"), anna);
        QCOMPARE(action.message, u"Next: Anna"_s);
        QVERIFY(!action.lesson);
        QVERIFY(action.nextLesson == anna);
        QVERIFY(action.nextTransitionDate == at("09:54:00"));
    }

    void theIdleTransitionMayBeInThePast()
    {
        const Lesson anna = sampleLesson(u"Anna"_s, at("10:00:00"), minutes(30));
        const auto action = TeachingAction::idle(at("09:55:00"), anna);
        QVERIFY(action.nextTransitionDate == at("09:54:00"));
        QVERIFY(*action.nextTransitionDate < action.effectiveDate);
    }

    void idleActionsOfDifferentTimesAreNotEqual()
    {
        const Lesson anna = sampleLesson(u"Anna"_s, at("10:00:00"), minutes(30));
        const auto action = TeachingAction::idle(at("09:00:00"), anna);
        QVERIFY(!(action == TeachingAction::idle(at("09:00:01"), anna)));
        QVERIFY(action == TeachingAction::idle(at("09:00:00"), anna));
    }
};

QUILLET_TEST(ModelsTest, runTest<ModelsTest>);
#include "ModelsTest.moc"
