#include "tool/scenes/save_scene.h"

#include <sys/stat.h>
#include <unistd.h>

#include <iostream>

#include "formats/stl/stl_writer.h"
#include "tool/foreign/foreign_scenes.h"
#include "tool/pictures/picture_places.h"
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

bool save(ulk3d::scene_t& scene, const std::string& path, const save_options_t& options) {
    const progress_line_t progress("writing " + path);
    if (path == standard_stream_name)
        return ulk3d::save_scene_text(scene, standard_stream_name, standard_output(), options.spacing);
    if (options.writes_text_stl)
        return ulk3d::save_stl_ascii(path.c_str(), scene.models);
    return is_foreign_path(path) ? export_scene(scene, path, std::cerr)
                                 : ulk3d::save_scene(scene, path.c_str(), options.spacing);
}

}  // namespace

bool save_scene_or_tell(ulk3d::scene_t& scene, const std::string& from, const std::string& to,
                        const save_options_t& options) {
    if (options.rebases_pictures || is_foreign_path(from) || is_foreign_path(to))
        rebase_pictures(scene, from, to);
    if (!save(scene, to, options)) {
        if (!(to == standard_stream_name && has_reader()))
            std::cerr << to << ": could not be written" << std::endl;
        return false;
    }
    if (format_of(to) == scene_format_t::scene_text)
        report_lost_pictures(scene, to, std::cerr);
    return true;
}

}  // namespace ulktool
