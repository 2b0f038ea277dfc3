#pragma once

#include "model/math/matrices.h"
#include "model/math/records.h"

/// Quaternions (scalar first) and rotation records (degrees about an axis). The resulting matrices are for
/// row vectors and have (0, 0, 0, 1) as last row and last column.
namespace ulk3d {

inline constexpr rot3 rot3_identity{0, {0, 0, 1}};

/// Hamilton product.
qua qua_mul(const qua& a, const qua& b);

/// The x, y, z of the product of a quaternion and (0, v), with the quaternion on either side.
dir3 qua_mul_dir(const qua& q, const dir3& v);
dir3 dir_mul_qua(const dir3& v, const qua& q);

/// Requires a unit quaternion.
mtx3w qua_to_mtx(const qua& q);

/// The axis must have unit length; it is not normalised.
qua rot3_to_qua(const rot3& r);

/// Requires a unit quaternion. An axis that would be exactly (0, 0, 0) becomes (0, 0, 1).
rot3 qua_to_rot3(const qua& q);

/// See `rotation`.
inline mtx3w rot3_to_mtx(const rot3& r) {
    return rotation(r.angle, r.axis);
}

/// Requires a rotation matrix. When the angle is not finite (for a trace outside -1..3) the result is the
/// identity. The axis is derived from the skew part of m, so that it is (0, 0, 0) where there is none (at
/// angle 0).
rot3 mtx_to_rot3(const mtx3w& m);

/// The rotation that turns unit vector a into unit vector b. Vectors without a common normal, parallel or
/// opposite ones, give the identity.
rot3 rot3_from_dirs(const dir3& a, const dir3& b);

/// The rotation that turns a unit normal into (0, 0, 1), so that a plane with this normal becomes level.
mtx3w rotation_to_level(const dir3& unit_normal);

/// s = a dot b, d = (a cross b) / s; d is not divided when s is 0.
srt3 srt3_from_dirs(const dir3& a, const dir3& b);

}  // namespace ulk3d
