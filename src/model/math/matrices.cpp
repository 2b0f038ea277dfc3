#include "model/math/matrices.h"

#include <cmath>
#include <cstddef>

#include "model/math/angles.h"
#include "model/math/vectors.h"

namespace ulk3d {
namespace {

/// The determinant of m without one row and one column.
float minor(const mtx3w& m, std::size_t row, std::size_t column) {
    std::array<float, 9> e{};
    std::size_t n = 0;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
            if (i != row && j != column)
                e[n++] = m[4 * i + j];
    return e[0] * (e[4] * e[8] - e[5] * e[7]) - e[1] * (e[3] * e[8] - e[5] * e[6]) +
           e[2] * (e[3] * e[7] - e[4] * e[6]);
}

float cofactor(const mtx3w& m, std::size_t row, std::size_t column) {
    const float d = minor(m, row, column);
    return (row + column) % 2 == 0 ? d : -d;
}

}  // namespace

mtx3w operator*(const mtx3w& left, const mtx3w& right) {
    mtx3w out;
    for (std::size_t i = 0; i < 16; i += 4) {
        const vec3w row = vec_times_mtx({left[i], left[i + 1], left[i + 2], left[i + 3]}, right);
        out[i] = row.x;
        out[i + 1] = row.y;
        out[i + 2] = row.z;
        out[i + 3] = row.w;
    }
    return out;
}

mtx3w transpose(const mtx3w& m) {
    mtx3w out;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
            out[4 * j + i] = m[4 * i + j];
    return out;
}

float determinant(const mtx3w& m) {
    float sum = 0;
    for (std::size_t j = 0; j < 4; ++j)
        sum += m[j] * cofactor(m, 0, j);
    return sum;
}

mtx3w inverse(const mtx3w& m) {
    const float d = determinant(m);
    mtx3w out;
    for (std::size_t i = 0; i < 4; ++i)
        for (std::size_t j = 0; j < 4; ++j)
            out[4 * j + i] = cofactor(m, i, j) / d;
    return out;
}

mtx3w translation(const dir3& offset) {
    mtx3w out = mtx_identity;
    out[12] = offset.x;
    out[13] = offset.y;
    out[14] = offset.z;
    return out;
}

mtx3w scale(float x, float y, float z) {
    return {{x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1}};
}

mtx3w rotation(float degrees, const dir3& axis) {
    const float angle = to_radians(degrees);
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    const dir3 n = normalize(axis);
    const float u[3] = {n.x, n.y, n.z};
    // The cross product with the axis as a matrix for row vectors.
    const float turn[3][3] = {{0, n.z, -n.y}, {-n.z, 0, n.x}, {n.y, -n.x, 0}};
    mtx3w out = mtx_identity;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) {
            const float along = u[i] * u[j];
            const float unit = i == j ? 1.0F : 0.0F;
            out[4 * i + j] = along + c * (unit - along) + s * turn[i][j];
        }
    return out;
}

}  // namespace ulk3d
