#include "support/stl_bytes.h"

#include <gtest/gtest.h>

#include <bit>

namespace ulk_test {

using namespace ulk3d;

namespace {

constexpr std::size_t header = 80;
constexpr std::size_t record = 50;

void put(std::string& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xffU);
}

void put(std::string& bytes, float x, float y, float z) {
    for (const float value : {x, y, z})
        put(bytes, std::bit_cast<std::uint32_t>(value), 4);
}

/// Reads numbers from the front of a record.
struct taker_t {
    std::string_view bytes;

    std::uint32_t integer(std::size_t count) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < count; ++i)
            value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
        bytes.remove_prefix(count);
        return value;
    }
    float number() { return std::bit_cast<float>(integer(4)); }
    template <typename Triple>
    Triple triple() {
        Triple result;
        result.x = number();
        result.y = number();
        result.z = number();
        return result;
    }
};

}  // namespace

stl_triangle_t flat_triangle(float z) {
    return {{0, 0, 1}, {0, 0, z}, {1, 0, z}, {0, 1, z}};
}

std::string stl_count(std::uint32_t count) {
    std::string bytes;
    put(bytes, count, 4);
    return bytes;
}

std::string stl_record(const stl_triangle_t& triangle) {
    std::string bytes;
    put(bytes, triangle.normal.x, triangle.normal.y, triangle.normal.z);
    for (const pos3& corner : {triangle.a, triangle.b, triangle.c})
        put(bytes, corner.x, corner.y, corner.z);
    put(bytes, triangle.attribute, 2);
    return bytes;
}

std::string stl_file(const std::vector<stl_triangle_t>& triangles) {
    return stl_file(triangles, static_cast<std::uint32_t>(triangles.size()));
}

std::string stl_file(const std::vector<stl_triangle_t>& triangles, std::uint32_t count) {
    std::string bytes = std::string(header, ' ') + stl_count(count);
    for (const stl_triangle_t& triangle : triangles)
        bytes += stl_record(triangle);
    return bytes;
}

std::vector<stl_triangle_t> stl_triangles(std::string_view file) {
    std::vector<stl_triangle_t> triangles;
    if (file.size() < header + 4) {
        ADD_FAILURE() << file.size() << " bytes are no STL file";
        return triangles;
    }
    taker_t taker{file.substr(header)};
    const std::uint32_t count = taker.integer(4);
    EXPECT_EQ(taker.bytes.size(), count * record);
    while (taker.bytes.size() >= record) {
        stl_triangle_t triangle;
        triangle.normal = taker.triple<dir3>();
        triangle.a = taker.triple<pos3>();
        triangle.b = taker.triple<pos3>();
        triangle.c = taker.triple<pos3>();
        triangle.attribute = static_cast<std::uint16_t>(taker.integer(2));
        triangles.push_back(triangle);
    }
    return triangles;
}

}  // namespace ulk_test
