// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/RuleCost.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr double day = 86'400;
constexpr double year = 365 * day;
/// A window of three days, thirty years after the first event; in seconds.
constexpr double from = 30 * year;
constexpr double to = from + 3 * day;

std::vector<short> numbers(int count)
{
    return std::vector<short>(static_cast<std::size_t>(count), 1);
}

} // namespace

class RuleCostTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyFrequencyCostsItsSteps_data()
    {
        QTest::addColumn<int>("frequency");
        QTest::addColumn<double>("steps");
        QTest::addColumn<double>("occurrences");
        const auto row = [](const char *name, RuleFrequency frequency, double steps, double occurrences) {
            QTest::newRow(name) << static_cast<int>(frequency) << steps << occurrences;
        };
        row("secondly", RuleFrequency::secondly, to, 3 * day);
        row("minutely", RuleFrequency::minutely, to / 60, 3 * 1'440);
        row("hourly", RuleFrequency::hourly, to / 3'600, 72);
        row("daily", RuleFrequency::daily, to / day, 3);
        row("weekly", RuleFrequency::weekly, to / day / 7, 3.0 / 7);
        row("monthly", RuleFrequency::monthly, to / day / 30, 3.0 / 30);
        row("yearly", RuleFrequency::yearly, to / year, 3.0 / 365);
    }

    void everyFrequencyCostsItsSteps()
    {
        QFETCH(int, frequency);
        QFETCH(double, steps);
        QFETCH(double, occurrences);
        RecurrenceRule rule;
        rule.frequency = static_cast<RuleFrequency>(frequency);
        const auto cost = ruleCost(rule, 0, from, to);
        QVERIFY(cost.has_value());
        QCOMPARE(cost->steps, steps);
        QCOMPARE(cost->occurrences, occurrences);
        rule.interval = 2;
        QCOMPARE(ruleCost(rule, 0, from, to)->steps, steps / 2);
        rule.interval = 0;
        QCOMPARE(ruleCost(rule, 0, from, to)->steps, steps);
    }

    void aRuleThatBeginsAfterTheWindowCostsNothing()
    {
        RecurrenceRule rule;
        rule.frequency = RuleFrequency::secondly;
        QCOMPARE(ruleCost(rule, to + 1, from, to)->steps, 0.0);
    }

    void aLastDateOrACountEndsTheSteps()
    {
        RecurrenceRule rule;
        rule.frequency = RuleFrequency::daily;
        rule.until = 9 * day;
        QCOMPARE(ruleCost(rule, 0, from, to)->steps, 10.0);
        QCOMPARE(ruleCost(rule, 20 * day, from, to)->steps, 0.0);
        rule.count = 4;
        QCOMPARE(ruleCost(rule, 0, from, to)->steps, 4.0);
        // Skipped days count as steps, too.
        rule.days = {2};
        QCOMPARE(ruleCost(rule, 0, from, to)->steps, 10.0);
    }

    void timesOfTheDayMultiplyTheSteps()
    {
        RecurrenceRule rule;
        rule.frequency = RuleFrequency::daily;
        rule.hours = numbers(3);
        rule.minutes = numbers(2);
        QCOMPARE(ruleCost(rule, 0, from, to)->occurrences, 18.0);
        rule.frequency = RuleFrequency::hourly;
        QCOMPARE(ruleCost(rule, 0, from, to)->occurrences, 144.0);
    }

    void daysWithinALongerStepCountSeparately()
    {
        RecurrenceRule rule;
        rule.frequency = RuleFrequency::weekly;
        rule.days = {2, 4};
        QCOMPARE(ruleCost(rule, 0, from, to)->occurrences, 3.0);
        rule.days = {};
        rule.months = {3};
        rule.frequency = RuleFrequency::yearly;
        QCOMPARE(ruleCost(rule, 0, from, to)->occurrences, 3.0);
    }

    void rulesThatMayNeverMatchAreRefused_data()
    {
        QTest::addColumn<int>("frequency");
        QTest::addColumn<bool>("isRefused");
        QTest::newRow("secondly") << static_cast<int>(RuleFrequency::secondly) << true;
        QTest::newRow("minutely") << static_cast<int>(RuleFrequency::minutely) << true;
        QTest::newRow("hourly") << static_cast<int>(RuleFrequency::hourly) << true;
        QTest::newRow("daily") << static_cast<int>(RuleFrequency::daily) << false;
        QTest::newRow("yearly") << static_cast<int>(RuleFrequency::yearly) << false;
    }

    void rulesThatMayNeverMatchAreRefused()
    {
        QFETCH(int, frequency);
        QFETCH(bool, isRefused);
        RecurrenceRule rule;
        rule.frequency = static_cast<RuleFrequency>(frequency);
        rule.months = {2};
        rule.monthDays = {30};
        QCOMPARE(!ruleCost(rule, 0, from, to).has_value(), isRefused);
        rule.hours = numbers(5);
        QVERIFY(!ruleCost(rule, 0, from, to).has_value());
        // Even if the window ends before the rule starts.
        QVERIFY(!ruleCost(rule, to + 1, from, to).has_value());
    }

    void anHourlyRuleMayBeLimitedToCertainHours()
    {
        RecurrenceRule rule;
        rule.frequency = RuleFrequency::hourly;
        rule.hours = {11, 13};
        rule.days = {2};
        QVERIFY(ruleCost(rule, 0, from, to).has_value());
        rule.interval = 24;
        QVERIFY(!ruleCost(rule, 0, from, to).has_value());
        rule.interval = 1;
        rule.days = {10};
        QVERIFY(!ruleCost(rule, 0, from, to).has_value());
    }
};

QUILLET_TEST(RuleCostTest, runTest<RuleCostTest>);
#include "RuleCostTest.moc"
