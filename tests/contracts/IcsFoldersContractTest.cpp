// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include "Corvane/Platform/Linux/EvolutionData/IcsFolders.h"
#include "Corvane/Platform/Linux/EvolutionData/MergedEventStore.h"
#include "tests/contracts/EventStoreContract.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QTemporaryDir>

using namespace corvane;
using namespace Qt::StringLiterals;

class IcsFoldersContractTest : public EventStoreContract {
    Q_OBJECT

    QTemporaryDir m_folder;
    DebugLogService m_log{m_folder.filePath(u"log"_s)};

protected:
    std::unique_ptr<EventStore> makeStore() override
    {
        allowAccess();
        return makeStoreWithoutAccess();
    }

    std::unique_ptr<EventStore> makeStoreWithoutAccess() override
    {
        const auto services = std::make_shared<CalendarServices>(m_log, m_folder.filePath(u"memory"_s));
        return std::make_unique<MergedEventStore>(
            std::vector<std::shared_ptr<CalendarSource>>{
                std::make_shared<IcsFolders>(services, QStringList{m_folder.filePath(u"calendars"_s)})},
            [] { return QByteArray("UTC"); });
    }

    void allowAccess() override
    {
        QVERIFY(QDir().mkpath(m_folder.filePath(u"calendars"_s)));
        QFile file(m_folder.filePath(u"calendars/contract.ics"_s));
        if (!file.exists()) {
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(calendarText(contractComponents().join()));
        }
    }
};

QUILLET_TEST(IcsFoldersContractTest, runTest<IcsFoldersContractTest>);
#include "IcsFoldersContractTest.moc"
