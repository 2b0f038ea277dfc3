#pragma once

#include <cstdint>
#include <span>

#include "model/vertex.h"

namespace ulk3d {

/// Fills the work records of a surface evaluated at `resolution2` rows of `resolution1` samples: for each
/// sample the differences to the next sample along the row, to the next row, from the sample before and from
/// the row before. Their cross products are the surface's normals.
///
/// Edges use differences across the seam where the surface closes smoothly on itself, and those of the
/// neighbouring row or column where it folds or runs together in a pole. Positions are equal when they are
/// within `eps` on each axis. With a resolution below 2 there are no neighbours, and all records are zero.
/// Both lists hold resolution1 times resolution2 records, row by row.
void fill_work_frames(std::span<const pos3> positions, std::uint32_t resolution1, std::uint32_t resolution2,
                      std::span<work_frame_t> frames);

}  // namespace ulk3d
