#pragma once

#include <algorithm>
#include <chrono>

namespace ulk3d {

/// Says when long work should let the window handle its events: often enough that a bar moves and a click is
/// answered, yet never for longer than the work itself has had since the last time.
class event_pace_t {
  public:
    using clock = std::chrono::steady_clock;

    /// The shortest stretch of work between two handlings of events.
    static constexpr std::chrono::milliseconds interval{20};

    bool due(clock::time_point now) const { return now >= next; }

    /// Tells that events were handled from `begin` to `end`.
    void handled(clock::time_point begin, clock::time_point end) {
        next = end + std::max<clock::duration>(interval, end - begin);
    }

  private:
    clock::time_point next = clock::time_point::min();
};

}  // namespace ulk3d
