#pragma once

#include <string>

#include "formats/scene_files.h"
#include "model/scene.h"

namespace ulktool {

/// Saves a scene in the format of the path's ending; "-" writes scene text to the standard output stream.
/// False, after a line on the standard error stream, when not all bytes have been written.
[[nodiscard]] bool save_scene_or_tell(ulk3d::scene_t& scene, const std::string& path,
                                      ulk3d::model_spacing_t spacing = ulk3d::model_spacing_t::none);

/// Saves the triangles of a scene as an STL file that is a text, likewise.
[[nodiscard]] bool save_text_stl_or_tell(const ulk3d::scene_t& scene, const std::string& path);

}  // namespace ulktool
