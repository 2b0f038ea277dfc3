#include "tool/scenes/save_scene.h"

#include <sys/stat.h>
#include <unistd.h>

#include <iostream>

#include "formats/scene_files.h"
#include "tool/scenes/standard_streams.h"

namespace ulktool {

namespace {

/// Whether the standard output stream has a reader, which may go away when it has what it wants.
bool has_reader() {
    struct stat status {};
    return ::fstat(STDOUT_FILENO, &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

}  // namespace

bool save_scene_or_tell(ulk3d::scene_t& scene, const std::string& path) {
    if (path == standard_stream_name) {
        if (ulk3d::save_scene_text(scene, standard_stream_name, standard_output()))
            return true;
        if (has_reader())
            return false;
    } else if (ulk3d::save_scene(scene, path.c_str())) {
        return true;
    }
    std::cerr << path << ": could not be written" << std::endl;
    return false;
}

}  // namespace ulktool
