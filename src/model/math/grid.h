#pragma once

#include <cmath>

#include "model/math/records.h"

/// Rounding to multiples of a grid step g, which is above 0: of a number, or of a point, with one step for
/// all axes or one step per axis.
namespace ulk3d {

/// The multiple of g nearest to v on the side of zero.
inline float grid_trunc(float v, float g) {
    // Adding 0 turns the -0 of a small negative quotient into 0, so that no coordinate is shown as "-0".
    return (std::trunc(v / g) + 0.0F) * g;
}

/// `grid_trunc`, raised by one step when v is above it.
inline float grid_ceil(float v, float g) {
    const float below = grid_trunc(v, g);
    return v > below ? below + g : below;
}

/// The grid snap of dragged points. Positive values go to the nearest multiple, half up; negative values go
/// toward zero in whole steps. Users place points by this asymmetry, so it stays.
inline float grid_snap(float v, float g) {
    return grid_ceil(grid_trunc(v, g / 2), g);
}

inline pos3 grid_trunc(const pos3& v, const dir3& g) {
    return {grid_trunc(v.x, g.x), grid_trunc(v.y, g.y), grid_trunc(v.z, g.z)};
}
inline pos3 grid_ceil(const pos3& v, const dir3& g) {
    return {grid_ceil(v.x, g.x), grid_ceil(v.y, g.y), grid_ceil(v.z, g.z)};
}
inline pos3 grid_snap(const pos3& v, const dir3& g) {
    return {grid_snap(v.x, g.x), grid_snap(v.y, g.y), grid_snap(v.z, g.z)};
}

inline pos3 grid_trunc(const pos3& v, float g) {
    return grid_trunc(v, dir3{g, g, g});
}
inline pos3 grid_ceil(const pos3& v, float g) {
    return grid_ceil(v, dir3{g, g, g});
}
inline pos3 grid_snap(const pos3& v, float g) {
    return grid_snap(v, dir3{g, g, g});
}

}  // namespace ulk3d
