#include "utils/memory/free_memory.h"

#include <sys/resource.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <limits>
#include <optional>
#include <string_view>

#include "utils/memory/memory_budget.h"

namespace libutils {

namespace {

constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

/// The number at the start of a text; nothing where there is none.
std::optional<std::uint64_t> number_in(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

/// The number behind `key` in a file that has one on each line.
std::optional<std::uint64_t> number_of_key(const std::string& path, std::string_view key) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(key))
            return number_in(std::string_view(line).substr(key.size()));
    return std::nullopt;
}

/// The only number of a file; nothing for a word, such as "max".
std::optional<std::uint64_t> number_of_file(const std::string& path) {
    std::string line;
    std::getline(std::ifstream(path), line);
    return number_in(line);
}

/// The kernel's own estimate: free memory and what it can reclaim from its caches.
std::optional<std::uint64_t> available_by_kernel() {
    const auto kibibytes = number_of_key("/proc/meminfo", "MemAvailable:");
    return kibibytes ? std::optional(size_product(*kibibytes, 1024)) : std::nullopt;
}

/// For systems without that estimate: only what is free right now.
std::optional<std::uint64_t> unused_memory() {
    struct sysinfo info {};
    if (sysinfo(&info) != 0)
        return std::nullopt;
    return size_product(size_sum(info.freeram, info.bufferram), info.mem_unit);
}

std::uint64_t address_space_left() {
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return most;
    const std::uint64_t mapped_pages = number_of_file("/proc/self/statm").value_or(0);
    const std::uint64_t mapped =
        size_product(mapped_pages, static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
    return limit.rlim_cur - std::min<std::uint64_t>(mapped, limit.rlim_cur);
}

/// The files in a group's folder, and the key in `stat` for the cached files that can be dropped.
struct group_files_t {
    const char* limit;
    const char* usage;
    const char* stat;
    std::string_view droppable;
};

constexpr group_files_t files_of_version_2{"/memory.max", "/memory.current", "/memory.stat",
                                           "inactive_file "};
constexpr group_files_t files_of_version_1{"/memory.limit_in_bytes", "/memory.usage_in_bytes", "/memory.stat",
                                           "total_inactive_file "};

std::uint64_t left_in_group(const std::string& folder, const group_files_t& files) {
    const auto limit = number_of_file(folder + files.limit);
    if (!limit)
        return most;
    const std::uint64_t usage = number_of_file(folder + files.usage).value_or(0);
    const std::uint64_t droppable = number_of_key(folder + files.stat, files.droppable).value_or(0);
    const std::uint64_t held = usage - std::min(droppable, usage);
    return *limit - std::min(held, *limit);
}

/// The least that is left in a group and in those around it. A container may see its own group as the root,
/// whatever its path is called.
std::uint64_t left_in_groups(const std::string& root, std::string path, const group_files_t& files) {
    std::uint64_t left = left_in_group(root, files);
    while (!path.empty() && path != "/") {
        left = std::min(left, left_in_group(root + path, files));
        path.erase(std::min(path.rfind('/'), path.size()));
    }
    return left;
}

/// True when a name is in a list that is divided by commas.
bool is_in_list(std::string_view list, std::string_view name) {
    while (!list.empty()) {
        const std::string_view first = list.substr(0, list.find(','));
        if (first == name)
            return true;
        list.remove_prefix(std::min(first.size() + 1, list.size()));
    }
    return false;
}

}  // namespace

std::uint64_t control_group_memory(const std::string& proc, const std::string& groups) {
    std::uint64_t left = most;
    std::ifstream file(proc + "/self/cgroup");
    // Each line is "number:controllers:path"; version 2 has the number 0 and no controllers.
    for (std::string line; std::getline(file, line);) {
        const std::size_t first = line.find(':');
        const std::size_t second = first == std::string::npos ? first : line.find(':', first + 1);
        if (second == std::string::npos)
            continue;
        const std::string controllers = line.substr(first + 1, second - first - 1);
        const std::string path = line.substr(second + 1);
        if (controllers.empty())
            left = std::min(left, left_in_groups(groups, path, files_of_version_2));
        else if (is_in_list(controllers, "memory"))
            left = std::min(left, left_in_groups(groups + "/memory", path, files_of_version_1));
    }
    return left;
}

std::uint64_t free_memory() {
    auto available = available_by_kernel();
    if (!available)
        available = unused_memory();
    return std::min(
        {available.value_or(most), control_group_memory("/proc", "/sys/fs/cgroup"), address_space_left()});
}

}  // namespace libutils
