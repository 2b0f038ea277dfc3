#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "model/scene.h"

/// Scenes in the formats of other programs, which the assimp library reads and writes. A build without it has
/// these functions, too: it knows the usual endings and says that it can not read them. Endings count in
/// upper and lower case.
namespace ulktool {

/// Whether the ending is that of another program's format; ".stl" is not, as the modeller has its own reader.
bool is_foreign_path(std::string_view path);

/// Whether scenes are written in the format of the ending: .obj, .ply, .gltf and .glb.
bool is_foreign_output(std::string_view path);

/// The endings that are read, or written, in the order of the alphabet and divided by blanks: ".3ds .obj".
/// Empty in a build without the library.
std::string foreign_input_endings();
std::string foreign_output_endings();

/// Appends a polygon model for each mesh and material of a file, and for each place in which the file puts
/// it, to `scene.models`. Nodes are applied; what has more than three corners becomes triangles; points,
/// lines and triangles with positions that are not finite are left out. A file that ends in ".stl" is read as
/// a text.
///
/// Points have the file's colours, or else that of the material, or else `default_color`. Their frames are
/// those of the file's normals; without normals they are what `polygon_t::afterload` gives. Colour maps are
/// named relative to the file's folder. A GL context must be current.
///
/// What is left out is told in lines of `log`, and so is why a file does not load. The library works in a
/// process of its own, with bounds on memory and time: what makes it crash or hang is a file that does not
/// load. After a failure the models read so far are left in `scene` for the caller to drop.
[[nodiscard]] bool import_scene(ulk3d::scene_t& scene, const std::string& path, std::ostream& log);

/// Writes the models of a scene in the format of the ending, with files beside it as the format has them:
/// "part.mtl" beside "part.obj", "part.bin" beside "part.gltf". Names of colour maps are written as they are.
/// A NURBS surface is written as the mesh that is drawn for it. The files are saved as all others are
/// (utils/files/output_file.h), and only when all of them have been made. A GL context must be current.
///
/// What the format can not carry is told in lines of `log`, and so is a scene that has no triangles. False
/// then, and when not all bytes have been written.
[[nodiscard]] bool export_scene(const ulk3d::scene_t& scene, const std::string& path, std::ostream& log);

}  // namespace ulktool
