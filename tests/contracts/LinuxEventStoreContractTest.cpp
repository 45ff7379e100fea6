// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"
#include "tests/contracts/EventStoreContract.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace corvane;
using namespace Qt::StringLiterals;

/// The program's store: half of the events come from the calendar service, the others from a folder.
class LinuxEventStoreContractTest : public EventStoreContract {
    Q_OBJECT

    QTemporaryDir m_folder;
    DebugLogService m_log{m_folder.filePath(u"log"_s)};
    std::unique_ptr<CalendarService> m_service;

protected:
    std::unique_ptr<EventStore> makeStore() override
    {
        allowAccess();
        return makeStoreWithoutAccess();
    }

    std::unique_ptr<EventStore> makeStoreWithoutAccess() override
    {
        return makeLinuxEventStore(m_log, {m_folder.filePath(u"calendars"_s)},
                                   m_folder.filePath(u"memory"_s));
    }

    void allowAccess() override
    {
        if (m_service) {
            return;
        }
        QByteArray ofService;
        QByteArray ofFolder;
        for (const QByteArray &component : contractComponents()) {
            (ofService.size() > ofFolder.size() ? ofFolder : ofService) += component;
        }
        QVERIFY(QDir().mkpath(m_folder.filePath(u"calendars"_s)));
        QFile file(m_folder.filePath(u"calendars/contract.ics"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(calendarText(ofFolder));
        file.close();
        CalendarService::writeCalendar(calendarText(ofService));
        m_service = std::make_unique<CalendarService>();
    }

private Q_SLOTS:
    void cleanupTestCase() { m_service.reset(); }
};

QUILLET_TEST(LinuxEventStoreContractTest, runTest<LinuxEventStoreContractTest>);
#include "LinuxEventStoreContractTest.moc"
