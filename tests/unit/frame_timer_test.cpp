// The frame timer's channels: whole periods paid out once, with the fraction carried.
#include "app/frame_timer.h"

#include <gtest/gtest.h>

#include <cstring>

#include "test_clock.h"

static FrameTimer FreshTimer() {
    FrameTimer timer;
    memset(&timer, 0, sizeof(timer));
    return timer;
}

TEST(FrameTimer, FractionIsCarriedToTheNextReading) {
    test::ManualClock clock;
    FrameTimer timer = FreshTimer();
    timer.Init(0);
    timer.SetPeriod(1, 20);
    clock.AdvanceMs(45);
    EXPECT_EQ(timer.Elapsed(1), 2u);
    // The surplus only counts once a whole period has passed since the last payout.
    clock.AdvanceMs(15);
    EXPECT_EQ(timer.Elapsed(1), 0u);
    clock.AdvanceMs(20);  // 35 ms since the payout: 1.75 periods plus 0.25 carried
    EXPECT_EQ(timer.Elapsed(1), 2u);
    // Over any stretch the payouts add up to the whole periods that passed.
    uint32_t total = 0;
    for (int i = 0; i < 300; i++) {
        clock.AdvanceMs(i % 2 ? 25 : 3);
        total += timer.Elapsed(1);
    }
    clock.AdvanceMs(40);
    total += timer.Elapsed(1);
    EXPECT_EQ(total, (150u * 28u + 40u) / 20u);
}
