#include "model/memory_budget.h"

#include <sys/resource.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace ulk3d {

namespace {

constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

/// The kernel's own estimate: free memory and what it can reclaim from its caches.
std::optional<std::uint64_t> available_by_kernel() {
    constexpr std::string_view key = "MemAvailable:";
    std::ifstream file("/proc/meminfo");
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with(key))
            continue;
        const std::size_t digits = line.find_first_not_of(' ', key.size());
        if (digits == std::string::npos)
            return std::nullopt;
        std::uint64_t kibibytes = 0;
        const auto [end, error] = std::from_chars(line.data() + digits, line.data() + line.size(), kibibytes);
        if (error != std::errc())
            return std::nullopt;
        return saturating_product(kibibytes, 1024);
    }
    return std::nullopt;
}

/// For systems without that estimate: only what is free right now.
std::optional<std::uint64_t> free_memory() {
    struct sysinfo info {};
    if (sysinfo(&info) != 0)
        return std::nullopt;
    return saturating_product(saturating_sum(info.freeram, info.bufferram), info.mem_unit);
}

/// What the process may still map under its own limit (`ulimit -v`), which drivers are not prepared to run
/// into.
std::uint64_t address_space_left() {
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return most;
    std::string statm;
    std::getline(std::ifstream("/proc/self/statm"), statm);
    std::uint64_t mapped_pages = 0;
    std::from_chars(statm.data(), statm.data() + statm.size(), mapped_pages);
    const std::uint64_t mapped =
        saturating_product(mapped_pages, static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
    return limit.rlim_cur - std::min<std::uint64_t>(mapped, limit.rlim_cur);
}

}  // namespace

std::uint64_t saturating_product(std::uint64_t a, std::uint64_t b) {
    std::uint64_t product = 0;
    return __builtin_mul_overflow(a, b, &product) ? most : product;
}

std::uint64_t saturating_sum(std::uint64_t a, std::uint64_t b) {
    std::uint64_t sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? most : sum;
}

std::uint64_t memory_budget() {
    auto available = available_by_kernel();
    if (!available)
        available = free_memory();
    return std::min(available.value_or(most), address_space_left()) / 2;
}

bool fits_into_memory(std::uint64_t bytes) {
    return bytes <= memory_budget();
}

}  // namespace ulk3d
