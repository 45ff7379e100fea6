// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarServiceFixture.h"
#include "tests/support/TestProgram.h"

#include <QFile>
#include <QTest>

#include <csignal>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Series whose rule the service could not read, so that it lists them as single events.
class LostRulesTest final : public CalendarServiceFixture {
    Q_OBJECT

    /// Weekly lessons that began four weeks before testDay().
    static QByteArray series(const QByteArray &title, const QByteArray &rule)
    {
        return "BEGIN:VEVENT\nUID:" + QByteArray(title).replace(' ', '-') +
               "\nDTSTAMP:20250101T000000Z\nDTSTART:20250416T130000Z\nDTEND:20250416T133000Z\nRRULE:" + rule +
               "\nSUMMARY:" + title + "\nEND:VEVENT\n";
    }

    static void write(const QByteArray &components)
    {
        CalendarService::addCalendar(u"second"_s, u"Lessons"_s, calendarText(components));
    }

    [[nodiscard]] QByteArray memory() const
    {
        QByteArray text;
        for (const QString &name : m_room->memoryFiles()) {
            QFile file(m_room->memoryFolder() + u'/' + name);
            text += file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        }
        return text;
    }

    static constexpr int patience = 30000;

private Q_SLOTS:
    void aSeriesThatTheServiceListsOnceIsReadOnItsOtherDays()
    {
        write(lesson("Zoom - Cleo") + series("Zoom - Dora", "FREQ=WEEKLY;X-SOURCE=app;BYDAY=WE"));
        QTRY_VERIFY_WITH_TIMEOUT(load().contains(u"Zoom - Dora"_s), patience);
        QCOMPARE(load(-28).filter(u"Dora"_s).size(), 1);
        QVERIFY(!load(1).contains(u"Zoom - Dora"_s));
    }

    void aSeriesThatIsRemovedDisappears()
    {
        write(lesson("Zoom - Cleo") + series("Zoom - Dora", "FREQ=WEEKLY;X-SOURCE=app"));
        QTRY_VERIFY_WITH_TIMEOUT(load().contains(u"Zoom - Dora"_s), patience);
        write(lesson("Zoom - Cleo"));
        QTRY_VERIFY_WITH_TIMEOUT(!load().contains(u"Zoom - Dora"_s), patience);
    }

    void aSeriesThatChangesIsReadAnew()
    {
        write(lesson("Zoom - Cleo") + series("Zoom - Dora", "FREQ=WEEKLY;X-SOURCE=app"));
        QTRY_VERIFY_WITH_TIMEOUT(load().contains(u"Zoom - Dora"_s), patience);
        write(lesson("Zoom - Cleo") + series("Zoom - Dora", "FREQ=WEEKLY;COUNT=2;X-SOURCE=app"));
        QTRY_VERIFY_WITH_TIMEOUT(!load().contains(u"Zoom - Dora"_s), patience);
        write(lesson("Zoom - Cleo") + series("Zoom - Dora", "FREQ=WEEKLY"));
        QTRY_COMPARE_WITH_TIMEOUT(load().filter(u"Dora"_s).size(), 1, patience);
    }

    void aRuleThatNobodyCanReadIsLoggedWithItsTitle()
    {
        write(lesson("Zoom - Cleo") + series("Zoom - Edgar", "FREQ=SOMETIMES"));
        QTRY_VERIFY_WITH_TIMEOUT((static_cast<void>(load()), logged(u"Zoom - Edgar"_s) > 0), patience);
        QVERIFY(!load().contains(u"Zoom - Edgar"_s));
        QCOMPARE(logged(u"Zoom - Edgar"_s), 1);
        QCOMPARE(logged(u"its RRULE cannot be read"_s), 1);
    }

    void aServiceThatDiesDoesNotHideSuchASeries()
    {
        write(lesson("Zoom - Cleo") + series("Zoom - Dora", "FREQ=WEEKLY;X-SOURCE=app"));
        QTRY_VERIFY_WITH_TIMEOUT(load().contains(u"Zoom - Dora"_s), patience);
        m_service->kill(CalendarService::Part::factory);
        wishForNews();
        QVERIFY(load().contains(u"Zoom - Dora"_s));
        QVERIFY(logged(u"calendar opened again"_s) > 0);
    }

    void aChangedInstanceOfSuchASeriesReplacesIt()
    {
        write(lesson("Zoom - Cleo") + series("Zoom - Dora", "FREQ=WEEKLY;X-SOURCE=app") +
              "BEGIN:VEVENT\nUID:Zoom---Dora\nDTSTAMP:20250101T000000Z\nRECURRENCE-ID:20250514T130000Z\n"
              "DTSTART:20250514T150000Z\nDTEND:20250514T153000Z\nSUMMARY:Zoom - Dora moved\nEND:VEVENT\n");
        QTRY_VERIFY_WITH_TIMEOUT(load(7).contains(u"Zoom - Dora"_s), patience);
        QTRY_COMPARE_WITH_TIMEOUT(load().filter(u"Dora"_s), QStringList{u"Zoom - Dora moved"_s}, patience);
    }

    void theMemoryKnowsSuchASeries()
    {
        write(lesson("Zoom - Cleo") + series("Zoom - Dora", "FREQ=WEEKLY;X-SOURCE=app"));
        QTRY_VERIFY_WITH_TIMEOUT((static_cast<void>(load()), memory().contains("Zoom - Dora")), patience);
        m_room->stop();
        m_service->signal(CalendarService::Part::factory, SIGSTOP);
        m_room->startOnAll();
        QCOMPARE(load().filter(u"Dora"_s).size(), 1);
    }
};

QUILLET_TEST(LostRulesTest, runTest<LostRulesTest>);
#include "LostRulesTest.moc"
