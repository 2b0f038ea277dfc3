#include "tool/scenes/save_scene.h"

#include <sys/stat.h>
#include <unistd.h>

#include <iostream>

#include "formats/stl/stl_writer.h"
#include "tool/foreign/foreign_scenes.h"
#include "tool/scenes/progress_line.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/standard_streams.h"

namespace ulktool {

namespace {

/// Whether the standard output stream has a reader, which may go away when it has what it wants.
bool has_reader() {
    struct stat status {};
    return ::fstat(STDOUT_FILENO, &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

bool save(ulk3d::scene_t& scene, const std::string& path, ulk3d::model_spacing_t spacing) {
    const progress_line_t progress("writing " + path);
    if (path == standard_stream_name)
        return ulk3d::save_scene_text(scene, standard_stream_name, standard_output(), spacing);
    return format_of(path) == scene_format_t::foreign ? export_scene(scene, path, std::cerr)
                                                      : ulk3d::save_scene(scene, path.c_str(), spacing);
}

}  // namespace

bool save_scene_or_tell(ulk3d::scene_t& scene, const std::string& path, ulk3d::model_spacing_t spacing) {
    const bool saved = save(scene, path, spacing);
    if (!saved && !(path == standard_stream_name && has_reader()))
        std::cerr << path << ": could not be written" << std::endl;
    return saved;
}

bool save_text_stl_or_tell(const ulk3d::scene_t& scene, const std::string& path) {
    const auto save_with_progress = [&] {
        const progress_line_t progress("writing " + path);
        return ulk3d::save_stl_ascii(path.c_str(), scene.models);
    };
    const bool saved = save_with_progress();
    if (!saved)
        std::cerr << path << ": could not be written" << std::endl;
    return saved;
}

}  // namespace ulktool
