#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "render/gl/feedback_buffer.h"
#include "render/gl/mapped_span.h"
#include "render/gl/program.h"
#include "render/gl/query.h"
#include "render/gl/shader.h"
#include "render/gl/transform_feedback.h"
#include "support/gl_context.h"

namespace ulk_test {

using namespace ulk3d;

/// What a draw handed to GL for one vertex: its number, and the first floats of two locations.
struct drawn_vertex_t {
    std::int32_t id;
    float second;
    float third;
};

inline constexpr const char* recorder_source = R"(#version 330 core
layout(location = 2) in vec4 at2;
layout(location = 3) in vec4 at3;
flat out int id;
out float second;
out float third;
void main() {
    id = gl_VertexID;
    second = at2.x;
    third = at3.x;
    gl_Position = vec4(0.0, 0.0, 0.0, 1.0);
}
)";

/// Records the vertices of draws, strips taken apart into triangles.
class vertex_recorder {
  public:
    vertex_recorder() {
        target.bind();
        EXPECT_TRUE(shader.allocate(GL_VERTEX_SHADER, recorder_source,
                                    static_cast<GLint>(std::strlen(recorder_source))))
            << shader.compile_log();
        EXPECT_TRUE(program.create());
        program.attach(shader);
        EXPECT_TRUE(feedback.allocate());
        const std::array<const GLchar*, 3> names = {"id", "second", "third"};
        feedback.varyings(program, 3, names.data());
        EXPECT_TRUE(program.link()) << program.link_log();
        EXPECT_TRUE(buffer.allocate(3 * most_vertices) && buffer.provide());
    }

    template <typename Draw>
    std::vector<drawn_vertex_t> record(GLenum mode, Draw draw) {
        query_t query;
        program.use();
        query.begin(GL_TRANSFORM_FEEDBACK_PRIMITIVES_WRITTEN, 0);
        feedback.begin(mode, buffer.buffer_id());
        draw();
        feedback.end();
        query.end();
        program_t::unuse();
        const feedback_span<drawn_vertex_t> records(buffer);
        const std::size_t count = query.GetQuery() * (mode == GL_TRIANGLES ? 3 : 1);
        return {records.begin(), records.begin() + static_cast<std::ptrdiff_t>(count)};
    }

  private:
    static constexpr std::int64_t most_vertices = 1000;
    const ulk_test::render_target_t target{4, 4};
    shader_t shader;
    program_t program;
    transform_feedback_t feedback;
    feedback_buffer_t buffer;
};

inline std::vector<std::int32_t> ids_of(const std::vector<drawn_vertex_t>& vertices) {
    std::vector<std::int32_t> ids;
    for (const auto& vertex : vertices)
        ids.push_back(vertex.id);
    return ids;
}

}  // namespace ulk_test
