#include "operations/cut/unit_space.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "model/math/vectors.h"

namespace ulk3d {
std::optional<box3> box_of(const strip_mesh_t& mesh) {
    // Vertices are in several triangles: to mark them is faster than to compare their positions each time.
    std::vector<std::uint8_t> is_used(mesh.vertices.size());
    for (const std::uint32_t index : mesh.elements)
        if (index < is_used.size())
            is_used[index] = 1;
    constexpr float infinity = std::numeric_limits<float>::infinity();
    box3 box{{infinity, infinity, infinity}, {-infinity, -infinity, -infinity}};
    for (std::size_t n = 0; n < is_used.size(); ++n) {
        const pos3& p = mesh.vertices[n].position;
        if (is_used[n] != 0 && is_finite(p))
            box = {component_min(box.low, p), component_max(box.high, p)};
    }
    return box.low.x <= box.high.x ? std::optional(box) : std::nullopt;
}

box3 box_around(const box3& a, const box3& b) {
    return {component_min(a.low, b.low), component_max(a.high, b.high)};
}

unit_space_t::unit_space_t(const box3& box)
    : middle{(double{box.low.x} + box.high.x) / 2, (double{box.low.y} + box.high.y) / 2,
             (double{box.low.z} + box.high.z) / 2} {
    const double side = std::max(
        {double{box.high.x} - box.low.x, double{box.high.y} - box.low.y, double{box.high.z} - box.low.z});
    int exponent = 0;
    if (side > 0)
        (void)std::frexp(side, &exponent);
    scale = std::ldexp(1, -exponent);
}

box3 unit_space_t::widened(const box3& box, double room) const {
    const auto low = [&](float v) { return static_cast<float>(double{v} - room / scale); };
    const auto high = [&](float v) { return static_cast<float>(double{v} + room / scale); };
    return {{low(box.low.x), low(box.low.y), low(box.low.z)},
            {high(box.high.x), high(box.high.y), high(box.high.z)}};
}

}  // namespace ulk3d
