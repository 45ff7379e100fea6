// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Runs with GLib's event loop and, with QT_NO_GLIB set, without it.
class CalendarEventLoopTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_room;

private Q_SLOTS:
    void theLogTellsWhetherTheServiceIsReachable()
    {
        DebugLogService log(m_room.path());
        const bool hasGLib = !qEnvironmentVariableIsSet("QT_NO_GLIB");
        QCOMPARE(checkEventLoopServesCalendars(log), hasGLib);
        QCOMPARE(log.latestLines().filter(u"without GLib"_s).size(), hasGLib ? 0 : 1);
    }

    void loadsEndInTimeAndTheFoldersAreShown()
    {
        CalendarService service;
        DebugLogService log(m_room.path());
        QVERIFY(QDir().mkpath(m_room.filePath(u"folder"_s)));
        QFile file(m_room.filePath(u"folder/a.ics"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(calendarText("BEGIN:VEVENT\nUID:a\nDTSTART:20250514T120000Z\nDTEND:"
                                "20250514T123000Z\nSUMMARY:Zoom - Anna\nEND:VEVENT\n"));
        file.close();
        const auto store =
            makeLinuxEventStore(log, {m_room.filePath(u"folder"_s)}, m_room.filePath(u"memory"_s));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(QCoro::waitFor(store->requestFullAccessToEvents()).value_or(false));
        const auto events =
            QCoro::waitFor(store->events({dateSince1970(1747180800), dateSince1970(1747180800 + 86400)}));
        QVERIFY2(timer.elapsed() < 8000, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(events.has_value());
        QCOMPARE(events->size(), std::size_t{1});
    }
};

QUILLET_TEST(CalendarEventLoopTest, runTest<CalendarEventLoopTest>);
#include "CalendarEventLoopTest.moc"
