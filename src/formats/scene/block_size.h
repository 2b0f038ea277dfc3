#pragma once

#include <cstdint>

#include "utils/memory/memory_budget.h"

namespace ulk3d {

/// What the opening line of a block announces: the bytes that its arrays take, and the fewest bytes that the
/// lines which fill them can have. Computed with saturation, since a file may announce any number.
struct block_size_t {
    std::uint64_t arrays = 0;
    std::uint64_t lines = 0;
};

/// True when the rest of a file is long enough to fill the arrays that a block announces. Arrays of up to a
/// mebibyte always pass, so that for a small incomplete block the reader still reports which lines are
/// missing.
[[nodiscard]] inline bool is_within_reach(const block_size_t& size, std::uint64_t rest_of_file) {
    constexpr std::uint64_t granted = std::uint64_t{1} << 20;
    // A last line may lack its line feed.
    return size.arrays <= granted || size.lines <= libutils::size_sum(rest_of_file, 1);
}

}  // namespace ulk3d
