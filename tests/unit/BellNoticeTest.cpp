// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/BellNotice.h"

#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class BellNoticeTest final : public QObject {
    Q_OBJECT

private:
    static QString notice(LessonState state, const char *now, const QString &gaps = {})
    {
        const Lesson lesson = sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25));
        TeachingAction action = TeachingAction::idle(at(now), std::nullopt);
        action.state = state;
        (state == LessonState::scheduled ? action.nextLesson : action.lesson) = lesson;
        return bellNotice(action, gaps, QLocale(QLocale::German));
    }

private Q_SLOTS:
    void withTheStudentInTheTitleItGivesTheState()
    {
        QCOMPARE(notice(LessonState::scheduled, "09:00:00"), u"Next lesson, Zoom, 10:00"_s);
        QCOMPARE(notice(LessonState::teaching, "10:01:00"), u"In progress, Zoom, until 10:25"_s);
    }

    void withTheStateInTheTitleItNamesTheStudent()
    {
        for (const LessonState state : {LessonState::prepare, LessonState::oneMinuteWarning,
                                        LessonState::joinPlatform, LessonState::startNow}) {
            QCOMPARE(notice(state, "09:59:00"), u"Anna, Zoom, 10:00"_s);
        }
        for (const LessonState state : {LessonState::wrapUp, LessonState::feedback, LessonState::completed}) {
            QCOMPARE(notice(state, "10:20:00"), u"Anna, Zoom, until 10:25"_s);
        }
    }

    void fromTheStartOnItGivesTheEndTime()
    {
        QCOMPARE(notice(LessonState::startNow, "09:59:59"), u"Anna, Zoom, 10:00"_s);
        QCOMPARE(notice(LessonState::startNow, "10:00:00"), u"Anna, Zoom, until 10:25"_s);
    }

    void gapsComeLast()
    {
        QCOMPARE(notice(LessonState::prepare, "09:57:00", u"No answer from “A”"_s),
                 u"Anna, Zoom, 10:00. No answer from “A”"_s);
        const TeachingAction idle = TeachingAction::idle(at("09:00:00"), std::nullopt);
        QCOMPARE(bellNotice(idle, u"No answer from “A”"_s, QLocale()), u"No answer from “A”"_s);
        QCOMPARE(bellNotice(idle, {}, QLocale()), QString());
    }
};

QUILLET_TEST(BellNoticeTest, runTest<BellNoticeTest>);
#include "BellNoticeTest.moc"
