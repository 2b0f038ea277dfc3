#pragma once

#include <cstddef>
#include <cstdint>

#include "model/math/records.h"

/// The layout of a binary STL file: a header of free text, the number of triangles, and the triangles without
/// padding between them. All numbers are little-endian, like those of the machine.
namespace ulk3d::stl {

inline constexpr std::size_t header_size = 80;
using count_t = std::uint32_t;
inline constexpr std::size_t prologue_size = header_size + sizeof(count_t);

/// The part of a triangle's record that is used here.
struct triangle_t {
    dir3 normal;
    pos3 a, b, c;
};
static_assert(sizeof(triangle_t) == 48);

/// The record also has the attribute bytes that follow each triangle.
inline constexpr std::size_t attribute_size = 2;
inline constexpr std::size_t record_size = sizeof(triangle_t) + attribute_size;

}  // namespace ulk3d::stl
