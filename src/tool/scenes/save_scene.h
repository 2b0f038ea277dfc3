#pragma once

#include <string>

#include "formats/scene_files.h"
#include "model/scene.h"

namespace ulktool {

struct save_options_t {
    ulk3d::model_spacing_t spacing = ulk3d::model_spacing_t::none;
    bool rebases_pictures = false;  ///< rewrites the names of pictures so that the saved file finds them
    bool writes_text_stl = false;   ///< instead of a binary STL file
};

/// Saves a scene that was loaded from `from` in the format of the ending of `to`; "-" writes scene text to
/// the standard output stream. Between files of other programs and scene files pictures are always rebased.
/// Tells on the standard error stream which pictures a scene file will not find. False, after a line there,
/// when not all bytes have been written.
[[nodiscard]] bool save_scene_or_tell(ulk3d::scene_t& scene, const std::string& from, const std::string& to,
                                      const save_options_t& options = {});

}  // namespace ulktool
