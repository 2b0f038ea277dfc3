#include "tool/foreign/foreign_scenes.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "utils/text/paths.h"
#include "utils/text/strings.h"

/// The build without the assimp library.
namespace ulktool {

namespace {

constexpr std::array endings{".obj", ".ply", ".gltf", ".glb"};

}  // namespace

bool is_foreign_path(std::string_view path) {
    return std::ranges::any_of(
        endings, [path](const char* ending) { return libutils::has_extension(path, ending) == 0; });
}

bool is_foreign_output(std::string_view path) {
    return is_foreign_path(path);
}

std::string foreign_input_endings() {
    return {};
}

std::string foreign_output_endings() {
    return {};
}

bool import_scene(ulk3d::scene_t&, const std::string& path, std::ostream& log) {
    log << "this build can not read "
        << (is_foreign_path(path) ? libutils::view_path(path).extension : "text .stl") << " files\n";
    return false;
}

bool export_scene(const ulk3d::scene_t&, const std::string& path, std::ostream& log) {
    log << "this build can not write " << libutils::view_path(path).extension << " files\n";
    return false;
}

}  // namespace ulktool
