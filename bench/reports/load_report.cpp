#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "load_files.h"

/// Prints what it costs to load a mesh, each load in a process of its own and the least of some loads:
/// milliseconds by the clock and of the processor, MB at the peak of the process, MB of that beyond a process
/// of the same program that loads four triangles, these as a multiple of the file's size, and in bytes for
/// each triangle. One table has binary STL files, the others the same mesh as a scene file and as an OBJ
/// file. What each way gives stands at the top of its source, load_with_*.cpp. Ways whose library the build
/// has not found are left out. Usage: `load_report [triangles]...`
namespace {

constexpr int loads = 5;
constexpr std::uint64_t few_triangles = 4;

struct kind_t {
    const char* suffix;
    std::uint64_t (*write)(const std::string& path, std::uint64_t triangles);
};
constexpr kind_t stl = {".stl", write_stl_file};
constexpr kind_t scene = {".ulk", write_sheet_as_scene};
constexpr kind_t obj = {".obj", write_sheet_as_obj};
constexpr kind_t bare_obj = {".obj", write_bare_sheet_as_obj};

struct way_t {
    const char* name;  ///< behind "load_with_" in the name of the program
    const kind_t& kind;
};
constexpr std::array stl_ways = {way_t{"ours", stl}, way_t{"assimp", stl}, way_t{"admesh", stl},
                                 way_t{"vtk", stl}};
constexpr std::array sheet_ways = {way_t{"ours", scene}, way_t{"assimp", obj}, way_t{"tinyobjloader", obj},
                                   way_t{"vtk", obj}};
constexpr std::array bare_sheet_ways = {way_t{"ours", scene}, way_t{"assimp", bare_obj},
                                        way_t{"tinyobjloader", bare_obj}, way_t{"vtk", bare_obj}};

std::string program_of(const way_t& way) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() /
           (std::string("load_with_") + way.name);
}

/// A file that is removed with its owner.
class made_file_t {
  public:
    made_file_t(const kind_t& kind, std::uint64_t triangles)
        : path(std::filesystem::temp_directory_path() /
               ("ulk-load-" + std::to_string(getpid()) + kind.suffix)),
          triangles(kind.write(path, triangles)),
          megabytes(static_cast<double>(std::filesystem::file_size(path)) / 1e6) {}
    ~made_file_t() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    made_file_t(const made_file_t&) = delete;
    made_file_t& operator=(const made_file_t&) = delete;

    const std::string path;
    const std::uint64_t triangles;
    const double megabytes;
};

struct cost_t {
    double milliseconds = 0, processor_milliseconds = 0, peak_mb = 0;
};

cost_t least_of(const cost_t& a, const cost_t& b) {
    return {std::min(a.milliseconds, b.milliseconds),
            std::min(a.processor_milliseconds, b.processor_milliseconds), std::min(a.peak_mb, b.peak_mb)};
}

/// What the process has printed, after its end; nothing when it has failed.
std::string output_of(const std::string& program, const std::string& path, rusage& used) {
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("There is no pipe.");
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        execl(program.c_str(), program.c_str(), path.c_str(), nullptr);
        _exit(2);
    }
    close(ends[1]);
    std::string text(128, '\0');
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(0, read(ends[0], text.data(), text.size()))));
    close(ends[0]);
    int status = 0;
    return wait4(child, &status, 0, &used) == child && status == 0 ? text : std::string();
}

cost_t cost_of(const way_t& way, const made_file_t& file) {
    rusage used{};
    const std::string text = output_of(program_of(way), file.path, used);
    char* end = nullptr;
    cost_t cost{.peak_mb = static_cast<double>(used.ru_maxrss) * 1024 / 1e6};
    cost.milliseconds = std::strtod(text.c_str(), &end);
    cost.processor_milliseconds = std::strtod(end, &end);
    if (std::strtoull(end, nullptr, 10) != file.triangles)
        throw std::runtime_error(std::string("load_with_") + way.name + " has not loaded all of " +
                                 file.path);
    return cost;
}

/// By the suffix of their kind.
using files_t = std::map<std::string_view, made_file_t>;

files_t files_for(const std::vector<way_t>& ways, std::uint64_t triangles) {
    files_t files;
    for (const way_t& way : ways)
        files.try_emplace(way.kind.suffix, way.kind, triangles);
    return files;
}

/// The least costs of each way. The ways take turns, so that a busy moment of the machine meets all of them.
std::vector<cost_t> least_costs(const std::vector<way_t>& ways, const files_t& files) {
    std::vector<cost_t> least;
    for (const way_t& way : ways)
        least.push_back(cost_of(way, files.at(way.kind.suffix)));
    for (int load = 1; load < loads; ++load)
        for (std::size_t n = 0; n < ways.size(); ++n)
            least[n] = least_of(least[n], cost_of(ways[n], files.at(ways[n].kind.suffix)));
    return least;
}

void report(std::span<const way_t> all_ways, const std::vector<std::uint64_t>& sizes) {
    std::vector<way_t> ways;
    std::ranges::copy_if(all_ways, std::back_inserter(ways),
                         [](const way_t& way) { return access(program_of(way).c_str(), X_OK) == 0; });
    const std::vector<cost_t> before = least_costs(ways, files_for(ways, few_triangles));
    std::printf("%-14s %10s %9s %9s %9s %11s %10s %8s %11s\n", "", "triangles", "file, MB", "ms", "CPU ms",
                "MB at peak", "MB for it", "of file", "bytes each");
    for (const std::uint64_t size : sizes) {
        const files_t files = files_for(ways, size);
        const std::vector<cost_t> costs = least_costs(ways, files);
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

}  // namespace

int main(int argc, char** argv) try {
    std::vector<std::uint64_t> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::max<std::uint64_t>(few_triangles, std::strtoul(argv[i], nullptr, 10)));
    if (sizes.empty())
        sizes = {10'000, 100'000, 1'000'000, 4'000'000};
    std::puts("binary STL");
    report(stl_ways, sizes);
    std::puts("\na sheet of strips, as a scene file (ours) and as an OBJ file");
    report(sheet_ways, sizes);
    std::puts("\nthe same scene file beside an OBJ file of positions and faces only");
    report(bare_sheet_ways, sizes);
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
}
