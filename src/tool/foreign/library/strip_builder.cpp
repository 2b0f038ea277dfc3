#include "tool/foreign/library/strip_builder.h"

#include <algorithm>
#include <optional>

#include "render/gl/element_array.h"

namespace ulktool {

namespace {

/// The corner of a triangle that follows the edge from `first` to `second`; nothing when it has no such edge.
std::optional<std::uint32_t> corner_behind(const corners_t& triangle, std::uint32_t first,
                                           std::uint32_t second) {
    for (std::size_t i = 0; i < 3; ++i)
        if (triangle[i] == first && triangle[(i + 1) % 3] == second)
            return triangle[(i + 2) % 3];
    return std::nullopt;
}

}  // namespace

void strip_builder_t::add(const corners_t& triangle) {
    if (!continue_strip(triangle))
        begin_strip(triangle);
}

void strip_builder_t::begin_strip(const corners_t& triangle) {
    if (strip_size > 0)
        elements.push_back(ulk3d::restart_mark);
    elements.insert(elements.end(), triangle.begin(), triangle.end());
    strip_size = 3;
}

bool strip_builder_t::continue_strip(const corners_t& triangle) {
    if (strip_size == 0)
        return false;
    const auto strip_end = elements.end();
    // The edge that a further element makes a triangle with, in the direction that keeps the winding.
    const auto next_corner = [&](std::uint32_t before_last, std::uint32_t last) {
        const bool swaps = strip_size % 2 == 1;
        return swaps ? corner_behind(triangle, last, before_last)
                     : corner_behind(triangle, before_last, last);
    };
    std::optional<std::uint32_t> corner = next_corner(strip_end[-2], strip_end[-1]);
    // A strip of one triangle can still begin with another of its corners.
    for (int turn = 0; strip_size == 3 && !corner && turn < 2; ++turn) {
        std::rotate(strip_end - 3, strip_end - 2, strip_end);
        corner = next_corner(strip_end[-2], strip_end[-1]);
    }
    if (!corner) {
        if (strip_size == 3)
            std::rotate(strip_end - 3, strip_end - 2, strip_end);
        return false;
    }
    elements.push_back(*corner);
    ++strip_size;
    return true;
}

std::vector<std::uint32_t> strip_builder_t::finish() {
    if (strip_size > 0)
        elements.push_back(ulk3d::restart_mark);
    strip_size = 0;
    return std::move(elements);
}

}  // namespace ulktool
