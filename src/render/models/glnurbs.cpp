#include "render/models/glnurbs.h"

#include <GL/glew.h>

#include <algorithm>
#include <array>

#include "gltextures/gr_check_error.h"
#include "model/modeling.h"
#include "render/gl/mapped_span.h"
#include "render/shaders/build_program.h"
#include "render/shaders/shaders.h"

namespace ulk3d {

using libgr::grCheckError;

namespace {

constexpr program_plan_t selection_plan = {
    .vertex = {&shaders::selection_vsd, "selection.vsd: selection vertex shader init failed."},
    .fragment = {&shaders::selection_fsd, "selection.fsd: selection fragment shader init failed."},
    .link_failure = "selection program link failed.",
    .prints_logs = true,
};

constexpr const char* selection_varyings[] = {"VertexColor", "VertexID", "isInside", "clip"};
constexpr feedback_plan_t selection_feedback_plan = {
    .varyings = selection_varyings,
    .failure = "selection_feedback.allocate() failed.",
    .mark = "glnurbs_t::init() selection feedback varying setted.",
};

/// The number of a model's points, in 32 bits like the indices in the records of a pick.
std::uint32_t point_count(const modeling_t& model) {
    const array_t* const points = model.array(0);
    return points == nullptr ? 0 : static_cast<std::uint32_t>(points->element_count());
}

/// Adds the points that the pass found inside. True when there was at least one.
bool take_hits(pick_hits_t& hits, const modeling_t& model) {
    const feedback_span<const selection_record_t> records(model.selectionfeedback);
    bool found = false;
    const std::size_t count = std::min<std::size_t>(point_count(model), records.size());
    for (std::size_t i = 0; i < count; ++i) {
        if ((static_cast<std::uint32_t>(records[i].isInside) & 0xFFU) == 0)
            continue;
        hits.emplace(records[i].clip.z, i);
        found = true;
    }
    return found;
}

// Indexed queries need GL 4.0. A 3.3 context without them has only the vertex stream 0.
void begin_query(GLenum target, GLuint id) {
    if (glBeginQueryIndexed != nullptr)
        glBeginQueryIndexed(target, 0, id);
    else
        glBeginQuery(target, id);
}

void end_query(GLenum target) {
    if (glEndQueryIndexed != nullptr)
        glEndQueryIndexed(target, 0);
    else
        glEndQuery(target);
}

}  // namespace

mtx3w pick_planes(const pick_rectangle_t& rectangle) {
    const float half_width = rectangle.view_width / 2;
    const float half_height = rectangle.view_height / 2;
    const float x = rectangle.x - half_width;
    const float y = rectangle.y - half_height;
    const float dx = rectangle.width / 2;
    const float dy = rectangle.height / 2;
    return {{1, 0, 0, -(x - dx) / half_width,   //
             -1, 0, 0, (x + dx) / half_width,   //
             0, 1, 0, -(y - dy) / half_height,  //
             0, -1, 0, (y + dy) / half_height}};
}

bool glnurbs_t::init(const char* base_directory) {
    if (!build_program(selection_plan, {vertex, fragment, program}, selection_feedback_plan,
                       selection_feedback, base_directory))
        return false;
    grCheckError("glnurbs_t::init(3)");

    Modelview = program.uniform("Modelview");
    Projection = program.uniform("Projection");
    ClipPlanes = program.uniform("ClipPlanes");
    // Without a line for a replacement that does not have it: its points keep one size on all screens.
    PointScale = glGetUniformLocation(program.program_id(), "PointScale");
    return true;
}

void glnurbs_t::set_matrices(const mtx3w& projection_matrix, const mtx3w& modelview_matrix) const {
    glUniformMatrix4fv(Projection, 1, GL_TRUE, projection_matrix.m.data());
    glUniformMatrix4fv(Modelview, 1, GL_TRUE, modelview_matrix.m.data());
}

void glnurbs_t::draw_points(modeling_t& model, const mtx3w& projection_matrix,
                            const mtx3w& modelview_matrix) const {
    program.use();
    set_matrices(projection_matrix, modelview_matrix);
    glUniform1f(PointScale, point_scale);
    static_cast<void>(model.showpoints());  // has printed what it lacks; a frame is shown without the points
    program_t::unuse();
}

bool glnurbs_t::selection(pick_hits_t& hits, modeling_t& model, const mtx3w& planes,
                          const mtx3w& projection_matrix, const mtx3w& modelview_matrix) const {
    const feedback_buffer_t& feedback = model.selectionfeedback;
    program.use();
    glUniformMatrix4fv(ClipPlanes, 1, GL_FALSE, planes.m.data());
    set_matrices(projection_matrix, modelview_matrix);
    // The points of a pick would never be seen, as the next frame clears them before it is shown. In a
    // software GL drawing them takes most of the time of a pick, which happens at every motion of the mouse.
    glEnable(GL_RASTERIZER_DISCARD);
    const bool has_store = feedback.provide();
    const GLuint captured = has_store ? feedback.buffer_id() : 0;
    selection_feedback.begin(GL_POINTS, captured);
    const bool is_drawn = has_store && model.drawpoints();
    // Without a buffer no capture was started.
    if (captured != 0)
        selection_feedback.end();
    glDisable(GL_RASTERIZER_DISCARD);
    grCheckError("ulkedit_t::selection(2)");
    const bool found = is_drawn && take_hits(hits, model);
    program_t::unuse();
    return found;
}

int glnurbs_t::drawpolygon(modeling_t& model) {
    std::array<GLuint, 2> ids{};
    glGenQueries(2, ids.data());
    grCheckError("glnurbs_t::drawpolygon(2)");
    begin_query(GL_TRANSFORM_FEEDBACK_PRIMITIVES_WRITTEN, ids[0]);
    grCheckError("glnurbs_t::drawpolygon(3)");
    begin_query(GL_PRIMITIVES_GENERATED, ids[1]);
    grCheckError("glnurbs_t::drawpolygon(4)");
    model.draw();
    grCheckError("glnurbs_t::drawpolygon(5)");
    grCheckError("glnurbs_t::drawpolygon(6)");
    end_query(GL_PRIMITIVES_GENERATED);
    end_query(GL_TRANSFORM_FEEDBACK_PRIMITIVES_WRITTEN);
    grCheckError("glnurbs_t::drawpolygon(7)");
    for (const GLuint id : ids) {
        GLint count = 0;  // only waiting for it and its GL errors matter
        glGetQueryObjectiv(id, GL_QUERY_RESULT, &count);
    }
    grCheckError("glnurbs_t::drawpolygon(8)");
    glDeleteQueries(2, ids.data());
    grCheckError("glnurbs_t::drawpolygon(9)");
    grCheckError("glnurbs_t::drawpolygon(end)");
    return 0;
}

}  // namespace ulk3d
