#include "app/window/event_pace.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;
using ulk3d::event_pace_t;

const event_pace_t::clock::time_point start{milliseconds(1000)};

TEST(EventPace, IsDueAtFirst) {
    EXPECT_TRUE(event_pace_t().due(start));
}

TEST(EventPace, IsDueAgainWhenTheWorkHasHadItsInterval) {
    event_pace_t pace;
    pace.handled(start, start + milliseconds(1));
    EXPECT_FALSE(pace.due(start + milliseconds(1)));
    EXPECT_FALSE(pace.due(start + event_pace_t::interval));
    EXPECT_TRUE(pace.due(start + event_pace_t::interval + milliseconds(1)));
}

/// On a machine that takes long to paint, a cut that was interrupted every 20 ms would hardly get on.
TEST(EventPace, SlowEventsLeaveTheWorkAsMuchTime) {
    event_pace_t pace;
    pace.handled(start, start + milliseconds(200));
    EXPECT_FALSE(pace.due(start + milliseconds(399)));
    EXPECT_TRUE(pace.due(start + milliseconds(400)));
}

/// A bar that moves at least ten times a second is the promise, as long as painting takes no longer than 50
/// ms.
TEST(EventPace, IsDueOftenEnoughForABar) {
    event_pace_t pace;
    int times = 0;
    for (auto now = start; now < start + milliseconds(1000); now += milliseconds(1)) {
        if (!pace.due(now))
            continue;
        ++times;
        pace.handled(now, now + milliseconds(50));
        now += milliseconds(50);
    }
    EXPECT_GE(times, 10);
}

}  // namespace
