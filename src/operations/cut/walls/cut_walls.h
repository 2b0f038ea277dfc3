#pragma once

#include "operations/cut/mesh_cut.h"
#include "operations/strips/strip_mesh.h"

namespace ulk3d {

/// The part of the cutter's surface that is inside a victim, turned round: what looked out of the cutter
/// looks into the hole. It is split by the rules of the cut with the parts exchanged. Where both surfaces lie
/// in one another there is no wall, whichever way they look: the victim's own triangle stays, or there is
/// nothing behind it.
///
/// Colours and texture coordinates are the cutter's. Frames are turned half round about their tangents, so
/// that they stay right-handed.
strip_mesh_t wall_inside(const strip_mesh_t& victim, const strip_mesh_t& cutter,
                         const progress_signal_t& progress);

/// Gives a victim that has been cut its walls. `victim` is what it was before. Along the seam each edge gets
/// its counterpart to the last bit, so that of two closed models a closed one comes. Returns whether anything
/// has changed.
bool add_walls(strip_mesh_t& cut_victim, const strip_mesh_t& victim, const strip_mesh_t& cutter,
               const progress_signal_t& progress);

}  // namespace ulk3d
