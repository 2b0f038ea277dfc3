#include <array>
#include <iostream>

#include "tool/command_line/command_line.h"
#include "tool/commands/commands.h"
#include "tool/pictures/picture_places.h"
#include "tool/scenes/save_scene.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/scene_session.h"

namespace ulktool {

namespace {

bool is_foreign(const std::string& path) {
    return format_of(path) == scene_format_t::foreign;
}

int convert(const command_line_t& line) {
    const std::string& from = line.files()[0];
    const std::string& to = line.files()[1];
    require_known_ending(to);
    scene_session_t session;
    ulk3d::scene_t scene;
    if (!session.load_or_tell(scene, from))
        return exit_failed;
    // Names of pictures in files of other programs are always those that lead to them.
    if (line.has("--rebase") || is_foreign(from) || is_foreign(to))
        rebase_pictures(scene, from, to);
    if (!save_scene_or_tell(scene, to))
        return exit_failed;
    if (format_of(to) == scene_format_t::scene_text)
        report_lost_pictures(scene, to, std::cerr);
    return exit_done;
}

constexpr std::array<option_t, 1> options{{
    {.name = "--rebase",
     .help = "Rewrites the names of pictures, which are relative to the folder of their scene file, so\n"
             "that OUT finds them where they are."},
}};

}  // namespace

const command_t convert_command{
    .name = "convert",
    .files = "IN OUT",
    .help =
        "Loads IN and saves it as OUT, each in the format of its ending. Tells which pictures OUT will\n"
        "not find.",
    .options = options,
    .example = "ulktool convert part.stl part.ulk",
    .run = convert,
};

}  // namespace ulktool
