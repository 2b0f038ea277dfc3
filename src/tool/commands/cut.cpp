#include <sigc++/functors/mem_fun.h>

#include <array>
#include <iostream>

#include "operations/cut/mesh_cut.h"
#include "tool/command_line/command_line.h"
#include "tool/command_line/values.h"
#include "tool/commands/commands.h"
#include "tool/scenes/find_model.h"
#include "tool/scenes/progress_line.h"
#include "tool/scenes/save_scene.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/scene_session.h"

namespace ulktool {

namespace {

bool cut_or_tell(ulk3d::scene_t& scene, const std::string& path, std::uint32_t cutter,
                 ulk3d::openings_t openings) {
    if (find_polygon_model_or_tell(scene, path, cutter) == nullptr)
        return false;
    progress_line_t line("cut");
    ulk3d::progress_signal_t progress;
    progress.connect(sigc::mem_fun(line, &progress_line_t::show));
    // Reports its own failure.
    return ulk3d::mesh_cut(progress, cutter, scene.models, openings);
}

int cut(const command_line_t& line) {
    const std::string& from = line.files()[0];
    const std::string& to = line["-o"];
    const std::uint32_t cutter = read_index("--cutter", line["--cutter"]);
    const auto openings = line.has("--walls") ? ulk3d::openings_t::get_walls : ulk3d::openings_t::stay;
    require_known_ending(to);
    scene_session_t session;
    ulk3d::scene_t scene;
    const bool is_done = session.load_or_tell(scene, from) && cut_or_tell(scene, from, cutter, openings) &&
                         save_scene_or_tell(scene, from, to, {.spacing = ulk3d::model_spacing_t::blank_line});
    return is_done ? exit_done : exit_failed;
}

constexpr std::array<option_t, 3> options{{
    {.name = "--cutter",
     .value = value_t::needed,
     .value_name = "N",
     .help = "The number of the polygon model that is taken out of the others, from 0.",
     .is_needed = true},
    {.name = "--walls",
     .help = "Closes the openings of the cut with the part of the cutter's surface that lies in each\n"
             "model, turned round, in the cutter's colours: what was closed is closed again."},
    output_option,
}};

}  // namespace

const command_t cut_command{
    .name = "cut",
    .files = "SCENE",
    .help =
        "Takes a polygon model out of all other polygon models, as Edit > Cut the Model does with the\n"
        "current one. The cutter stays as it is.",
    .options = options,
    .example = "ulktool cut plate.ulk --cutter 0 --walls -o plate-with-hole.ulk",
    .run = cut,
};

}  // namespace ulktool
