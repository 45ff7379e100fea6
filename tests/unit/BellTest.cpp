// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/Bell.h"

#include "tests/support/FakeStatusItem.h"
#include "tests/support/TestProgram.h"
#include "tests/support/ViewModelFixture.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

struct BellFixture : ViewModelFixture {
    using ViewModelFixture::ViewModelFixture;

    FakeStatusItem item;
    Bell bell{*model, item};

    /// Loads the lesson again, as each minute does, with a new identifier.
    void reload(const QString &student = u"Anna"_s)
    {
        store.answer = std::vector{sampleLesson(student, at("10:00:00"), minutes(25))};
        spawn(model->reloadLessons());
        clock.advance(Seconds{0});
    }
};

} // namespace

class BellTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theItemIsToldAtOnce()
    {
        const BellFixture f("09:00:00");
        QCOMPARE(f.item.asked, QStringList{u"Quillet"_s});
        QCOMPARE(f.item.askedNotices, QStringList{QString()});
    }

    void whileNothingChangesTheItemIsToldNothing()
    {
        BellFixture f("09:00:00");
        f.start({sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))});
        QCOMPARE(f.item.asked, (QStringList{u"Quillet"_s, u"Anna"_s}));
        f.reload();
        f.clock.advance(minutes(50));
        f.bell.setGaps({});
        QCOMPARE(f.item.asked, (QStringList{u"Quillet"_s, u"Anna"_s}));
        QCOMPARE(f.item.askedNotices.size(), 2);
    }

    void everyStateAndTheBeginningAreTold()
    {
        BellFixture f("09:55:00");
        f.start({sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))});
        f.item.asked.clear();
        f.item.askedNotices.clear();
        f.clock.advanceTo(at("10:26:00"));
        QCOMPARE(f.item.asked, (QStringList{u"Prepare"_s, u"1 min"_s, u"Join now"_s, u"Start now"_s,
                                            u"Start now"_s, u"Anna"_s, u"Wrap up"_s, u"Quillet"_s}));
        QVERIFY(!f.item.askedNotices.at(3).contains(u"until"_s));
        QVERIFY(f.item.askedNotices.at(4).contains(u"until"_s));
    }

    void anotherLessonIsTold()
    {
        BellFixture f("09:00:00");
        f.start({sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25))});
        f.reload(u"Ben"_s);
        QCOMPARE(f.item.asked.constLast(), u"Ben"_s);
        f.store.answer =
            std::vector{sampleLesson(u"Ben"_s, at("11:00:00"), minutes(25), TeachingPlatform::onlineLesson)};
        spawn(f.model->reloadLessons());
        f.clock.advance(Seconds{0});
        QVERIFY(f.item.notice.startsWith(u"Next lesson, Online Lesson, "_s));
    }

    void gapsAreToldWhenTheyChange()
    {
        BellFixture f("09:00:00");
        f.start({});
        f.bell.setGaps(u"No answer from “A”"_s);
        QCOMPARE(f.item.notice, u"No answer from “A”"_s);
        f.bell.setGaps({});
        QCOMPARE(f.item.notice, QString());
    }
};

QUILLET_TEST(BellTest, runTest<BellTest>);
#include "BellTest.moc"
