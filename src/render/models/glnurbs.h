#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "model/math/records.h"
#include "render/gl/program.h"
#include "render/gl/shader.h"
#include "render/gl/transform_feedback.h"

namespace ulk3d {

class modeling_t;

/// The record that the selection program writes for each point: ten 32-bit words, in the order of its
/// varyings.
struct selection_record_t {
    col3a VertexColor;
    std::int32_t VertexID;
    std::int32_t isInside;  ///< the low byte is not 0 for a point inside the pick rectangle
    vec3w clip;             ///< signed distances to the left, right, lower and upper sides, in clip units
};
static_assert(sizeof(selection_record_t) == 40);

/// A pick rectangle in a viewport, in pixels. The origin is the viewport's lower left corner, y points up.
struct pick_rectangle_t {
    float x = 0, y = 0;                     ///< its centre
    float width = 0, height = 0;            ///< its sides
    float view_width = 0, view_height = 0;  ///< of the viewport
};

/// The sides of a pick rectangle in the form that `glnurbs_t::selection` takes: four planes of four floats.
/// The dot product of a plane and a clip position (X, Y, Z, W) is at least 0 on the inner side, if W is above
/// 0.
mtx3w pick_planes(const pick_rectangle_t& rectangle);

/// The indices of points inside a pick rectangle, sorted by their distance from its lower side in clip units,
/// not by depth. Points at the same distance are in the order of insertion.
using pick_hits_t = std::multimap<float, std::uint64_t>;

/// The selection program and the passes that use it: drawing a model's points, and picking points on the GPU.
/// It serves both kinds of model, for the vertices of polygons and the control points of NURBS.
///
/// Can be constructed without a context; everything else needs a current one. All messages go to the standard
/// error stream.
class glnurbs_t {
  public:
    glnurbs_t() = default;
    glnurbs_t(const glnurbs_t&) = delete;
    glnurbs_t& operator=(const glnurbs_t&) = delete;

    /// Compiles and links; call it once per context. A file with the name of a source, in the working
    /// directory or else in `base_directory` (null for none; ends with its separator), replaces the built-in
    /// source. GL's logs are printed even on success. False, after a line, when GL gives no transform
    /// feedback object. A source that does not compile or link ends the process with exit status 1, after a
    /// line and GL's log.
    [[nodiscard]] bool init(const char* base_directory);

    /// Draws the points of a model with their sizes times `point_scale`, and their colours. Those that a
    /// later one covers may be left out. GL_PROGRAM_POINT_SIZE must be enabled, GL_BLEND and GL_DEPTH_TEST
    /// must not.
    void draw_points(modeling_t& model, const mtx3w& Projection, const mtx3w& Modelview) const;

    /// Adds the points of a model that project into the rectangle to `hits`, in the order of their indices;
    /// existing entries stay. True when there was at least one. Depth is ignored, so hidden points are found
    /// too. A model without points, or whose feedback buffer was never allocated, has no hits, and neither
    /// has one that there is no memory to draw or to capture, after a line on the standard error stream.
    ///
    /// `ClipPlanes` comes from `pick_planes`. Waits for the GPU; draws nothing.
    bool selection(pick_hits_t& hits, modeling_t& model, const mtx3w& ClipPlanes, const mtx3w& Projection,
                   const mtx3w& Modelview) const;

    /// A diagnostic: draws the model's elements, with whatever program is in use, between two queries of
    /// primitives, and prints the error label of each check that finds a GL error. Always returns 0.
    static int drawpolygon(modeling_t& model);

    shader_t vertex;
    shader_t fragment;
    program_t program;
    /// Locations of the uniforms; -1, which GL ignores, for one that the program does not have.
    std::int32_t Modelview = -1;
    std::int32_t Projection = -1;
    std::int32_t ClipPlanes = -1;
    std::int32_t PointScale = -1;
    float point_scale = 1;  ///< device pixels for each pixel of a point's size
    transform_feedback_t selection_feedback;

  private:
    void set_matrices(const mtx3w& projection_matrix, const mtx3w& modelview_matrix) const;
};

}  // namespace ulk3d
