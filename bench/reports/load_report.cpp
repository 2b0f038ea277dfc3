#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <vector>

#include "load_files.h"
#include "way_runs.h"

/// Prints what it costs to load a mesh and to save it again, each in a process of its own and the least of
/// some runs. Loads: milliseconds by the clock and of the processor, MB at the peak of the process, MB of
/// that beyond a process of the same program that loads four triangles, these as a multiple of the file's
/// size, and in bytes for each triangle. Saves: milliseconds without the waits for the disk, and these apart;
/// only ours waits. The tables have binary STL files, and the same mesh as a scene file and as an OBJ file.
/// What each way gives stands at the top of its source, load_with_*.cpp. Ways whose library the build has not
/// found are left out. Usage: `load_report [triangles]...`
namespace {

constexpr std::uint64_t few_triangles = 4;

constexpr kind_t stl = {".stl", write_stl_file};
constexpr kind_t scene = {".ulk", write_sheet_as_scene};
constexpr kind_t obj = {".obj", write_sheet_as_obj};
constexpr kind_t bare_obj = {".obj", write_bare_sheet_as_obj};

constexpr std::array stl_ways = {way_t{"ours", stl}, way_t{"assimp", stl}, way_t{"admesh", stl},
                                 way_t{"vtk", stl}};
constexpr std::array sheet_ways = {way_t{"ours", scene}, way_t{"assimp", obj}, way_t{"tinyobjloader", obj},
                                   way_t{"vtk", obj}};
constexpr std::array bare_sheet_ways = {way_t{"ours", scene}, way_t{"assimp", bare_obj},
                                        way_t{"tinyobjloader", bare_obj}, way_t{"vtk", bare_obj}};

/// tinyobjloader writes nothing.
constexpr std::array sheet_writers = {way_t{"ours", scene}, way_t{"assimp", obj}, way_t{"vtk", obj}};

using sizes_t = std::vector<std::uint64_t>;

void report_loads(const char* title, std::span<const way_t> all_ways, const sizes_t& sizes) {
    const std::vector<way_t> ways = ways_here(all_ways);
    const std::vector<cost_t> before = least_costs(ways, files_for(ways, few_triangles), task_t::load);
    std::printf("%s\n%-14s %10s %9s %9s %9s %11s %10s %8s %11s\n", title, "", "triangles", "file, MB", "ms",
                "CPU ms", "MB at peak", "MB for it", "of file", "bytes each");
    for (const std::uint64_t size : sizes) {
        const files_t files = files_for(ways, size);
        const std::vector<cost_t> costs = least_costs(ways, files, task_t::load);
        for (std::size_t n = 0; n < ways.size(); ++n) {
            const made_file_t& file = files.at(ways[n].kind.suffix);
            const double for_it = costs[n].peak_mb - before[n].peak_mb;
            std::printf("%-14s %10" PRIu64 " %9.1f %9.1f %9.1f %11.1f %10.1f %8.2f %11.0f\n", ways[n].name,
                        file.triangles, file.megabytes, costs[n].milliseconds,
                        costs[n].processor_milliseconds, costs[n].peak_mb, for_it, for_it / file.megabytes,
                        for_it * 1e6 / static_cast<double>(file.triangles));
        }
        std::fflush(stdout);
    }
}

void report_saves(const char* title, std::span<const way_t> all_ways, const sizes_t& sizes) {
    const std::vector<way_t> ways = ways_here(all_ways);
    std::printf("%s\n%-14s %10s %9s %9s %9s\n", title, "", "triangles", "ms", "CPU ms", "fsync ms");
    for (const std::uint64_t size : sizes) {
        const files_t files = files_for(ways, size);
        const std::vector<cost_t> costs = least_costs(ways, files, task_t::save);
        for (std::size_t n = 0; n < ways.size(); ++n)
            std::printf("%-14s %10" PRIu64 " %9.1f %9.1f %9.1f\n", ways[n].name,
                        files.at(ways[n].kind.suffix).triangles, costs[n].milliseconds,
                        costs[n].processor_milliseconds, costs[n].fsync_milliseconds);
        std::fflush(stdout);
    }
}

}  // namespace

int main(int argc, char** argv) try {
    sizes_t sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::max<std::uint64_t>(few_triangles, std::strtoul(argv[i], nullptr, 10)));
    if (sizes.empty())
        sizes = {10'000, 100'000, 1'000'000, 4'000'000};
    report_loads("binary STL", stl_ways, sizes);
    report_loads("\na sheet of strips, as a scene file (ours) and as an OBJ file", sheet_ways, sizes);
    report_loads("\nthe same scene file beside an OBJ file of positions and faces only", bare_sheet_ways,
                 sizes);
    report_saves("\nbinary STL, saved", stl_ways, sizes);
    report_saves("\nthe sheet, saved as a scene file (ours) and as an OBJ file", sheet_writers, sizes);
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
}
