#pragma once

namespace ulk3d {

class nurbs_t;

/// Fills the tables of a net of any size so that its surface is a flat sheet, something to begin with: the
/// points lie on an even grid from -0.5 to 0.5 in x, along the rows, and in y, row 0 at the bottom, at z = 0
/// (in the middle where there is only one), opaque grey with weight 1. The knots are even from 0 to 1 and
/// clamped: as many times 0 and 1 at the ends as the order is, so that the surface reaches the border of the
/// net. With fewer points than the order there is no such surface.
void make_flat_sheet(nurbs_t& nurbs);

}  // namespace ulk3d
