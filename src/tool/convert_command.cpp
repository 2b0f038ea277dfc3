#include <iostream>

#include "formats/scene_files.h"
#include "tool/commands.h"
#include "tool/scene_session.h"

namespace ulktool {

int convert(arguments_t arguments) {
    if (arguments.size() != 2) {
        std::cerr << "ulktool convert: two files are needed\n";
        return exit_usage;
    }
    const std::string& from = arguments[0];
    const std::string& to = arguments[1];
    scene_session_t session;
    ulk3d::scene_t scene;
    if (!session.load(scene, from, std::cerr)) {
        std::cerr << from << ": does not load" << std::endl;
        return exit_failed;
    }
    if (!ulk3d::save_scene(scene, to.c_str())) {
        std::cerr << to << ": could not be written" << std::endl;
        return exit_failed;
    }
    return exit_done;
}

}  // namespace ulktool
