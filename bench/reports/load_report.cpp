#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#ifdef ULK_HAS_ASSIMP
#include <assimp/scene.h>
#include <assimp/Importer.hpp>
#endif

#include "bench_context.h"
#include "formats/stl/stl_layout.h"
#include "formats/stl/stl_reader.h"

/// Prints what it costs to load a binary STL file, each load in a process of its own and the least of some
/// loads: milliseconds by the clock and of the processor, and MB at the peak of the process, all of them and
/// those beyond a process that loads a single triangle.
/// Usage: `load_report [triangles]...`
namespace {

using namespace ulk3d;
using clock_type = std::chrono::steady_clock;

constexpr int loads = 5;

void write_file(const std::string& path, std::uint32_t triangle_count) {
    std::ofstream output(path, std::ios::binary);
    const std::string header(stl::header_size, '\0');
    output.write(header.data(), static_cast<std::streamsize>(header.size()));
    output.write(reinterpret_cast<const char*>(&triangle_count), sizeof triangle_count);
    for (std::uint32_t i = 0; i < triangle_count; ++i) {
        const float x = static_cast<float>(i % 1000) / 37, y = static_cast<float>(i / 1000) / 41;
        const stl::triangle_t triangle{
            {}, {x, y, std::sin(x)}, {x + 1.0F / 37, y, std::sin(x)}, {x, y + 1.0F / 41, std::cos(y)}};
        char record[stl::record_size] = {};
        std::memcpy(record, &triangle, sizeof triangle);
        output.write(record, sizeof record);
    }
}

// What is loaded lives until the process ends: giving it back is not what is measured.

bool load_here(const char* path) {
    static auto* const scene = new scene_t;
    return load_stl(path, *scene);
}

#ifdef ULK_HAS_ASSIMP
bool load_with_assimp(const char* path) {
    static auto* const importer = new Assimp::Importer;
    return importer->ReadFile(path, 0) != nullptr;
}
#endif

struct way_t {
    const char* name;
    bool (*load)(const char* path);
};
constexpr way_t ways[] = {
    {"ours", load_here},
#ifdef ULK_HAS_ASSIMP
    {"assimp", load_with_assimp},
#endif
};

double processor_milliseconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
    };
    return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
}

/// The process of one load: prints its milliseconds, and exits with 0 when it has worked.
int load_once(const char* name, const char* path) {
    const auto* const way =
        std::ranges::find_if(ways, [name](const way_t& each) { return std::strcmp(each.name, name) == 0; });
    if (way == std::end(ways))
        return 2;
    if (way->load == load_here)
        need_context();
    const double used_before = processor_milliseconds();
    const auto start = clock_type::now();
    const bool is_loaded = way->load(path);
    const std::chrono::duration<double, std::milli> took = clock_type::now() - start;
    std::printf("%.17g %.17g\n", took.count(), processor_milliseconds() - used_before);
    return is_loaded ? 0 : 1;
}

struct cost_t {
    double milliseconds = 0, processor_milliseconds = 0, peak_mb = 0;
};

cost_t cost_of(const char* program, const way_t& way, const std::string& path) {
    int ends[2];
    if (pipe(ends) != 0)
        std::exit(1);
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        execl(program, program, "--load", way.name, path.c_str(), nullptr);
        _exit(2);
    }
    close(ends[1]);
    char text[128] = {};
    if (read(ends[0], text, sizeof text - 1) < 0)
        std::exit(1);
    close(ends[0]);
    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) != child || status != 0) {
        std::fprintf(stderr, "%s has not loaded %s\n", way.name, path.c_str());
        std::exit(1);
    }
    char* end = nullptr;
    cost_t cost{.peak_mb = static_cast<double>(used.ru_maxrss) * 1024 / 1e6};
    cost.milliseconds = std::strtod(text, &end);
    cost.processor_milliseconds = std::strtod(end, nullptr);
    return cost;
}

cost_t least_cost(const char* program, const way_t& way, const std::string& path) {
    cost_t least = cost_of(program, way, path);
    for (int i = 1; i < loads; ++i) {
        const cost_t cost = cost_of(program, way, path);
        least = {std::min(least.milliseconds, cost.milliseconds),
                 std::min(least.processor_milliseconds, cost.processor_milliseconds),
                 std::min(least.peak_mb, cost.peak_mb)};
    }
    return least;
}

void report(const char* program, const std::vector<std::uint32_t>& sizes) {
    const std::string path =
        (std::filesystem::temp_directory_path() / ("ulk-load-" + std::to_string(getpid()) + ".stl")).string();
    std::printf("%-10s %12s %10s %10s %12s %12s\n", "", "triangles", "ms", "CPU ms", "MB at peak",
                "MB for it");
    for (const way_t& way : ways) {
        write_file(path, 1);
        const double before = least_cost(program, way, path).peak_mb;
        for (const std::uint32_t size : sizes) {
            write_file(path, size);
            const cost_t cost = least_cost(program, way, path);
            std::printf("%-10s %12u %10.1f %10.1f %12.1f %12.1f\n", way.name, size, cost.milliseconds,
                        cost.processor_milliseconds, cost.peak_mb, cost.peak_mb - before);
            std::fflush(stdout);
        }
    }
    std::filesystem::remove(path);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string_view(argv[1]) == "--load")
        return load_once(argv[2], argv[3]);
    std::vector<std::uint32_t> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(static_cast<std::uint32_t>(std::strtoul(argv[i], nullptr, 10)));
    if (sizes.empty())
        sizes = {10'000, 100'000, 1'000'000, 4'000'000};
    report("/proc/self/exe", sizes);
    return 0;
}
