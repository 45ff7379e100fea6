// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/LessonSteps.h"

#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 start = 1'800'000'000;

PendingRequest step(const QString &kind, qint64 fireDate, const QString &lesson = u"1800000000.Anna"_s,
                    qint64 expirationDate = start)
{
    return {
        u"quillet.backup."_s + kind + u'.' + lesson, {}, {}, u"quillet.lesson"_s, fireDate, expirationDate};
}

// The five steps of a 25-minute lesson.
std::vector<PendingRequest> lessonOfAnna()
{
    return {step(u"prepare"_s, start - 240), step(u"one-minute"_s, start - 60), step(u"join"_s, start - 30),
            step(u"start"_s, start - 20),
            step(u"finish"_s, start + 1440, u"1800000000.Anna"_s, start + 1500)};
}

QStringList kinds(const QStringList &identifiers)
{
    QStringList kinds;
    for (const QString &identifier : identifiers) {
        kinds.append(identifier.section(u'.', 2, 2));
    }
    return kinds;
}

} // namespace

class LessonStepsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLessonIsIdentifiedByItsStartAndStudent_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("lesson");
        const QString longName(200, u'x');
        const QString digest(64, u'a');
        QTest::newRow("a step") << u"quillet.backup.one-minute.1800000000.Anna"_s << u"1800000000.Anna"_s;
        QTest::newRow("a step of one letter")
            << u"quillet.backup.j.1800000000.Anna"_s << u"1800000000.Anna"_s;
        QTest::newRow("dots in a name")
            << u"quillet.backup.join.1800000000.Anna. B. C"_s << u"1800000000.Anna. B. C"_s;
        QTest::newRow("no name") << u"quillet.backup.join.1800000000."_s << u"1800000000."_s;
        QTest::newRow("before 1970") << u"quillet.backup.join.-60.Anna"_s << u"-60.Anna"_s;
        // A name too long for an identifier is cut and followed by a digest that tells the steps apart.
        QTest::newRow("a cut name") << u"quillet.backup.join.1800000000."_s + longName + u'…' + digest
                                    << u"1800000000."_s + longName;
        QTest::newRow("an ellipsis in a name")
            << u"quillet.backup.join.1800000000.Anna…"_s << u"1800000000.Anna…"_s;
        QTest::newRow("no start") << u"quillet.backup.join.soon.Anna"_s << QString();
        QTest::newRow("no step") << u"quillet.backup..1800000000.Anna"_s << QString();
        QTest::newRow("something else") << u"quillet.calendar-gap.1800000000"_s << QString();
        QTest::newRow("cut short") << u"quillet.backup.join.1800000000"_s << QString();
        QTest::newRow("nothing") << QString() << QString();
    }

    void aLessonIsIdentifiedByItsStartAndStudent()
    {
        QFETCH(const QString, identifier);
        QFETCH(const QString, lesson);
        QCOMPARE(lessonOfStep(identifier), lesson.isEmpty() ? std::nullopt : std::optional(lesson));
    }

    void inTimeEachStepIsTheNewest()
    {
        for (const PendingRequest &request : lessonOfAnna()) {
            QCOMPARE(outdatedSteps({request}, request.fireDate), QStringList());
        }
        QCOMPARE(outdatedSteps(lessonOfAnna(), start - 240), QStringList());
    }

    void ofSeveralDueStepsOnlyTheNewestIsKept()
    {
        QCOMPARE(kinds(outdatedSteps(lessonOfAnna(), start - 25)),
                 (QStringList{u"prepare"_s, u"one-minute"_s}));
        QCOMPARE(kinds(outdatedSteps(lessonOfAnna(), start - 10)),
                 (QStringList{u"prepare"_s, u"one-minute"_s, u"join"_s}));
    }

    void anExpiredStepOutdatesNoOther()
    {
        const std::vector requests{step(u"prepare"_s, start - 240),
                                   step(u"join"_s, start - 30, u"1800000000.Anna"_s, start - 20)};
        QCOMPARE(kinds(outdatedSteps(requests, start - 25)), QStringList{u"prepare"_s});
        QCOMPARE(outdatedSteps(requests, start - 20), QStringList());
    }

    void stepsOfDifferentLessonsAreIndependent()
    {
        const std::vector requests{step(u"finish"_s, start - 60),
                                   step(u"start"_s, start - 20, u"1800000000.Ben"_s),
                                   step(u"start"_s, start - 20, u"1800000060.Anna"_s)};
        QCOMPARE(outdatedSteps(requests, start - 10), QStringList());
    }

    void stepsDueInTheSameSecondAreAllKept()
    {
        const std::vector requests{step(u"one-minute"_s, start - 60), step(u"join"_s, start - 60)};
        QCOMPARE(outdatedSteps(requests, start - 60), QStringList());
    }

    void otherNotificationsAreKept()
    {
        std::vector requests{step(u"prepare"_s, start - 240), step(u"join"_s, start - 30)};
        requests.front().identifier = u"quillet.calendar-gap.1"_s;
        requests.back().identifier = u"quillet.calendar-gap.2"_s;
        QCOMPARE(outdatedSteps(requests, start), QStringList());
    }
};

QUILLET_TEST(LessonStepsTest, runTest<LessonStepsTest>);
#include "LessonStepsTest.moc"
