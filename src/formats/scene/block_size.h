#pragma once

#include <cstdint>

#include "model/memory_budget.h"

namespace ulk3d {

/// What a block claims by its opening line: the bytes that its arrays take up, and the bytes that the lines
/// which fill them have at least. Saturated: what a file claims may be any number.
struct block_size_t {
    std::uint64_t arrays = 0;
    std::uint64_t lines = 0;
};

/// True when the rest of a file can fill what a block claims. Arrays of a mebibyte are granted unseen, so
/// that a small block that lacks some lines hears which ones.
[[nodiscard]] inline bool is_within_reach(const block_size_t& size, std::uint64_t rest_of_file) {
    constexpr std::uint64_t granted = std::uint64_t{1} << 20;
    // A last line may lack its line feed.
    return size.arrays <= granted || size.lines <= saturating_sum(rest_of_file, 1);
}

}  // namespace ulk3d
