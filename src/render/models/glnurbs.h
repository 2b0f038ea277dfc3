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

/// What the selection program writes for one point: ten 32-bit words, in the order of its varyings.
struct selection_record_t {
    col3a VertexColor;
    std::int32_t VertexID;
    std::int32_t isInside;  ///< its low byte is not 0 for a point inside the pick rectangle
    vec3w clip;             ///< signed distances to the left, right, lower and upper side, in clip units
};
static_assert(sizeof(selection_record_t) == 40);

/// A pick rectangle in a viewport. Pixels, from the viewport's lower left corner upwards.
struct pick_rectangle_t {
    float x = 0, y = 0;                     ///< its centre
    float width = 0, height = 0;            ///< its sides
    float view_width = 0, view_height = 0;  ///< of the viewport
};

/// The sides of a pick rectangle as `glnurbs_t::selection` takes them: four planes, four floats each, whose
/// products with a clip position (X, Y, Z, W) are 0 or above on the inner side (for a W above 0).
mtx3w pick_planes(const pick_rectangle_t& rectangle);

/// Points inside a pick rectangle, by their distance to its lower side in clip units: no order of depth.
/// Points of one distance stand in the order of their insertion.
using pick_hits_t = std::multimap<float, std::uint64_t>;

/// The selection program and what runs on it: the drawing of a model's points and the pick of points on the
/// GPU. It serves both kinds of model: polygons show their vertices through it, NURBS their control points.
///
/// Can be constructed without a context; everything else needs it current. All printing goes to the standard
/// error stream.
class glnurbs_t {
  public:
    glnurbs_t() = default;
    glnurbs_t(const glnurbs_t&) = delete;
    glnurbs_t& operator=(const glnurbs_t&) = delete;

    /// Compiles and links, once per context. Files in the working directory or in `base_directory` (null for
    /// none; ends with its separator) replace the sources. GL's logs are printed also when all is well.
    /// False, with a line, when there is no transform feedback object to be had. A source that does not
    /// compile or link ends the process with exit status 1, after a line and GL's log.
    [[nodiscard]] bool init(const char* base_directory);

    /// Draws the points of a model at their sizes, in their colours. GL_PROGRAM_POINT_SIZE must be enabled.
    void draw_points(modeling_t& model, const mtx3w& Projection, const mtx3w& Modelview) const;

    /// Adds the points of a model that project into the rectangle to `hits`, in the order of their indices;
    /// what stands there stays. True when there was at least one. Depth plays no part: hidden points are
    /// found. A model without points, or whose feedback buffer was never allocated, has none.
    ///
    /// `ClipPlanes` are those of `pick_planes`. Waits for the GPU. Nothing is drawn.
    bool selection(pick_hits_t& hits, modeling_t& model, const mtx3w& ClipPlanes, const mtx3w& Projection,
                   const mtx3w& Modelview) const;

    /// A diagnostic: runs the model's element draw, with whatever program is current, between two queries of
    /// primitives and prints the marks that find an error. Returns 0.
    static int drawpolygon(modeling_t& model);

    shader_t vertex;
    shader_t fragment;
    program_t program;
    /// Locations of the uniforms, -1 for one that the program lacks: GL ignores it.
    std::int32_t Modelview = -1;
    std::int32_t Projection = -1;
    std::int32_t ClipPlanes = -1;
    transform_feedback_t selection_feedback;

  private:
    void set_matrices(const mtx3w& projection_matrix, const mtx3w& modelview_matrix) const;
};

}  // namespace ulk3d
