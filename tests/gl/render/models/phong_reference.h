#pragma once

#include <array>

#include "model/vertex.h"
#include "render/models/glpolygon.h"

/// The lighting of the solid program once more, in double precision and on the host.
namespace ulk_test {

using rgba_t = std::array<double, 4>;

/// What the three surface maps give at a place.
struct map_samples_t {
    rgba_t color{1, 1, 1, 1};
    std::array<double, 3> normal{0, 0, 1};
    rgba_t specular{1, 1, 1, 1};
};

struct reference_triangle_t {
    std::array<ulk3d::vertex_t, 3> vertices;
    std::array<ulk3d::frame_t, 3> frames;
};

/// Color of the fragment at (x, y) in normalised device coordinates, neither clamped nor blended, without
/// the environment. The projection must keep w at 1.
rgba_t shade(const reference_triangle_t& triangle, const ulk3d::surface_view_t& view, double x, double y,
             double color_factor = 1.0, const map_samples_t& maps = {});

/// The clamped fragment over `ground`, of which 1 - alpha stays: the fragment times its alpha, or as it is.
rgba_t blend_by_alpha(const rgba_t& fragment, const rgba_t& ground);
rgba_t blend_added(const rgba_t& fragment, const rgba_t& ground);

}  // namespace ulk_test
