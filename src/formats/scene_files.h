#pragma once

#include <iosfwd>

#include "model/scene.h"
#include "utils/files/file_descriptor.h"

namespace ulk3d {

class glpolygon_t;

/// Loading and saving by path. A path that ends in ".stl", in upper or lower case, is an STL file
/// (formats/stl/stl_reader.h, formats/stl/stl_writer.h); any other is a scene text file. Paths are passed to
/// the system byte for byte. A GL context must be current, except for this question.
[[nodiscard]] bool is_stl_path(const char* path);

/// Appends the models of a file to `scene.models` in file order and fills `scene.environment` when the file
/// has one. True when all of the file was read and it held at least one block. Messages are written to `log`,
/// one line each; an STL file gives none. All that a file makes the program allocate is held against one
/// budget (utils/memory/memory_budget.h); a block that does not fit fails with its reader's message, and a
/// line with
/// "<line>: the line does not fit into memory.". After a failure the models read so far, including the
/// half-built one, are left in `scene` for the caller to drop.
[[nodiscard]] bool load_scene(scene_t& scene, const char* path, glpolygon_t& glpolygon, std::ostream& log);

/// The same for the text of a scene in a plain file of `size` bytes that is open already. `name` takes the
/// place of its path in messages, and of the folder in which pictures are looked for.
[[nodiscard]] bool load_scene_text(scene_t& scene, const char* name, libutils::file_descriptor&& file,
                                   std::uint64_t size, glpolygon_t& glpolygon, std::ostream& log);

/// The same for surfaces only: the lines of an environment block are reported as unknown, and every path is
/// read as a scene text file. Returns the number of surfaces read, 0 after a failure. No command reaches
/// this: commands load whole scenes.
[[nodiscard]] std::size_t load_models(model_list_t& models, const char* path, glpolygon_t& glpolygon,
                                      std::ostream& log);

/// Writes one model, a list of models, or environment and models. The models take the path as their file
/// name, even when writing fails. An STL file holds triangles only, and saving one leaves the names alone.
/// True when all bytes have reached the file, through the last flush and the close. A failure is silent, but
/// for memory, where a line on the standard error stream tells of it.
[[nodiscard]] bool save_model(model_entry_t& entry, const char* path);
[[nodiscard]] bool save_models(model_list_t& models, const char* path);
/// What a scene text has behind the block of each model: `save_models` puts a blank line there.
enum class model_spacing_t { none, blank_line };
/// No command of the window reaches this, so files saved there contain no environment; `ulktool` uses it.
[[nodiscard]] bool save_scene(scene_t& scene, const char* path,
                              model_spacing_t spacing = model_spacing_t::none);
/// Writes a scene as text into what is open already, such as the standard output stream; the models take
/// `name` as their file name.
[[nodiscard]] bool save_scene_text(scene_t& scene, const char* name, libutils::file_descriptor&& file,
                                   model_spacing_t spacing = model_spacing_t::none);

}  // namespace ulk3d
