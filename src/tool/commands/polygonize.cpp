#include <array>

#include "tool/command_line/command_line.h"
#include "tool/command_line/values.h"
#include "tool/commands/commands.h"
#include "tool/scenes/find_model.h"
#include "tool/scenes/save_scene.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/scene_session.h"

namespace ulktool {

namespace {

/// A NURBS model keeps the mesh that it is drawn as; in a polygon model nothing changes.
void polygonize_model(ulk3d::model_entry_t& entry) {
    entry.kind = ulk3d::model_kind_t::polygon;
}

bool polygonize_or_tell(const ulk3d::scene_t& scene, const std::string& path, const std::string* number) {
    if (number == nullptr) {
        for (const auto& entry : scene.models)
            polygonize_model(*entry);
        return true;
    }
    ulk3d::model_entry_t* const entry = find_model_or_tell(scene, path, read_index("--model", *number));
    if (entry != nullptr)
        polygonize_model(*entry);
    return entry != nullptr;
}

int polygonize(const command_line_t& line) {
    const std::string& from = line.files()[0];
    const std::string& to = line["-o"];
    const std::string* const number = line.find("--model");
    if (number != nullptr)
        read_index("--model", *number);
    require_known_ending(to);
    scene_session_t session;
    ulk3d::scene_t scene;
    const bool is_done = session.load_or_tell(scene, from) && polygonize_or_tell(scene, from, number) &&
                         save_scene_or_tell(scene, from, to, {.spacing = ulk3d::model_spacing_t::blank_line});
    return is_done ? exit_done : exit_failed;
}

constexpr std::array<option_t, 2> options{{
    {.name = "--model",
     .value = value_t::needed,
     .value_name = "N",
     .help = "The number of one model, from 0. Without this, all NURBS surfaces are made into meshes."},
    output_option,
}};

}  // namespace

const command_t polygonize_command{
    .name = "polygonize",
    .files = "SCENE",
    .help =
        "Makes NURBS surfaces into the meshes that they are drawn as, as Edit > Polygonize does with the\n"
        "current model. Polygon models stay as they are.",
    .options = options,
    .example = "ulktool polygonize vase.ulk -o vase-mesh.ulk",
    .run = polygonize,
};

}  // namespace ulktool
