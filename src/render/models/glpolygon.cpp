#include "render/models/glpolygon.h"

#include <GL/glew.h>

#include <algorithm>
#include <iostream>

#include "gltextures/gr_check_error.h"
#include "gltextures/textures/texture_stores.h"
#include "model/environment.h"
#include "model/polygon/polygon.h"
#include "model/texture.h"
#include "render/gl/query.h"
#include "render/shaders/build_program.h"
#include "render/shaders/shaders.h"

namespace ulk3d {

using libgr::grCheckError;
using libgr::grTextureObject;

namespace {

constexpr int frame_words = 9;
constexpr program_plan_t frame_plan = {
    .vertex = {&shaders::feedback_vsd, "feedback.vsd: feedback vertex shader init failed.",
               "glpolygon_t::init() feedback vertex shader inited."},
    .fragment = {&shaders::feedback_fsd, "feedback.fsd: feedback fragment shader init failed.",
                 "glpolygon_t::init() feedback fragment shader inited."},
    .link_failure = "feedback program link failed.",
    .attached_mark = "glpolygon_t::init() feedback program inited.",
};

constexpr const char* frame_varyings[] = {"VertexTangent", "VertexBiNormal", "VertexNormal"};
constexpr feedback_plan_t frame_feedback_plan = {
    .varyings = frame_varyings,
    .failure = "feedback.allocate() error.",
    .mark = "glpolygon_t::init() feedback varying setted.",
};

constexpr program_plan_t surface_plan = {
    .vertex = {&shaders::shader_vsd, "shader.vsd: vertex shader init failed."},
    .fragment = {&shaders::shader_fsd, "shader.fsd: fragment shader init failed."},
    .link_failure = "program link failed.",
};

struct uniform_row_t {
    const char* name;
    GLint surface_uniforms_t::*location;
};

constexpr uniform_row_t uniform_rows[] = {
    {"Globalview", &surface_uniforms_t::Globalview},
    {"Modelview", &surface_uniforms_t::Modelview},
    {"invModelview", &surface_uniforms_t::invModelview},
    {"Projection", &surface_uniforms_t::Projection},
    {"LightPosition", &surface_uniforms_t::LightPosition},
    {"Shininess", &surface_uniforms_t::Shininess},
    {"RefractFactor", &surface_uniforms_t::RefractFactor},
    {"SkyBox", &surface_uniforms_t::SkyBox},
    {"ReflectAlpha", &surface_uniforms_t::ReflectAlpha},
    {"RefractAlpha", &surface_uniforms_t::RefractAlpha},
    {"cubeTex", &surface_uniforms_t::cubeTex},
    {"colorTex", &surface_uniforms_t::colorTex},
    {"bumpTex", &surface_uniforms_t::bumpTex},
    {"specTex", &surface_uniforms_t::specTex},
    {"bumpOfs", &surface_uniforms_t::bumpOfs},
    {"ColorFactor", &surface_uniforms_t::ColorFactor},
    {"MercatorSphere", &surface_uniforms_t::MercatorSphere},
};

constexpr GLint sampler_value(map_unit_t unit) {
    return static_cast<GLint>(unit);
}

void activate(map_unit_t unit) {
    glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
}

/// The texture of a handle in the store; null for handle 0 and for one that the store does not have.
template <class Store>
grTextureObject* object_of(const Store& store, std::uint32_t handle) {
    auto* const entry = handle != 0 ? store.get(handle) : nullptr;
    return entry != nullptr ? &entry->object : nullptr;
}

grTextureObject* map_object(std::uint32_t handle) {
    return object_of(libgr::model_textures, handle);
}

grTextureObject* cube_object(std::uint32_t handle) {
    return object_of(libgr::cube_textures, handle);
}

void upload(GLint location, const mtx3w& matrix) {
    glUniformMatrix4fv(location, 1, GL_TRUE, matrix.m.data());
}

}  // namespace

bool glpolygon_t::init(const char* base_directory) {
    if (!build_program(frame_plan, {feedback_vertex, feedback_fragment, feedback_program},
                       frame_feedback_plan, feedback, base_directory))
        return false;
    init_surface_program(base_directory);
    neutral_maps.init();
    grCheckError("glpolygon_t::init(end)");
    return true;
}

void glpolygon_t::init_surface_program(const char* base_directory) {
    build_program(surface_plan, {vertex, fragment, program}, base_directory);
    for (const uniform_row_t& row : uniform_rows)
        uniforms.*row.location = program.uniform(row.name);

    // The first draw may be a select pass, which does not set the cube map's sampler. After linking all
    // samplers refer to the same unit, and GL refuses to draw with samplers of different kinds on one unit.
    program.use();
    glUniform1i(uniforms.cubeTex, sampler_value(map_unit_t::cube));
    program_t::unuse();
}

bool glpolygon_t::update_frames(polygon_t& polygon) {
    if (!polygon.normalfeedback.provide())
        return false;
    feedback_program.use();
    std::uint64_t wrted = 0;
    std::uint64_t gened = 0;
    bool drawn = false;
    {
        query_t written;
        query_t generated;
        written.begin(GL_TRANSFORM_FEEDBACK_PRIMITIVES_WRITTEN, 0);
        generated.begin(GL_PRIMITIVES_GENERATED, 0);
        feedback.begin(GL_POINTS, polygon.normalfeedback.buffer_id());
        drawn = polygon.drawframes();
        feedback.end();
        written.end();
        generated.end();
        wrted = written.GetQuery();
        gened = generated.GetQuery();
    }
    program_t::unuse();
    if (!drawn || !polygon.normals.provide())
        return false;

    if (wrted != gened)
        std::cerr << "glpolygon "
                  << "wrted != gened: " << wrted << ", " << gened << std::endl;
    const auto expected = static_cast<std::uint64_t>(polygon.normalfeedback.element_count() / frame_words);
    if (expected != gened)
        std::cerr << "glpolygon "
                  << "buf != gened: " << expected << ", " << gened << std::endl;

    // `normals` never shrinks, so it is the larger buffer after the number of vertices has dropped. GL
    // refuses a copy that reaches beyond either buffer.
    const std::int64_t bytes = std::min(polygon.normals.byte_size(), polygon.normalfeedback.byte_size());
    polygon.normalfeedback.bind();
    polygon.normals.bind();
    glCopyBufferSubData(GL_TRANSFORM_FEEDBACK_BUFFER, GL_ARRAY_BUFFER, 0, 0, bytes);
    polygon.normals.unbind();
    polygon.normalfeedback.unbind();
    return true;
}

/// The differences between the two draw passes. `marks` has the error label of the check after each step;
/// null for no check.
struct glpolygon_t::pass_t {
    struct marks_t {
        const char* view;
        const char* color_unit;
        const char* color_sampler;
        const char* color_map;
        const char* bump_map;
        const char* specular_map;
        const char* environment;
        const char* draw;
        const char* end;
    };

    float color_factor;
    GLenum source_factor;
    void (polygon_t::*draw)();
    void (grTextureObject::*place_cube)();  ///< binds the environment's cube map, or unbinds it
    bool sets_cube_sampler;
    bool sets_mercator_sphere;
    marks_t marks;
};

const glpolygon_t::pass_t glpolygon_t::solid_pass = {
    .color_factor = 1.0F,
    .source_factor = GL_SRC_ALPHA,
    .draw = &polygon_t::draw,
    .place_cube = &grTextureObject::Load,
    .sets_cube_sampler = true,
    .sets_mercator_sphere = true,
    .marks = {.view = "glpolygon_t::drawsolid(1)",
              .color_unit = nullptr,
              .color_sampler = nullptr,
              .color_map = "glpolygon_t::drawsolid(2)",
              .bump_map = "glpolygon_t::drawsolid(3)",
              .specular_map = "glpolygon_t::drawsolid(4)",
              .environment = "glpolygon_t::drawsolid(5)",
              .draw = "glpolygon_t::drawsolid(7)",
              .end = "glpolygon_t::drawsolid(end)"},
};

const glpolygon_t::pass_t glpolygon_t::select_pass = {
    .color_factor = 0.25F,
    .source_factor = GL_ONE,
    .draw = &polygon_t::drawselected,
    .place_cube = &grTextureObject::Unload,
    .sets_cube_sampler = false,
    .sets_mercator_sphere = false,
    .marks = {.view = "glpolygon_t::drawselect(1)",
              .color_unit = "glpolygon_t::drawselect(1.1)",
              .color_sampler = "glpolygon_t::drawselect(1.2)",
              .color_map = "glpolygon_t::drawselect(2)",
              .bump_map = "glpolygon_t::drawselect(3)",
              .specular_map = "glpolygon_t::drawselect(4)",
              .environment = "glpolygon_t::drawselect(5)",
              .draw = "glpolygon_t::drawselect(7)",
              .end = "glpolygon_t::drawselect(end)"},
};

namespace {

void check(const char* mark) {
    if (mark != nullptr)
        grCheckError(mark);
}

}  // namespace

void glpolygon_t::drawsolid(const environment_t& environment, bool skybox, const texture_t& texture,
                            polygon_t& polygon, const surface_view_t& view) {
    draw_surface(solid_pass, environment, skybox, texture, polygon, view);
}

void glpolygon_t::drawselect(const environment_t& environment, bool skybox, const texture_t& texture,
                             polygon_t& polygon, const surface_view_t& view) {
    draw_surface(select_pass, environment, skybox, texture, polygon, view);
}

void glpolygon_t::draw_surface(const pass_t& pass, const environment_t& environment, bool skybox,
                               const texture_t& texture, polygon_t& polygon, const surface_view_t& view) {
    program.use();
    set_view(pass, view);
    const filled_units_t filled = bind_maps(pass, texture);
    set_environment(pass, environment, skybox);
    check(pass.marks.environment);
    if (pass.sets_mercator_sphere)
        glUniform1i(uniforms.MercatorSphere, texture.mercatorsphere);

    glEnable(GL_BLEND);
    glBlendFunc(pass.source_factor, GL_ONE_MINUS_SRC_ALPHA);
    (polygon.*pass.draw)();
    glDisable(GL_BLEND);

    program_t::unuse();
    check(pass.marks.draw);
    unbind_maps(environment, texture, filled);
    check(pass.marks.end);
}

void glpolygon_t::set_view(const pass_t& pass, const surface_view_t& view) const {
    upload(uniforms.Globalview, view.Globalview);
    upload(uniforms.Modelview, view.Modelview);
    upload(uniforms.invModelview, view.invModelview);
    upload(uniforms.Projection, view.Projection);
    glUniform3fv(uniforms.LightPosition, 1, &view.LightPosition.x);
    glUniform1f(uniforms.ColorFactor, pass.color_factor);
    glUniform1f(uniforms.Shininess, view.Shininess);
    check(pass.marks.view);
}

bool glpolygon_t::load_map(std::uint32_t handle, map_unit_t unit) const {
    if (grTextureObject* const map = map_object(handle))
        map->Load();
    return neutral_maps.bind(unit);
}

glpolygon_t::filled_units_t glpolygon_t::bind_maps(const pass_t& pass, const texture_t& texture) const {
    filled_units_t filled{};
    activate(map_unit_t::color);
    check(pass.marks.color_unit);
    glUniform1i(uniforms.colorTex, sampler_value(map_unit_t::color));
    check(pass.marks.color_sampler);
    filled[0] = load_map(texture.color_handle, map_unit_t::color);
    check(pass.marks.color_map);

    activate(map_unit_t::bump);
    glUniform1i(uniforms.bumpTex, sampler_value(map_unit_t::bump));
    filled[1] = load_map(texture.bump_handle, map_unit_t::bump);
    glUniform2f(uniforms.bumpOfs, texture.bump_offset_u, texture.bump_offset_v);
    check(pass.marks.bump_map);

    activate(map_unit_t::specular);
    glUniform1i(uniforms.specTex, sampler_value(map_unit_t::specular));
    filled[2] = load_map(texture.spec_handle, map_unit_t::specular);
    check(pass.marks.specular_map);
    return filled;
}

void glpolygon_t::set_environment(const pass_t& pass, const environment_t& environment, bool skybox) const {
    if (pass.sets_cube_sampler) {
        activate(map_unit_t::cube);
        glUniform1i(uniforms.cubeTex, sampler_value(map_unit_t::cube));
    }
    if (environment.cubetex.empty()) {
        glUniform1f(uniforms.ReflectAlpha, 0.0F);
        glUniform1f(uniforms.RefractAlpha, 0.0F);
        return;
    }
    activate(map_unit_t::cube);
    if (grTextureObject* const cube = cube_object(environment.cube_handle))
        (cube->*pass.place_cube)();
    glUniform1f(uniforms.RefractFactor, environment.refractfactor);
    glUniform1i(uniforms.SkyBox, skybox);
    glUniform1f(uniforms.ReflectAlpha, environment.reflectalpha);
    glUniform1f(uniforms.RefractAlpha, environment.refractalpha);
}

void glpolygon_t::unbind_maps(const environment_t& environment, const texture_t& texture,
                              const filled_units_t& filled) const {
    if (!environment.cubetex.empty()) {
        activate(map_unit_t::cube);
        if (grTextureObject* const cube = cube_object(environment.cube_handle))
            cube->Unload();
    }
    const std::array handles{texture.color_handle, texture.bump_handle, texture.spec_handle};
    for (const map_unit_t unit : {map_unit_t::specular, map_unit_t::bump, map_unit_t::color}) {
        activate(unit);
        const auto index = static_cast<std::size_t>(unit);
        if (filled[index])
            neutral_maps_t::unbind();
        else if (grTextureObject* const map = map_object(handles[index]))
            map->Unload();
    }
}

}  // namespace ulk3d
