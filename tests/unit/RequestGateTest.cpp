// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/RequestGate.h"

#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;

class RequestGateTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachRequestAfterAPauseIsAdmitted()
    {
        RequestGate gate(Seconds{0.1});
        QVERIFY(gate.admits(Seconds{0}));
        QVERIFY(gate.admits(Seconds{0.1}));
        QVERIFY(gate.admits(Seconds{7}));
    }

    void aFloodIsAdmittedOnce()
    {
        RequestGate gate(Seconds{0.1});
        int admitted = 0;
        for (int request = 0; request < 3000; ++request) {
            admitted += gate.admits(Seconds{0.001 * request}) ? 1 : 0;
        }
        QCOMPARE(admitted, 1);
        QVERIFY(!gate.admits(Seconds{3.05}));
        QVERIFY(gate.admits(Seconds{3.15}));
    }

    void aLastingFloodIsAdmittedNowAndThen()
    {
        RequestGate gate(Seconds{0.1}, Seconds{5});
        int admitted = 0;
        for (int request = 0; request < 3000; ++request) {
            admitted += gate.admits(Seconds{0.015 * request}) ? 1 : 0;
        }
        QCOMPARE(admitted, 9);
    }
};

QUILLET_TEST(RequestGateTest, runTest<RequestGateTest>);
#include "RequestGateTest.moc"
