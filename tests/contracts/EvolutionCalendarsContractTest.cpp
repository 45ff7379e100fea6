// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/EvolutionCalendars.h"
#include "Corvane/Platform/Linux/EvolutionData/MergedEventStore.h"
#include "tests/contracts/EventStoreContract.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QTemporaryDir>

using namespace corvane;

class EvolutionCalendarsContractTest : public EventStoreContract {
    Q_OBJECT

    QTemporaryDir m_folder;
    DebugLogService m_log{m_folder.path()};
    std::unique_ptr<CalendarService> m_service;

protected:
    std::unique_ptr<EventStore> makeStore() override
    {
        allowAccess();
        return makeStoreWithoutAccess();
    }

    // Before allowAccess() there is no session bus. The library keeps the first bus that it finds.
    std::unique_ptr<EventStore> makeStoreWithoutAccess() override
    {
        const auto services =
            std::make_shared<CalendarServices>(m_log, m_folder.filePath(QStringLiteral("memory")));
        return std::make_unique<MergedEventStore>(
            std::vector<std::shared_ptr<CalendarSource>>{std::make_shared<EvolutionCalendars>(services)},
            [] { return QByteArray("UTC"); });
    }

    void allowAccess() override
    {
        if (!m_service) {
            CalendarService::writeCalendar(calendarText(contractComponents().join()));
            m_service = std::make_unique<CalendarService>();
        }
    }

private Q_SLOTS:
    void cleanupTestCase() { m_service.reset(); }
};

QUILLET_TEST(EvolutionCalendarsContractTest, runTest<EvolutionCalendarsContractTest>);
#include "EvolutionCalendarsContractTest.moc"
