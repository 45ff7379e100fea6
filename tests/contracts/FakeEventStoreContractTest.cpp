// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/contracts/EventStoreContract.h"
#include "tests/support/FakeEventStore.h"

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
};

QTEST_GUILESS_MAIN(FakeEventStoreContractTest)
#include "FakeEventStoreContractTest.moc"
