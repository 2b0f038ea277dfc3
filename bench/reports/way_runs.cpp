#include "way_runs.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace {

constexpr int runs = 5;

std::string program_of(const way_t& way) {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() /
           (std::string("load_with_") + way.name);
}

/// What the process has printed, after its end; nothing when it has failed. Without a path to save to it only
/// loads.
std::string output_of(const std::string& program, const std::string& path, const char* saved, rusage& used) {
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("There is no pipe.");
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        execl(program.c_str(), program.c_str(), path.c_str(), saved, nullptr);
        _exit(2);
    }
    close(ends[1]);
    std::string text(128, '\0');
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(0, read(ends[0], text.data(), text.size()))));
    close(ends[0]);
    int status = 0;
    return wait4(child, &status, 0, &used) == child && status == 0 ? text : std::string();
}

/// Holds the number of triangles that the process tells against `triangles`.
cost_t cost_of(const way_t& way, const std::string& path, std::uint64_t triangles, const char* saved) {
    rusage used{};
    const std::string text = output_of(program_of(way), path, saved, used);
    char* end = nullptr;
    cost_t cost{.peak_mb = static_cast<double>(used.ru_maxrss) * 1024 / 1e6};
    cost.milliseconds = std::strtod(text.c_str(), &end);
    cost.processor_milliseconds = std::strtod(end, &end);
    cost.fsync_milliseconds = std::strtod(end, &end);
    if (std::strtoull(end, nullptr, 10) != triangles)
        throw std::runtime_error(std::string("load_with_") + way.name + " has failed on " + path);
    return cost;
}

cost_t cost_of_load(const way_t& way, const made_file_t& file) {
    return cost_of(way, file.path, file.triangles, nullptr);
}

/// The saved file is read back.
cost_t cost_of_save(const way_t& way, const made_file_t& file) {
    const cost_t cost = cost_of(way, file.path, file.triangles, file.saved_path.c_str());
    cost_of(way, file.saved_path, file.triangles, nullptr);
    std::filesystem::remove(file.saved_path);
    return cost;
}

cost_t least_of(const cost_t& a, const cost_t& b) {
    return {std::min(a.milliseconds, b.milliseconds),
            std::min(a.processor_milliseconds, b.processor_milliseconds),
            std::min(a.fsync_milliseconds, b.fsync_milliseconds), std::min(a.peak_mb, b.peak_mb)};
}

}  // namespace

std::vector<way_t> ways_here(std::span<const way_t> ways) {
    std::vector<way_t> here;
    std::ranges::copy_if(ways, std::back_inserter(here),
                         [](const way_t& way) { return access(program_of(way).c_str(), X_OK) == 0; });
    return here;
}

made_file_t::made_file_t(const kind_t& kind, std::uint64_t wanted_triangles)
    : folder(std::filesystem::temp_directory_path() /
             ("ulk-load-" + std::to_string(getpid()) + kind.suffix)) {
    std::filesystem::create_directory(folder);
    path = folder + "/mesh" + kind.suffix;
    saved_path = folder + "/saved" + kind.suffix;
    triangles = kind.write(path, wanted_triangles);
    megabytes = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
}

made_file_t::~made_file_t() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

files_t files_for(std::span<const way_t> ways, std::uint64_t triangles) {
    files_t files;
    for (const way_t& way : ways)
        files.try_emplace(way.kind.suffix, way.kind, triangles);
    return files;
}

std::vector<cost_t> least_costs(std::span<const way_t> ways, const files_t& files, task_t task) {
    const auto cost = [&](const way_t& way) {
        const made_file_t& file = files.at(way.kind.suffix);
        return task == task_t::load ? cost_of_load(way, file) : cost_of_save(way, file);
    };
    std::vector<cost_t> least;
    std::ranges::transform(ways, std::back_inserter(least), cost);
    for (int run = 1; run < runs; ++run)
        for (std::size_t n = 0; n < ways.size(); ++n)
            least[n] = least_of(least[n], cost(ways[n]));
    return least;
}
