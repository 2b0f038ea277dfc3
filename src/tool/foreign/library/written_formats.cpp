#include "tool/foreign/library/written_formats.h"

#include <algorithm>
#include <array>

#include "utils/text/strings.h"

namespace ulktool {

namespace {

/// PLY files are texts: this library's binary ones have colours as floats under a header that says bytes, and
/// no program reads them.
constexpr std::array formats{
    written_format_t{.ending = ".glb",
                     .library_name = "glb2",
                     .name = "glTF",
                     .has_materials = true,
                     .points_have_opacity = true},
    written_format_t{.ending = ".gltf",
                     .library_name = "gltf2",
                     .name = "glTF",
                     .has_materials = true,
                     .points_have_opacity = true},
    written_format_t{.ending = ".obj",
                     .library_name = "obj",
                     .name = "OBJ",
                     .has_materials = true,
                     .points_have_opacity = false},
    written_format_t{.ending = ".ply",
                     .library_name = "ply",
                     .name = "PLY",
                     .has_materials = false,
                     .points_have_opacity = true},
};

}  // namespace

const written_format_t* written_format_of(std::string_view path) {
    const auto format = std::ranges::find_if(formats, [path](const written_format_t& row) {
        return libutils::has_extension(path, row.ending) == 0;
    });
    return format != formats.end() ? &*format : nullptr;
}

std::string_view written_endings() {
    return ".glb .gltf .obj .ply";
}

}  // namespace ulktool
