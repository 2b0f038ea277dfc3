#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <utility>

#include "support/cut_area.h"

namespace ulk_test {

/// How many edges more run one way than the other, between the same two positions to the last bit, over all
/// pairs of positions: 0 for a surface without any gap, however narrow. Triangles with two corners at one
/// place do not count.
inline std::size_t count_edges_without_partner(const strip_mesh_t& mesh) {
    using place_t = std::array<double, 3>;
    std::map<std::pair<place_t, place_t>, int> surplus;
    const auto place_of = [](const point_t& p) { return place_t{p.x, p.y, p.z}; };
    for (const face_t& face : faces_of(mesh))
        for (std::size_t k = 0; k < 3; ++k) {
            const place_t a = place_of(face[k]), b = place_of(face[(k + 1) % 3]);
            if (a < b)
                ++surplus[{a, b}];
            else
                --surplus[{b, a}];
        }
    std::size_t count = 0;
    for (const auto& [ends, sum] : surplus)
        count += ends.first == ends.second ? 0 : static_cast<std::size_t>(sum < 0 ? -sum : sum);
    return count;
}

}  // namespace ulk_test
