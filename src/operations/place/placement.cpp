#include "operations/place/placement.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ulk3d {

namespace {

struct angle_t {
    double cosine, sine;
};

/// Exact for multiples of 90 degrees. `degrees` lies between -360 and 360.
angle_t angle_of(double degrees) {
    if (std::fmod(degrees, 90) != 0) {
        const double radians = degrees * (std::numbers::pi / 180);
        return {std::cos(radians), std::sin(radians)};
    }
    constexpr std::array<angle_t, 4> quarters = {{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};
    return quarters[static_cast<std::size_t>(degrees / 90 + 4) % 4];
}

}  // namespace

void placement_t::move(const position_t& by) {
    if (by != position_t{})
        parts.push_back({part_t::kind_t::move, 0, by});
}

void placement_t::turn(const position_t& degrees) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double angle = std::fmod(degrees[axis], 360);
        const auto [cosine, sine] = angle_of(angle);
        if (angle != 0)
            parts.push_back({part_t::kind_t::turn, axis, {cosine, sine}});
    }
}

void placement_t::scale(double factor) {
    if (factor != 1)
        parts.push_back({part_t::kind_t::scale, 0, {factor}});
}

bool placement_t::has_turns() const {
    return std::ranges::find(parts, part_t::kind_t::turn, &part_t::kind) != parts.end();
}

position_t placement_t::after(const part_t& part, position_t p) {
    switch (part.kind) {
        case part_t::kind_t::move:
            for (std::size_t axis = 0; axis < 3; ++axis)
                if (part.values[axis] != 0)  // a zero added would change the sign of another
                    p[axis] += part.values[axis];
            return p;
        case part_t::kind_t::scale:
            return {p[0] * part.values[0], p[1] * part.values[0], p[2] * part.values[0]};
        case part_t::kind_t::turn:
            break;
    }
    const auto [cosine, sine, unused] = part.values;
    double& first = p[(part.axis + 1) % 3];
    double& second = p[(part.axis + 2) % 3];
    const position_t before = p;
    const double from_first = before[(part.axis + 1) % 3], from_second = before[(part.axis + 2) % 3];
    // Infinite coordinates times 0 would not be numbers.
    if (sine == 0) {
        first = -from_first;
        second = -from_second;
    } else if (cosine == 0) {
        first = -sine * from_second;
        second = sine * from_first;
    } else {
        first = cosine * from_first - sine * from_second;
        second = sine * from_first + cosine * from_second;
    }
    return p;
}

position_t placement_t::of(const pos3& position) const {
    position_t p{position.x, position.y, position.z};
    for (const part_t& part : parts)
        p = after(part, p);
    return p;
}

dir3 placement_t::of(const dir3& direction) const {
    position_t p{direction.x, direction.y, direction.z};
    for (const part_t& part : parts)
        if (part.kind == part_t::kind_t::turn)
            p = after(part, p);
    const auto [x, y, z] = rounded(p);
    return {x, y, z};
}

}  // namespace ulk3d
