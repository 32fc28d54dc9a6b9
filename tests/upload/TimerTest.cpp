// The millisecond delay and time-out, on a scripted clock that only moves
// when the test moves it (from the yield hook during a delay).
#include "shell/model/RuntimeError.h"
#include "shell/model/YieldHook.h"
#include "tests/support/ScriptedServices.h"
#include "upload/model/CTimer.h"

#include <gtest/gtest.h>

#include <limits>

using namespace quenby;
using namespace quenby::testing;

namespace {

class delayTimer : public ::testing::Test
{
protected:
    void TearDown() override { setYieldHook({}); }

    ScriptedServices services;
    CTimer timer;
};

} // namespace

TEST_F(delayTimer, StartsWithAFactorOfOne)
{
    EXPECT_EQ(timer.factor(), 1.0f);
    EXPECT_EQ(timer.start(), 0);
    EXPECT_EQ(timer.end(), 0);
}

TEST_F(delayTimer, FactorDelayIsATenthOfNPlusOne)
{
    timer.factorDelay(5);
    EXPECT_EQ(timer.factor(), 1.5f);
    timer.factorDelay(0);
    EXPECT_EQ(timer.factor(), 1.0f);
    timer.factorDelay(20);
    EXPECT_EQ(timer.factor(), 3.0f);
    timer.factorDelay(-10);
    EXPECT_EQ(timer.factor(), 0.0f);
}

TEST_F(delayTimer, CurrentTimeIsTheClocksMillisecondCount)
{
    services.clock.ms = 123456;
    EXPECT_EQ(timer.GetCurrentTime(), 123456);
    services.clock.ms = -5; // after the counter wrapped
    EXPECT_EQ(timer.GetCurrentTime(), -5);
}

TEST_F(delayTimer, TimeOutIsDueAtTheDeadlineAndAfter)
{
    services.clock.ms = 1000;
    timer.SetTimeOutMs(100);
    EXPECT_EQ(timer.start(), 1000);
    EXPECT_EQ(timer.end(), 1100);
    services.clock.ms = 1099;
    EXPECT_EQ(timer.isTimeOut(), False16);
    services.clock.ms = 1100;
    EXPECT_EQ(timer.isTimeOut(), True16);
    services.clock.ms = 5000;
    EXPECT_EQ(timer.isTimeOut(), True16);
}

TEST_F(delayTimer, TheFactorStretchesTheDeadlineRoundedHalvesToEven)
{
    timer.factorDelay(5); // 1.5
    services.clock.ms = 0;
    timer.SetTimeOutMs(100);
    EXPECT_EQ(timer.end(), 150);
    timer.SetTimeOutMs(3); // 4.5 rounds to 4
    EXPECT_EQ(timer.end(), 4);
    timer.SetTimeOutMs(5); // 7.5 rounds to 8
    EXPECT_EQ(timer.end(), 8);
}

TEST_F(delayTimer, DeadlinesWorkOnNegativeCounts)
{
    services.clock.ms = -100;
    timer.SetTimeOutMs(50);
    EXPECT_EQ(timer.end(), -50);
    services.clock.ms = -51;
    EXPECT_EQ(timer.isTimeOut(), False16);
    services.clock.ms = -50;
    EXPECT_EQ(timer.isTimeOut(), True16);
}

TEST_F(delayTimer, ADeadlinePastThe32BitRangeOverflows)
{
    services.clock.ms = std::numeric_limits<Int32>::max() - 10;
    int failure = 0;
    try {
        timer.SetTimeOutMs(100);
    } catch (const RuntimeError& e) {
        failure = e.number();
    }
    EXPECT_EQ(failure, err::Overflow);
}

TEST_F(delayTimer, DelayMsLetsTheSystemBreatheOnEveryPassUntilTheDeadline)
{
    services.clock.ms = 200;
    int passes = 0;
    setYieldHook([&] {
        ++passes;
        services.clock.ms += 10;
    });
    timer.DelayMs(50);
    EXPECT_EQ(timer.start(), 200);
    EXPECT_EQ(timer.end(), 250);
    EXPECT_EQ(passes, 5);
    EXPECT_EQ(services.clock.ms, 250);
}

TEST_F(delayTimer, DelayMsStopsAsSoonAsTheClockIsPastTheDeadline)
{
    services.clock.ms = 0;
    int passes = 0;
    setYieldHook([&] {
        ++passes;
        services.clock.ms += 30;
    });
    timer.DelayMs(50);
    EXPECT_EQ(passes, 2);
    EXPECT_EQ(services.clock.ms, 60);
}

TEST_F(delayTimer, DelayMsUsesTheFactor)
{
    timer.factorDelay(10); // 2.0
    services.clock.ms = 0;
    int passes = 0;
    setYieldHook([&] {
        ++passes;
        services.clock.ms += 1;
    });
    timer.DelayMs(20);
    EXPECT_EQ(timer.end(), 40);
    EXPECT_EQ(passes, 40);
}

TEST_F(delayTimer, ADelayOfNothingReturnsWithoutWaiting)
{
    services.clock.ms = 77;
    int passes = 0;
    setYieldHook([&] { ++passes; });
    timer.DelayMs(0);
    EXPECT_EQ(timer.end(), 77);
    EXPECT_EQ(passes, 0);
}
