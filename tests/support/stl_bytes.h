#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/math/records.h"

/// Binary STL files for tests, put together and taken apart byte by byte.
namespace ulk_test {

struct stl_triangle_t {
    ulk3d::dir3 normal;
    ulk3d::pos3 a, b, c;
    std::uint16_t attribute = 0;
    bool operator==(const stl_triangle_t&) const = default;
};

/// A triangle in the plane z = `z` that looks along +z.
stl_triangle_t flat_triangle(float z = 0);

/// The four bytes of a count, the fifty of a triangle.
std::string stl_count(std::uint32_t count);
std::string stl_record(const stl_triangle_t& triangle);

/// A whole file under a blank header, with the right count or with the given one.
std::string stl_file(const std::vector<stl_triangle_t>& triangles);
std::string stl_file(const std::vector<stl_triangle_t>& triangles, std::uint32_t count);

/// What a file holds. Fails the test when its size does not agree with its count.
std::vector<stl_triangle_t> stl_triangles(std::string_view file);

}  // namespace ulk_test
