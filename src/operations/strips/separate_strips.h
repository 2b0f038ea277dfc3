#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <vector>

namespace ulk3d {

/// Strips in which no triangle of a set shares an element with one outside the set.
struct separated_strips_t {
    std::vector<std::uint32_t> elements;
    std::vector<std::size_t> touched;  ///< positions in `elements` of the set's triangles, ascending
};

/// Cuts triangle strips wherever a triangle in `selected` follows one that is not, or the other way round, so
/// that the two no longer have an element in common.
///
/// The triangles keep their winding and their order: polygon ids mean the same afterwards. Ids without a
/// triangle are ignored. What lies between strips stays, including indices at or above `vertex_count`. Strips
/// that are already separated are left as they are. The time is linear in the sizes.
///
/// Worked example: 0 1 2 3 4 with {1} selected gives 0 1 2 | 2 1 3 | 2 3 4, where | is the restart mark.
separated_strips_t separate_strips(std::span<const std::uint32_t> elements, std::uint64_t vertex_count,
                                   const std::set<std::uint32_t>& selected);

}  // namespace ulk3d
