#include "model/math/rotations.h"

#include <algorithm>
#include <cmath>

#include "model/math/angles.h"
#include "model/math/vectors.h"

namespace ulk3d {
namespace {

/// The angle of a cosine, in radians; values that rounding has brought outside -1..1 must not give
/// not-a-number.
float safe_acos(float cosine) {
    return std::acos(std::clamp(cosine, -1.0F, 1.0F));
}

}  // namespace

qua qua_mul(const qua& a, const qua& b) {
    return {a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z, a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
            a.w * b.y + a.y * b.w + a.z * b.x - a.x * b.z, a.w * b.z + a.z * b.w + a.x * b.y - a.y * b.x};
}

dir3 qua_mul_dir(const qua& q, const dir3& v) {
    const qua p = qua_mul(q, {0, v.x, v.y, v.z});
    return {p.x, p.y, p.z};
}

dir3 dir_mul_qua(const dir3& v, const qua& q) {
    const qua p = qua_mul({0, v.x, v.y, v.z}, q);
    return {p.x, p.y, p.z};
}

mtx3w qua_to_mtx(const qua& q) {
    const float w2 = q.w * q.w, x2 = q.x * q.x, y2 = q.y * q.y, z2 = q.z * q.z;
    mtx3w m;
    m[0] = w2 + x2 - y2 - z2;
    m[1] = 2 * (q.x * q.y + q.w * q.z);
    m[2] = 2 * (q.x * q.z - q.w * q.y);
    m[4] = 2 * (q.x * q.y - q.w * q.z);
    m[5] = w2 - x2 + y2 - z2;
    m[6] = 2 * (q.y * q.z + q.w * q.x);
    m[8] = 2 * (q.x * q.z + q.w * q.y);
    m[9] = 2 * (q.y * q.z - q.w * q.x);
    m[10] = w2 - x2 - y2 + z2;
    m[15] = 1;
    return m;
}

qua rot3_to_qua(const rot3& r) {
    const float half = static_cast<float>(static_cast<double>(r.angle) * 0.5 * 0.017453292519943);
    const float s = std::sin(half);
    return {std::cos(half), r.axis.x * s, r.axis.y * s, r.axis.z * s};
}

rot3 qua_to_rot3(const qua& q) {
    const dir3 axis = normalize(dir3{q.x, q.y, q.z});
    return {to_degrees(2 * safe_acos(q.w)), axis == dir3{} ? rot3_identity.axis : axis};
}

rot3 mtx_to_rot3(const mtx3w& m) {
    const float angle = to_degrees(std::acos((m[0] + m[5] + m[10] - 1) / 2));
    if (!std::isfinite(angle))
        return rot3_identity;
    return {angle, normalize(dir3{m[6] - m[9], m[8] - m[2], m[1] - m[4]})};
}

rot3 rot3_from_dirs(const dir3& a, const dir3& b) {
    const dir3 normal = cross(a, b);
    if (length(normal) == 0)
        return rot3_identity;
    return {to_degrees(safe_acos(dot(a, b))), normalize(normal)};
}

mtx3w rotation_to_level(const dir3& unit_normal) {
    const dir3 up{0, 0, 1};
    const bool points_down = unit_normal.z < 0 && length(cross(unit_normal, up)) == 0;
    // rot3_from_dirs finds no axis for opposite vectors and returns the identity, which would leave the
    // outline of a downward triangle running clockwise: nothing would ever count as inside it. Any half turn
    // about a level axis will do.
    if (points_down)
        return rotation(180, {1, 0, 0});
    return rot3_to_mtx(rot3_from_dirs(unit_normal, up));
}

srt3 srt3_from_dirs(const dir3& a, const dir3& b) {
    const float s = dot(a, b);
    const dir3 d = cross(a, b);
    return {s, s == 0 ? d : d / s};
}

}  // namespace ulk3d
