#include <sys/resource.h>

#include <chrono>
#include <cinttypes>
#include <cstdio>

#include "peers/load_way.h"

/// One load in a process of its own: prints its milliseconds by the clock and of the processor, and the
/// number of triangles that it gave. Usage: `load_with_... FILE`
namespace {

double processor_milliseconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
    };
    return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    prepare_to_load();
    const double used_before = processor_milliseconds();
    const auto start = std::chrono::steady_clock::now();
    const bool is_loaded = load_file(argv[1]);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    const double used = processor_milliseconds() - used_before;
    if (!is_loaded)
        return 1;
    std::printf("%.17g %.17g %" PRIu64 "\n", took.count(), used, triangles_loaded());
    return 0;
}
