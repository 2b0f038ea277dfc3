#pragma once

#include <cstdint>
#include <set>

#include "model/math/records.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// Folds a mesh of triangle strips along an axis: the triangles whose ids are in `selected` turn by `angle`
/// degrees about the line from `a` to `b`, counter-clockwise for a viewer whom the line points at. The other
/// triangles stay as they are.
///
/// So that nothing is stretched, the sheet tears where turned and other triangles meet: the strips are cut
/// there (operations/strips/separate_strips.h), and the turned triangles get copies of the vertices that they
/// share with others. A copy goes into the first vertex slot that no element refers to, or else is appended
/// to the mesh. Polygon ids mean the same triangles afterwards. Ids without a triangle are ignored.
///
/// `a` and `b` must not be the same point, and the elements must hold no index at or above the vertex count
/// other than the restart mark, as with those from `read_strip_mesh`. The result is always true: the fold has
/// run. The time is linear in the sizes.
bool fold_polygons(const std::set<std::uint32_t>& selected, const pos3& a, const pos3& b, float angle,
                   strip_mesh_t& mesh);

/// The same for the arrays of a polygon model, which grow as needed; each is read and written once. The
/// caller then has the model renew what depends on them. Requires a current GL context.
///
/// False when the fold could not run, because GL has no memory for what it adds or because there are no
/// arrays; everything stays as it was. False, too, when an array can not be mapped: arrays that were written
/// before stay written, so whoever can not bear that folds a copy.
[[nodiscard]] bool fold_polygons(const std::set<std::uint32_t>& selected, const pos3& a, const pos3& b,
                                 float angle, array_t& vertices, array_t& normals, element_array_t& elements);

}  // namespace ulk3d
