#include "tool/scenes/scene_models.h"

#include <iostream>
#include <iterator>

namespace ulktool {

ulk3d::model_entry_t* model_or_tell(ulk3d::scene_t& scene, std::uint32_t index, const std::string& path) {
    if (index < scene.models.size())
        return std::next(scene.models.begin(), index)->get();
    std::cerr << path << ": there is no model " << std::to_string(index) << std::endl;
    return nullptr;
}

}  // namespace ulktool
