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
    scene_session_t session;
    ulk3d::scene_t scene;
    const bool done = session.load_or_tell(scene, from) && save_scene_or_tell(scene, to);
    return done ? exit_done : exit_failed;
}

}  // namespace

const command_t convert_command{
    .name = "convert",
    .files = "IN OUT",
    .help = "Loads IN and saves it as OUT, each in the format of its ending.",
    .options = {},
    .example = "ulktool convert part.stl part.ulk",
    .run = convert,
};

}  // namespace ulktool
