#include <importing/processing/TickTimer.h>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace
{

using Importing::TickTimer;
using namespace std::chrono_literals;

TEST(TickTimer, StartsAtZeroAndNeverDecreases)
{
    const TickTimer timer;
    int last = timer.ElapsedMilliseconds();
    EXPECT_GE(last, 0);
    EXPECT_LT(last, 1000);
    for (int i = 0; i < 1000; ++i)
    {
        const int now = timer.ElapsedMilliseconds();
        EXPECT_GE(now, last);
        last = now;
    }
}

TEST(TickTimer, CountsMilliseconds)
{
    const TickTimer timer;
    std::this_thread::sleep_for(60ms);
    const int elapsed = timer.ElapsedMilliseconds();
    EXPECT_GE(elapsed, 40);  // The platform's counter may advance in steps of up to 16.
    EXPECT_LT(elapsed, 10000);
}

TEST(TickTimer, EachTimerCountsFromItsOwnStart)
{
    const TickTimer first;
    std::this_thread::sleep_for(60ms);
    const TickTimer second;
    EXPECT_GE(first.ElapsedMilliseconds() - second.ElapsedMilliseconds(), 40);
}

}  // namespace
