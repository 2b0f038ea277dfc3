#pragma once

#include <iosfwd>
#include <string>

#include "model/scene.h"
#include "render/models/glpolygon.h"
#include "render/offscreen/offscreen_context.h"
#include "render/offscreen/offscreen_target.h"

namespace ulktool {

/// A GL context without a display, and the GL programs needed to load a scene. The constructor ends the
/// process with status 1, after a line on the standard error stream, when it can not make them.
class scene_session_t {
  public:
    scene_session_t();

    /// Loads a file into `scene` as load_scene_file does, and all its pictures anew. The textures of scenes
    /// that were loaded before are gone.
    [[nodiscard]] bool load(ulk3d::scene_t& scene, const std::string& path, std::ostream& log);

    /// The same with messages on the standard error stream, of which the last is that the file does not load.
    [[nodiscard]] bool load_or_tell(ulk3d::scene_t& scene, const std::string& path);

    /// The programs that make the frames of NURBS meshes.
    ulk3d::glpolygon_t& programs() { return glpolygon; }

  private:
    /// Constructed before the members that need it.
    struct context_t {
        context_t();
        ulk3d::offscreen_context_t offscreen;
    };

    context_t context;
    ulk3d::offscreen_target_t target{1, 1};
    ulk3d::glpolygon_t glpolygon;
};

/// Loads a file in the format of its ending, "-" as scene text from the standard input stream. Messages are
/// lines of `log`. A GL context must be current.
[[nodiscard]] bool load_scene_file(ulk3d::scene_t& scene, const std::string& path,
                                   ulk3d::glpolygon_t& glpolygon, std::ostream& log);

/// Creates a context without a display and makes it current, or ends the process as above.
void create_or_exit(ulk3d::offscreen_context_t& context);

}  // namespace ulktool
