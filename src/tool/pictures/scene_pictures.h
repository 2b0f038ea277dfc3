#pragma once

#include <string>
#include <vector>

#include "model/scene.h"

namespace ulktool {

/// A picture file that a scene names.
struct scene_picture_t {
    std::string key;      ///< the key of the scene file, "texture" and the like
    std::string name;     ///< as the scene names it; for the environment the path of a face
    std::string size;     ///< "512 x 256"; empty when it can not be read
    std::string problem;  ///< why it is not shown; empty when it is
    std::string
        warning;  ///< why it may look wrong (tool/pictures/picture_warnings.h); empty when all is well
};

/// The maps of a model in a scene that was loaded from `scene_path`. A map that loading did not reach,
/// because an earlier one had failed, is read here; its codec prints to the standard error stream.
std::vector<scene_picture_t> model_pictures(const ulk3d::texture_t& texture, const std::string& scene_path);

/// The six faces of the environment's cube map, likewise; empty when no cube map is named.
std::vector<scene_picture_t> environment_pictures(const ulk3d::environment_t& environment,
                                                  const std::string& scene_path);

}  // namespace ulktool
