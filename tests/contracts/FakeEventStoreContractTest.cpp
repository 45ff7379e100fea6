// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/contracts/EventStoreContract.h"
#include "tests/support/FakeEventStore.h"
#include "tests/support/TestProgram.h"

using namespace corvane;
using namespace Qt::StringLiterals;

class FakeEventStoreContractTest : public EventStoreContract {
    Q_OBJECT

protected:
    std::unique_ptr<EventStore> makeStore() override
    {
        auto store = std::make_unique<FakeEventStore>();
        store->calendar = contractEvents();
        return store;
    }

    std::unique_ptr<EventStore> makeStoreWithoutAccess() override
    {
        auto store = std::make_unique<FakeEventStore>();
        store->grant = false;
        m_denying = store.get();
        return store;
    }

    void allowAccess() override { m_denying->grant = true; }

private Q_SLOTS:
    void aFailingRequestFailsEachTime()
    {
        FakeEventStore store;
        store.grant = std::unexpected(Failure{u"the calendar service does not answer"_s});
        for (int request = 0; request < 2; ++request) {
            const auto granted = QCoro::waitFor(store.requestFullAccessToEvents());
            QVERIFY(!granted);
            QCOMPARE(granted.error().localizedDescription, u"the calendar service does not answer"_s);
        }
    }

private:
    FakeEventStore *m_denying = nullptr; // valid while its test runs
};

QUILLET_TEST(FakeEventStoreContractTest, runTest<FakeEventStoreContractTest>);
#include "FakeEventStoreContractTest.moc"
