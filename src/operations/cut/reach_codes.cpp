#include "operations/cut/reach_codes.h"

#include <algorithm>

namespace ulk3d {

reach_codes_t::reach_codes_t(std::span<const vertex_t> vertices, const box3& reach) : codes(vertices.size()) {
    const pos3& low = reach.low;
    const pos3& high = reach.high;
    std::ranges::transform(vertices, codes.begin(), [&](const vertex_t& vertex) {
        const pos3& p = vertex.position;
        const int sides = int{p.x < low.x} | int{p.x > high.x} << 1 | int{p.y < low.y} << 2 |
                          int{p.y > high.y} << 3 | int{p.z < low.z} << 4 | int{p.z > high.z} << 5;
        return static_cast<std::uint8_t>(sides);
    });
}

}  // namespace ulk3d
