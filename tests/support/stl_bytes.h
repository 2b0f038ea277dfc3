#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/math/records.h"

/// Binary STL files for tests, assembled and taken apart byte by byte.
namespace ulk_test {

struct stl_triangle_t {
    ulk3d::dir3 normal;
    ulk3d::pos3 a, b, c;
    std::uint16_t attribute = 0;
    bool operator==(const stl_triangle_t&) const = default;
};

/// A triangle in the plane z = `z`, facing +z.
stl_triangle_t flat_triangle(float z = 0);

/// The four bytes of a count, and the fifty of a triangle.
std::string stl_count(std::uint32_t count);
std::string stl_record(const stl_triangle_t& triangle);

/// A whole file with a blank header, and with the correct count or the given one.
std::string stl_file(const std::vector<stl_triangle_t>& triangles);
std::string stl_file(const std::vector<stl_triangle_t>& triangles, std::uint32_t count);

/// The triangles of a file. Fails the test when its size does not match its count.
std::vector<stl_triangle_t> stl_triangles(std::string_view file);

}  // namespace ulk_test
