#pragma once

#include <algorithm>
#include <chrono>

namespace ulk3d {

/// Decides when long work should let the window handle its events: often enough that a bar moves and a click
/// is answered, but never spending more time on events than the work has had since the last time.
class event_pace_t {
  public:
    using clock = std::chrono::steady_clock;

    /// The shortest stretch of work between two times that events are handled.
    static constexpr std::chrono::milliseconds interval{20};

    bool due(clock::time_point now) const { return now >= next; }

    /// Records that events were handled from `begin` to `end`.
    void handled(clock::time_point begin, clock::time_point end) {
        next = end + std::max<clock::duration>(interval, end - begin);
    }

  private:
    clock::time_point next = clock::time_point::min();
};

}  // namespace ulk3d
