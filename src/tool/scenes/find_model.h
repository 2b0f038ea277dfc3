#pragma once

#include <cstdint>
#include <string>

#include "model/scene.h"

namespace ulktool {

/// The model at a place of the list, from 0. Null, after a line on the standard error stream that begins with
/// the scene's path and names the number, when the scene has no model there.
ulk3d::model_entry_t* find_model_or_tell(const ulk3d::scene_t& scene, const std::string& path,
                                         std::uint32_t number);

/// The same, and null for a NURBS model.
ulk3d::model_entry_t* find_polygon_model_or_tell(const ulk3d::scene_t& scene, const std::string& path,
                                                 std::uint32_t number);

/// "there is no vertex 7; there are 4, from 0".
std::string none_of(const std::string& things, std::uint64_t number, std::uint64_t count);

}  // namespace ulktool
