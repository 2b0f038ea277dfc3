#include <array>

#include "tool/command_line/command_line.h"
#include "tool/commands/commands.h"
#include "tool/scenes/save_scene.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/scene_session.h"

namespace ulktool {

namespace {

int convert(const command_line_t& line) {
    const std::string& from = line.files()[0];
    const std::string& to = line.files()[1];
    require_known_ending(to);
    const bool writes_text_stl = line.has("--text");
    if (writes_text_stl && format_of(to) != scene_format_t::stl)
        throw usage_error_t("--text: " + to + " is not named .stl");
    scene_session_t session;
    ulk3d::scene_t scene;
    if (!session.load_or_tell(scene, from))
        return exit_failed;
    const save_options_t options{.rebases_pictures = line.has("--rebase"),
                                 .writes_text_stl = writes_text_stl};
    return save_scene_or_tell(scene, from, to, options) ? exit_done : exit_failed;
}

constexpr std::array<option_t, 2> options{{
    {.name = "--rebase",
     .help = "Rewrites the names of pictures, which are relative to the folder of their scene file, so\n"
             "that OUT finds them where they are. Where IN or OUT is a file of another program they\n"
             "always are."},
    {.name = "--text", .help = "Writes an STL file as a text instead of a binary one."},
}};

}  // namespace

const command_t convert_command{
    .name = "convert",
    .files = "IN OUT",
    .help =
        "Loads IN and saves it as OUT, each in the format of its ending: beside .ulk and .stl those of\n"
        "other programs, of which .obj, .ply, .gltf and .glb are written. Tells what a format does not\n"
        "carry, and which pictures OUT will not find.",
    .options = options,
    .example = "ulktool convert part.stl part.ulk",
    .run = convert,
};

}  // namespace ulktool
