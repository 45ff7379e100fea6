// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/contracts/EventStoreContract.h"
#include "tests/support/FakeEventStore.h"
#include "tests/support/TestProgram.h"

using namespace corvane;

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

private:
    FakeEventStore *m_denying = nullptr; // while its test runs
};

QUILLET_TEST(FakeEventStoreContractTest, runTest<FakeEventStoreContractTest>);
#include "FakeEventStoreContractTest.moc"
