#include <sys/resource.h>

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "fsync_time.h"
#include "peers/load_way.h"

/// One load in a process of its own, or one save of what was loaded: prints its milliseconds by the clock, of
/// the processor and in waits for the disk, and the number of triangles. Usage: `load_with_... FILE [SAVED]`
namespace {

double processor_milliseconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
    };
    return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
}

struct cost_t {
    double milliseconds, processor_milliseconds, fsync_milliseconds;
};

/// Milliseconds by the clock are those beside the waits for the disk. Ends the process when `work` fails.
template <typename Work>
cost_t cost_of(Work work) {
    const double used = processor_milliseconds(), flushed = seconds_in_fsync();
    const auto start = std::chrono::steady_clock::now();
    const bool is_done = work();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    const double in_fsync = seconds_in_fsync() - flushed;
    if (!is_done)
        std::exit(1);
    return {(took.count() - in_fsync) * 1e3, processor_milliseconds() - used, in_fsync * 1e3};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3)
        return 2;
    prepare_to_load();
    cost_t cost = cost_of([path = argv[1]] { return load_file(path); });
    if (argc == 3)
        cost = cost_of([path = argv[2]] { return save_file(path); });
    std::printf("%.17g %.17g %.17g %" PRIu64 "\n", cost.milliseconds, cost.processor_milliseconds,
                cost.fsync_milliseconds, triangles_loaded());
    return 0;
}
