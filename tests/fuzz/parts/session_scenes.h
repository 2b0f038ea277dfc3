#pragma once

#include <cstddef>
#include <string>

namespace ulk_test {

inline constexpr std::size_t session_scene_count = 8;

/// The text of a scene file of a few points, by number:
/// 0 a triangle, 1 a square in one strip, 2 a flat net of 2 by 2 points, 3 a curved net of 3 by 2 points,
/// 4 a box from -1/2 to 1/2, 5 a box from 0 to 1, 6 a mesh and a net, and an environment that names no map,
/// 7 strips with indices that no vertex has, marks in a row, repeated vertices and numbers that are none.
const std::string& session_scene(std::size_t number);

}  // namespace ulk_test
