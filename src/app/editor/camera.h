#pragma once

#include "app/editor/trackball.h"
#include "app/editor/view_layout.h"
#include "model/math/matrices.h"
#include "model/math/records.h"

namespace ulk3d {

/// A matrix and its inverse, kept side by side: neither is ever computed from the other.
struct matrix_pair_t {
    mtx3w matrix = mtx_identity;
    mtx3w inverse = mtx_identity;
};

/// The cameras of the four views: a trackball for the perspective view, and one scale-and-pan matrix, `fit`,
/// that the three orthographic views share.
struct camera_t {
    trackball_t trackball;
    matrix_pair_t fit;
    matrix_pair_t front, side, top;  ///< model to view, orthographic
    matrix_pair_t view;              ///< model to view, perspective
    matrix_pair_t ortho;             ///< projection of the orthographic views
    matrix_pair_t perspective;       ///< projection of the perspective view

    /// Sets the orthographic projection: a box of height 2 with the view's aspect, from -10 to 1000.
    void update_ortho(const view_layout_t& layout);

    /// Sets the perspective projection: a frustum from 0.0625 to 1024 with a field of view of 90 degrees over
    /// its diagonal.
    void update_perspective(const view_layout_t& layout);

    /// Derives the matrices of the orthographic views from `fit`.
    void update_ortho_views();

    /// Derives `view` from the trackball.
    void update_view();
};

}  // namespace ulk3d
