#pragma once

#include "model/math/records.h"

/// 4 by 4 matrices for row vectors, in single precision: p times A times B is p times (A times B).
namespace ulk3d {

inline constexpr mtx3w mtx_identity{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

/// v times m: the product that transforms.
constexpr vec3w vec_times_mtx(const vec3w& v, const mtx3w& m) {
    const auto& e = m.m;
    return {v.x * e[0] + v.y * e[4] + v.z * e[8] + v.w * e[12],
            v.x * e[1] + v.y * e[5] + v.z * e[9] + v.w * e[13],
            v.x * e[2] + v.y * e[6] + v.z * e[10] + v.w * e[14],
            v.x * e[3] + v.y * e[7] + v.z * e[11] + v.w * e[15]};
}

/// m times the column v.
constexpr vec3w mtx_times_vec(const mtx3w& m, const vec3w& v) {
    const auto& e = m.m;
    return {e[0] * v.x + e[1] * v.y + e[2] * v.z + e[3] * v.w,
            e[4] * v.x + e[5] * v.y + e[6] * v.z + e[7] * v.w,
            e[8] * v.x + e[9] * v.y + e[10] * v.z + e[11] * v.w,
            e[12] * v.x + e[13] * v.y + e[14] * v.z + e[15] * v.w};
}

/// Transforms a point by an affine matrix (last column 0, 0, 0, 1), translation included, without division by
/// w.
constexpr pos3 transform_point(const pos3& p, const mtx3w& m) {
    const vec3w v = vec_times_mtx({p.x, p.y, p.z, 1}, m);
    return {v.x, v.y, v.z};
}

/// The product of `left` and `right`: as a transformation, `left` is applied first.
mtx3w operator*(const mtx3w& left, const mtx3w& right);

mtx3w transpose(const mtx3w& m);

/// Computed by cofactors over 3 by 3 minors, along the first row.
float determinant(const mtx3w& m);

/// The transposed cofactor matrix divided by the determinant. A singular matrix gives infinities and
/// not-a-numbers.
mtx3w inverse(const mtx3w& m);

mtx3w translation(const dir3& offset);
mtx3w scale(float x, float y, float z);

/// Rotates by an angle about an axis through the origin, counter-clockwise for a viewer whom the axis points
/// at. The axis need not be of unit length; a zero axis is allowed at angle 0.
mtx3w rotation(float degrees, const dir3& axis);

}  // namespace ulk3d
