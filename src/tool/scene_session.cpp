#include "tool/scene_session.h"

#include <cstdlib>
#include <iostream>

#include "formats/scene_files.h"
#include "gltextures/textures/texture_stores.h"
#include "tool/commands.h"

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
    return ulk3d::load_scene(scene, path.c_str(), glpolygon, log);
}

}  // namespace ulktool
