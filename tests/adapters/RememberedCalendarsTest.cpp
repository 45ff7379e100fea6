// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/RememberedCalendars.h"
#include "tests/adapters/CalendarRoom.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The stand-in for a source that does not even list its calendars.
class RememberedCalendarsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_room;
    std::unique_ptr<DebugLogService> m_log;
    std::shared_ptr<CalendarServices> m_services;

    void remember(const QString &identifier, const QByteArray &components, int daysLater = 0) const
    {
        const DateInterval span{testDay(daysLater).start, testDay(daysLater + 8).start};
        QVERIFY(
            m_services->memory
                .write(
                    {identifier, identifier.section(u':', 1), {}, span.start, span, calendarText(components)})
                .has_value());
    }

    static CalendarAnswers ask(RememberedCalendars &calendars)
    {
        CalendarAnswers answers;
        QCoro::waitFor(calendars.answer({testDay(), "UTC"}, QDeadlineTimer(10s), u"it hangs"_s, answers));
        std::ranges::sort(answers.calendars, {}, &CalendarStatus::identifier);
        return answers;
    }

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<QTemporaryDir>();
        m_log = std::make_unique<DebugLogService>(m_room->filePath(u"log"_s));
        m_services = std::make_shared<CalendarServices>(*m_log, m_room->filePath(u"memory"_s));
    }

    void cleanup()
    {
        m_services.reset();
        m_log.reset();
        m_room.reset();
    }

    void theSourcesCalendarsStandInWithTheirLastAnswers()
    {
        remember(u"service:anna"_s, lesson("Zoom - Anna"));
        remember(u"service:old"_s, lesson("Zoom - Ben"), -9);
        remember(u"file:cleo"_s, lesson("Zoom - Cleo"));
        RememberedCalendars calendars(m_services, u"service:"_s);
        QVERIFY(QCoro::waitFor(calendars.areThere(QDeadlineTimer(10s))));
        const CalendarAnswers answers = ask(calendars);
        QCOMPARE(titles(answers.events), QStringList{u"Zoom - Anna"_s});
        QCOMPARE(answers.answered, 1);
        QCOMPARE(answers.silent, 1);
        QCOMPARE(answers.error, u"it hangs"_s);
        QCOMPARE(answers.calendars.size(), std::size_t{2});
        const CalendarStatus &anna = answers.calendars[0];
        QCOMPARE(anna.name, u"anna"_s);
        QCOMPARE(anna.condition, CalendarStatus::Condition::silent);
        QCOMPARE(anna.reason, u"it hangs"_s);
        QCOMPARE(anna.lastRead, std::optional(testDay().start));
        QVERIFY(anna.usesLastAnswer);
        QCOMPARE(anna.eventCount, 1);
        QVERIFY(answers.calendars[1].isGap());
        QCOMPARE(answers.calendars[1].eventCount, 0);
    }

    void failingSinceIsTheTimeOfTheFirstFailure()
    {
        remember(u"service:anna"_s, lesson("Zoom - Anna"));
        RememberedCalendars calendars(m_services, u"service:"_s);
        const auto since = ask(calendars).calendars.at(0).failingSince;
        QVERIFY(since.has_value());
        QTRY_VERIFY(currentDate() > *since);
        QCOMPARE(ask(calendars).calendars.at(0).failingSince, since);
    }

    void withoutAMemoryThereAreNoCalendars()
    {
        remember(u"file:cleo"_s, lesson("Zoom - Cleo"));
        RememberedCalendars calendars(m_services, u"service:"_s);
        QVERIFY(!QCoro::waitFor(calendars.areThere(QDeadlineTimer(10s))));
        QCOMPARE(ask(calendars).calendars.size(), std::size_t{0});
    }
};

QUILLET_TEST(RememberedCalendarsTest, runTest<RememberedCalendarsTest>);
#include "RememberedCalendarsTest.moc"
