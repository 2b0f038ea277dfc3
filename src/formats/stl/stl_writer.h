#pragma once

#include <cstdint>

#include "model/scene.h"

namespace libutils {
class byte_output;
}

namespace ulk3d {

/// Writes meshes as STL files: the strips unrolled into single triangles, each with the unit normal of its
/// winding. A NURBS model is written as the mesh that it is drawn with. The models keep their names. A GL
/// context must be current.
///
/// All saving functions return true when the path could be opened and all bytes have reached the file,
/// through the last flush and the close; a failure is silent.

/// The binary form, of one model or of a list. The header is the path, truncated to 80 bytes.
[[nodiscard]] bool save_stl_model(const char* path, const model_entry_t& entry);
[[nodiscard]] bool save_stl_models(const char* path, const model_list_t& models);

/// The ASCII form of a list. No command of the window reaches this; `ulktool convert --text` uses it.
[[nodiscard]] bool save_stl_ascii(const char* path, const model_list_t& models);

/// Writes the records of one mesh's triangles and returns their number. Marks `output` as failed when an
/// array can not be mapped.
std::uint32_t write_stl_triangles(libutils::byte_output& output, const polygon_t& polygon);

/// (b - a) cross (c - b), not normalised: points to the side from which a, b, c run counter-clockwise.
dir3 triangle_normal(const pos3& a, const pos3& b, const pos3& c);

}  // namespace ulk3d
