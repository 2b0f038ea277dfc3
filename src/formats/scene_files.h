#pragma once

#include <iosfwd>

#include "model/scene.h"

namespace ulk3d {

class glpolygon_t;

/// Loads and saves by path; a path that ends in ".stl", in any case of letters, is an STL file
/// (formats/stl/stl_reader.h, formats/stl/stl_writer.h), any other a scene text file. Paths are bytes of the
/// system. A GL context must be current.

/// Appends the models of a file to `scene.models` in file order and fills `scene.environment` when the file
/// has one. True when the file was read and held at least one block. Messages are lines of `log`; an STL file
/// has none. After a failure the models read so far, the half-built one included, are left in `scene` for the
/// caller to drop.
[[nodiscard]] bool load_scene(scene_t& scene, const char* path, glpolygon_t& glpolygon, std::ostream& log);

/// The same for surfaces only: environment blocks are unknown lines. The number of surfaces read, 0 after a
/// failure. No command reaches this: commands load whole scenes.
[[nodiscard]] std::size_t load_models(model_list_t& models, const char* path, glpolygon_t& glpolygon,
                                      std::ostream& log);

/// Writes one model, a list of models, or environment and models. The models take the path as their file
/// name, also when the write fails; an STL file holds triangles only, and leaves the models their names. True
/// when all bytes reached the file, the last flush and the close included.
[[nodiscard]] bool save_model(model_entry_t& entry, const char* path);
[[nodiscard]] bool save_models(model_list_t& models, const char* path);
/// No command of the window reaches this, so that its saves hold no environment; `ulktool convert` does.
[[nodiscard]] bool save_scene(scene_t& scene, const char* path);

}  // namespace ulk3d
