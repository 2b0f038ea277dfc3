#include "tool/scenes/scene_session.h"

#include <cstdlib>
#include <iostream>
#include <utility>

#include "formats/scene_files.h"
#include "formats/stl/stl_check.h"
#include "gltextures/textures/texture_stores.h"
#include "tool/command_line/command.h"
#include "tool/foreign/foreign_scenes.h"
#include "tool/scenes/progress_line.h"
#include "tool/scenes/scene_formats.h"
#include "tool/scenes/standard_streams.h"

namespace ulktool {

void create_or_exit(ulk3d::offscreen_context_t& context) {
    if (context.create())
        return;
    std::cerr << "ulktool: " << context.error() << std::endl;
    std::exit(exit_failed);
}

scene_session_t::context_t::context_t() {
    create_or_exit(offscreen);
}

scene_session_t::scene_session_t() {
    target.bind();
    if (!glpolygon.init(nullptr))
        std::exit(exit_failed);
}

bool scene_session_t::load(ulk3d::scene_t& scene, const std::string& path, std::ostream& log) {
    // A name that has failed is not tried again: without this the verdict on a file would depend on those
    // before it.
    libgr::clear_texture_stores();
    return load_scene_file(scene, path, glpolygon, log);
}

bool scene_session_t::load_or_tell(ulk3d::scene_t& scene, const std::string& path) {
    const auto load_with_progress = [&] {
        const progress_line_t progress("reading " + path);
        return load(scene, path, std::cerr);
    };
    const bool loaded = load_with_progress();
    if (!loaded)
        std::cerr << path << ": does not load" << std::endl;
    return loaded;
}

namespace {

bool is_text_stl(const std::string& path) {
    const auto check = ulk3d::check_stl(path.c_str());
    return check && check->is_text;
}

}  // namespace

bool load_scene_file(ulk3d::scene_t& scene, const std::string& path, ulk3d::glpolygon_t& glpolygon,
                     std::ostream& log) {
    if (path == standard_stream_name) {
        std::uint64_t size = 0;
        libutils::file_descriptor input = libutils::open_plain_file(standard_input_path().c_str(), size);
        return ulk3d::load_scene_text(scene, standard_stream_name, std::move(input), size, glpolygon, log);
    }
    const scene_format_t format = format_of(path);
    if (format == scene_format_t::unknown) {
        log << unknown_ending_message(path) << '\n';
        return false;
    }
    if (format == scene_format_t::foreign || (format == scene_format_t::stl && is_text_stl(path)))
        return import_scene(scene, path, log);
    return ulk3d::load_scene(scene, path.c_str(), glpolygon, log);
}

}  // namespace ulktool
