#pragma once

#include "model/math/matrices.h"
#include "model/math/records.h"

/// Quaternions (scalar first) and rotation records (degrees about an axis). The matrices that come out work
/// on row vectors and have (0, 0, 0, 1) as last row and column.
namespace ulk3d {

inline constexpr rot3 rot3_identity{0, {0, 0, 1}};

/// Hamilton product.
qua qua_mul(const qua& a, const qua& b);

/// The x, y, z of the product of a quaternion with (0, v), from either side.
dir3 qua_mul_dir(const qua& q, const dir3& v);
dir3 dir_mul_qua(const dir3& v, const qua& q);

/// Of a unit quaternion.
mtx3w qua_to_mtx(const qua& q);

/// The axis is taken as it is and has unit length.
qua rot3_to_qua(const rot3& r);

/// Of a unit quaternion. An axis that comes out as exactly (0, 0, 0) is (0, 0, 1).
rot3 qua_to_rot3(const qua& q);

/// See `rotation`.
inline mtx3w rot3_to_mtx(const rot3& r) {
    return rotation(r.angle, r.axis);
}

/// Of a rotation matrix. An angle that is not finite (a trace beyond -1..3) gives the identity. The axis
/// comes from the skew part of m, so that without one (an angle of 0) it is (0, 0, 0).
rot3 mtx_to_rot3(const mtx3w& m);

/// The rotation that turns unit vector a into unit vector b. Without a common normal, that is for parallel
/// and for opposite vectors, it is the identity.
rot3 rot3_from_dirs(const dir3& a, const dir3& b);

/// The rotation that turns a unit normal into (0, 0, 1), so that a plane with this normal becomes level.
mtx3w rotation_to_level(const dir3& unit_normal);

/// s = a dot b, d = (a cross b) / s; d is not divided when s is 0.
srt3 srt3_from_dirs(const dir3& a, const dir3& b);

}  // namespace ulk3d
