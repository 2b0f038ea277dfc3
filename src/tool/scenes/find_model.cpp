#include "tool/scenes/find_model.h"

#include <iostream>
#include <iterator>

namespace ulktool {

using ulk3d::model_entry_t;
using ulk3d::scene_t;

model_entry_t* find_model_or_tell(const scene_t& scene, const std::string& path, std::uint32_t number) {
    if (number < scene.models.size())
        return std::next(scene.models.begin(), number)->get();
    std::cerr << path << ": " << none_of("model", number, scene.models.size()) << std::endl;
    return nullptr;
}

model_entry_t* find_polygon_model_or_tell(const scene_t& scene, const std::string& path,
                                          std::uint32_t number) {
    model_entry_t* const entry = find_model_or_tell(scene, path, number);
    if (entry == nullptr || entry->kind == ulk3d::model_kind_t::polygon)
        return entry;
    std::cerr << path << ": model " << number
              << " is a NURBS surface, not a polygon model; ulktool polygonize makes it one" << std::endl;
    return nullptr;
}

std::string none_of(const std::string& things, std::uint64_t number, std::uint64_t count) {
    return "there is no " + things + ' ' + std::to_string(number) + "; there " +
           (count == 1 ? "is 1" : "are " + std::to_string(count)) + ", from 0";
}

}  // namespace ulktool
