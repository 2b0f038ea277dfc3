#include "model/vertex.h"

#include <array>
#include <bit>
#include <functional>

namespace ulk3d {

namespace {

using nine_floats = std::array<float, 9>;

/// Applies `operation` to each pair of floats of two records of nine.
template <typename Record, typename Operation>
Record by_component(const Record& a, const Record& b, Operation operation) {
    auto result = std::bit_cast<nine_floats>(a);
    const auto other = std::bit_cast<nine_floats>(b);
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = operation(result[i], other[i]);
    return std::bit_cast<Record>(result);
}

template <typename Record>
Record scaled(const Record& record, float factor) {
    auto result = std::bit_cast<nine_floats>(record);
    for (float& component : result)
        component *= factor;
    return std::bit_cast<Record>(result);
}

}  // namespace

vertex_t operator+(const vertex_t& a, const vertex_t& b) {
    return by_component(a, b, std::plus());
}

vertex_t operator-(const vertex_t& a, const vertex_t& b) {
    return by_component(a, b, std::minus());
}

vertex_t operator*(const vertex_t& a, float factor) {
    return scaled(a, factor);
}

frame_t operator+(const frame_t& a, const frame_t& b) {
    return by_component(a, b, std::plus());
}

frame_t operator-(const frame_t& a, const frame_t& b) {
    return by_component(a, b, std::minus());
}

frame_t operator*(const frame_t& a, float factor) {
    return scaled(a, factor);
}

}  // namespace ulk3d
