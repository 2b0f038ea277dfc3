#pragma once

#include <array>
#include <cstdint>

#include "model/math/records.h"
#include "render/gl/program.h"
#include "render/gl/shader.h"
#include "render/gl/transform_feedback.h"
#include "render/models/neutral_maps.h"

namespace ulk3d {

class polygon_t;
struct environment_t;
struct texture_t;

/// How a surface is viewed: the matrices of the view, the light, and the sharpness of the highlight.
struct surface_view_t {
    mtx3w Globalview;    ///< turns directions of the view into those of the environment
    mtx3w Modelview;     ///< object to view
    mtx3w invModelview;  ///< inverse of Modelview
    mtx3w Projection;    ///< view to clip
    pos3 LightPosition;  ///< in view space
    float Shininess = 10.0F;
};

/// Locations of the uniforms of the solid program; -1, which GL ignores, for one that it does not have.
struct surface_uniforms_t {
    std::int32_t Globalview = -1;
    std::int32_t Modelview = -1;
    std::int32_t invModelview = -1;
    std::int32_t Projection = -1;
    std::int32_t LightPosition = -1;
    std::int32_t Shininess = -1;
    std::int32_t RefractFactor = -1;
    std::int32_t SkyBox = -1;
    std::int32_t ReflectAlpha = -1;
    std::int32_t RefractAlpha = -1;
    std::int32_t cubeTex = -1;
    std::int32_t colorTex = -1;
    std::int32_t bumpTex = -1;
    std::int32_t specTex = -1;
    std::int32_t bumpOfs = -1;
    std::int32_t ColorFactor = -1;
    std::int32_t MercatorSphere = -1;
};

/// The programs of the surface pipeline and the passes that use them.
///
/// It serves both kinds of model: a NURBS model is drawn as the polygon_t that it is tessellated into. Can be
/// constructed without a context; everything else needs a current one. All messages go to the standard error
/// stream.
class glpolygon_t {
  public:
    glpolygon_t() = default;
    glpolygon_t(const glpolygon_t&) = delete;
    glpolygon_t& operator=(const glpolygon_t&) = delete;

    /// Compiles and links; call it once per context. A file with the name of a source, in the working
    /// directory or else in `base_directory` (null for none; ends with its separator), replaces the built-in
    /// source. False, after a line, when GL gives no transform feedback object. A source that does not
    /// compile or link ends the process with exit status 1, after a line and GL's log, because nothing can be
    /// drawn without it.
    [[nodiscard]] bool init(const char* base_directory);

    /// The frame pass: computes a tangent frame per vertex in `normals` from the difference vectors in
    /// `wknmls`, on the GPU. Call it after filling `wknmls`. Prints a line when GL does not write as many
    /// records as the buffer is made for; the records are still copied to `normals`. False, with `normals` as
    /// they were, when there is no memory for a store that the pass needs, after a line that says so.
    [[nodiscard]] bool update_frames(polygon_t& polygon);

    /// Draws the strips of the polygon, lit, and blended by alpha over what is already drawn. With `skybox`
    /// the environment is looked up by vertex position instead of by reflection.
    void drawsolid(const environment_t& environment, bool skybox, const texture_t& texture,
                   polygon_t& polygon, const surface_view_t& view);

    /// Draws the selected polygons at a quarter of their alpha. As they are drawn before `drawsolid`, with
    /// the default depth function, they keep the solid pass from drawing over their pixels and so look
    /// translucent. In this pass no cube map is bound, and the Mercator flag of the last solid draw stays in
    /// force.
    void drawselect(const environment_t& environment, bool skybox, const texture_t& texture,
                    polygon_t& polygon, const surface_view_t& view);

    shader_t feedback_vertex;
    shader_t feedback_fragment;
    program_t feedback_program;
    transform_feedback_t feedback;
    shader_t vertex;
    shader_t geometry;  ///< reserved for a geometry stage; never compiled
    shader_t fragment;
    program_t program;
    surface_uniforms_t uniforms;

  private:
    struct pass_t;
    static const pass_t solid_pass;
    static const pass_t select_pass;

    /// For each unit whether a neutral map was bound to it.
    using filled_units_t = std::array<bool, 3>;

    void init_surface_program(const char* base_directory);

    void draw_surface(const pass_t& pass, const environment_t& environment, bool skybox,
                      const texture_t& texture, polygon_t& polygon, const surface_view_t& view);
    void set_view(const pass_t& pass, const surface_view_t& view) const;
    filled_units_t bind_maps(const pass_t& pass, const texture_t& texture) const;
    /// Binds a map to `unit`, which must be the active one. True when it had to use the neutral map.
    [[nodiscard]] bool load_map(std::uint32_t handle, map_unit_t unit) const;
    void set_environment(const pass_t& pass, const environment_t& environment, bool skybox) const;
    void unbind_maps(const environment_t& environment, const texture_t& texture,
                     const filled_units_t& filled) const;

    neutral_maps_t neutral_maps;
};

}  // namespace ulk3d
