#include "render/gl/vertex_array.h"

#include <cstring>
#include <string>

#include "render/gl/array.h"
#include "render/gl/element_array.h"
#include "render/gl/mapped_span.h"
#include "render/gl/program.h"
#include "render/gl/shader.h"
#include "support/gl_context.h"
#include "support/gl_state.h"

namespace {

using namespace ulk3d;
using ulk_test::gl_integer;

struct VertexArray : ulk_test::gl_test {
    void TearDown() override {
        EXPECT_EQ(gl_integer(GL_ARRAY_BUFFER_BINDING), 0);
        EXPECT_EQ(gl_integer(GL_VERTEX_ARRAY_BINDING), 0);
        gl_test::TearDown();
    }
};

vertex_array_ref allocated_vertex_array() {
    auto vertex_array = vertex_array_ref::make();
    vertex_array->allocate();
    return vertex_array;
}

struct attribute_t {
    int enabled, components, type, normalized, stride, buffer;
    std::uintptr_t offset;
    bool operator==(const attribute_t&) const = default;
};

void PrintTo(const attribute_t& a, std::ostream* stream) {
    *stream << "enabled " << a.enabled << ", " << a.components << " of " << a.type << ", normalized "
            << a.normalized << ", stride " << a.stride << ", buffer " << a.buffer << ", offset " << a.offset;
}

attribute_t attribute(const vertex_array_ref& vertex_array, GLuint location) {
    const auto value = [location](GLenum name) {
        GLint result = -1;
        glGetVertexAttribiv(location, name, &result);
        return result;
    };
    vertex_array->bind();
    void* pointer = nullptr;
    glGetVertexAttribPointerv(location, GL_VERTEX_ATTRIB_ARRAY_POINTER, &pointer);
    const attribute_t result{
        value(GL_VERTEX_ATTRIB_ARRAY_ENABLED),    value(GL_VERTEX_ATTRIB_ARRAY_SIZE),
        value(GL_VERTEX_ATTRIB_ARRAY_TYPE),       value(GL_VERTEX_ATTRIB_ARRAY_NORMALIZED),
        value(GL_VERTEX_ATTRIB_ARRAY_STRIDE),     value(GL_VERTEX_ATTRIB_ARRAY_BUFFER_BINDING),
        reinterpret_cast<std::uintptr_t>(pointer)};
    vertex_array->unbind();
    return result;
}

TEST_F(VertexArray, AllocateTwiceKeepsTheNameAndReleaseDeletesIt) {
    vertex_array_t vertex_array;
    vertex_array.allocate();
    const GLuint id = vertex_array.id();
    vertex_array.allocate();
    EXPECT_EQ(vertex_array.id(), id);
    vertex_array.bind();
    EXPECT_EQ(gl_integer(GL_VERTEX_ARRAY_BINDING), static_cast<GLint>(id));
    vertex_array.unbind();
    vertex_array.release();
    EXPECT_EQ(vertex_array.id(), gl_no_object);
    EXPECT_EQ(glIsVertexArray(id), GL_FALSE);
}

TEST_F(VertexArray, BindBeforeAllocateIsAnInvalidOperation) {
    vertex_array_t().bind();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION));
}

TEST_F(VertexArray, AttributesFollowTheListWithARunningOffset) {
    array_t array;
    ASSERT_TRUE(
        array.allocate(2, make_element_list({e_type_t::Position, e_type_t::RGBA, e_type_t::TexCoord2})));
    const auto vertex_array = allocated_vertex_array();
    array.bind_to(vertex_array, 0);
    const int buffer = static_cast<int>(array.buffer_id());
    EXPECT_EQ(attribute(vertex_array, 0), (attribute_t{1, 3, GL_FLOAT, 0, 36, buffer, 0}));
    EXPECT_EQ(attribute(vertex_array, 1), (attribute_t{1, 4, GL_FLOAT, 1, 36, buffer, 12}));
    EXPECT_EQ(attribute(vertex_array, 2), (attribute_t{1, 2, GL_FLOAT, 0, 36, buffer, 28}));
    EXPECT_EQ(attribute(vertex_array, 3).enabled, 0);
}

TEST_F(VertexArray, EveryKindThatFeedsAnAttributeHasItsFormat) {
    array_t array;
    ASSERT_TRUE(array.allocate(
        1, make_element_list({e_type_t::Position, e_type_t::Normal, e_type_t::RGBA, e_type_t::TexCoord3,
                              e_type_t::TexCoord2, e_type_t::PointSize, e_type_t::ID})));
    const auto vertex_array = allocated_vertex_array();
    array.bind_to(vertex_array, 0);
    const int buffer = static_cast<int>(array.buffer_id());
    const int stride = 17 * 4;
    EXPECT_EQ(attribute(vertex_array, 0), (attribute_t{1, 3, GL_FLOAT, 0, stride, buffer, 0}));
    EXPECT_EQ(attribute(vertex_array, 1), (attribute_t{1, 3, GL_FLOAT, 1, stride, buffer, 12}));
    EXPECT_EQ(attribute(vertex_array, 2), (attribute_t{1, 4, GL_FLOAT, 1, stride, buffer, 24}));
    EXPECT_EQ(attribute(vertex_array, 3), (attribute_t{1, 3, GL_FLOAT, 0, stride, buffer, 40}));
    EXPECT_EQ(attribute(vertex_array, 4), (attribute_t{1, 2, GL_FLOAT, 0, stride, buffer, 52}));
    EXPECT_EQ(attribute(vertex_array, 5), (attribute_t{1, 1, GL_FLOAT, 0, stride, buffer, 60}));
    EXPECT_EQ(attribute(vertex_array, 6), (attribute_t{1, 1, GL_UNSIGNED_INT, 0, stride, buffer, 64}));
}

TEST_F(VertexArray, KindsWithoutGlTypeCountInTheOffsetButFeedNothing) {
    array_t array;
    ASSERT_TRUE(
        array.allocate(1, make_element_list({e_type_t::Vector3w, e_type_t::Matrix3w, e_type_t::Position})));
    const auto vertex_array = allocated_vertex_array();
    array.bind_to(vertex_array, 0);
    EXPECT_NE(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "GL refuses type 0";
    EXPECT_EQ(attribute(vertex_array, 0).buffer, 0);
    EXPECT_EQ(attribute(vertex_array, 1).buffer, 0);
    EXPECT_EQ(attribute(vertex_array, 2).offset, 80u);
}

TEST_F(VertexArray, SecondArrayCanReplaceTheLastAttributeOfTheFirst) {
    array_t vertices, sizes;
    ASSERT_TRUE(
        vertices.allocate(2, make_element_list({e_type_t::Position, e_type_t::RGBA, e_type_t::TexCoord2})));
    ASSERT_TRUE(sizes.allocate(2, make_element_list({e_type_t::PointSize})));
    const auto vertex_array = allocated_vertex_array();
    vertices.bind_to(vertex_array, 0);
    sizes.bind_to(vertex_array, 2);
    EXPECT_EQ(attribute(vertex_array, 1).buffer, static_cast<int>(vertices.buffer_id()));
    EXPECT_EQ(attribute(vertex_array, 2),
              (attribute_t{1, 1, GL_FLOAT, 0, 4, static_cast<int>(sizes.buffer_id()), 0}));
}

TEST_F(VertexArray, BufferZeroFeedsNothing) {
    const auto vertex_array = allocated_vertex_array();
    vertex_array->bind_attributes(make_element_list({e_type_t::Position}), 3, 0, 0);
    EXPECT_EQ(attribute(vertex_array, 0).enabled, 0);
}

/// Draws red where a vertex says "ID" 7, black else.
struct drawn_points_t {
    shader_t vertex, fragment;
    program_t program;

    bool create() {
        const std::string vertex_source =
            "#version 330\n"
            "layout(location = 0) in vec3 position;\n"
            "layout(location = 1) in float id;\n"
            "out float red;\n"
            "void main() { gl_Position = vec4(position, 1.0); red = id == 7.0 ? 1.0 : 0.0; }\n";
        const std::string fragment_source =
            "#version 330\n"
            "in float red;\n"
            "out vec4 colour;\n"
            "void main() { colour = vec4(red, 0.0, 0.0, 1.0); }\n";
        if (!vertex.allocate(GL_VERTEX_SHADER, vertex_source.data(),
                             static_cast<GLint>(vertex_source.size())) ||
            !fragment.allocate(GL_FRAGMENT_SHADER, fragment_source.data(),
                               static_cast<GLint>(fragment_source.size())) ||
            !program.create())
            return false;
        program.attach(vertex);
        program.attach(fragment);
        return program.link();
    }
};

struct point_t {
    float x, y, z;
    std::uint32_t id;
};

/// Three points on a target of 3 by 1 pixels, one on each, with ids 7, 8, 7.
struct three_points_t {
    array_t points;
    vertex_array_ref vertex_array = vertex_array_ref::make();

    bool create() {
        const point_t values[] = {{-0.66F, 0, 0, 7}, {0, 0, 0, 8}, {0.66F, 0, 0, 7}};
        vertex_array->allocate();
        if (!points.allocate(3, make_element_list({e_type_t::Position, e_type_t::ID}), values, sizeof values))
            return false;
        points.bind_to(vertex_array, 0);
        return true;
    }
};

std::string drawn_row(const ulk_test::render_target_t& target) {
    std::string row;
    for (const auto& pixel : target.read_pixels().pixels)
        row += pixel[3] == 0 ? '.' : pixel[0] == 255 ? 'R' : 'K';
    return row;
}

void clear_target(const ulk_test::render_target_t& target) {
    target.bind();
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
}

TEST_F(VertexArray, DrawDrawsTheFirstVerticesAndShadersSeeIdsAsFloats) {
    drawn_points_t drawn;
    three_points_t three;
    ASSERT_TRUE(drawn.create());
    ASSERT_TRUE(three.create());
    const ulk_test::render_target_t target(3, 1);
    clear_target(target);
    drawn.program.use();
    draw(three.vertex_array, GL_POINTS, 2);
    program_t::unuse();
    EXPECT_EQ(drawn_row(target), "RK.");
}

TEST_F(VertexArray, ElementDrawDrawsTheIndicesInUse) {
    drawn_points_t drawn;
    three_points_t three;
    ASSERT_TRUE(drawn.create());
    ASSERT_TRUE(three.create());
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(3));
    {
        const index_span indices(elements);
        indices[0] = 2;
        indices[1] = 1;
        indices[2] = 0;
    }
    ASSERT_TRUE(elements.extend(2));
    const ulk_test::render_target_t target(3, 1);
    clear_target(target);
    drawn.program.use();
    elements.draw(three.vertex_array, GL_POINTS);
    program_t::unuse();
    EXPECT_EQ(drawn_row(target), ".KR");
    EXPECT_EQ(gl_integer(GL_ELEMENT_ARRAY_BUFFER_BINDING), 0);
}

TEST_F(VertexArray, ElementDrawStopsAtTheEndOfTheStore) {
    drawn_points_t drawn;
    three_points_t three;
    ASSERT_TRUE(drawn.create());
    ASSERT_TRUE(three.create());
    element_array_t elements;
    ASSERT_TRUE(elements.allocate(1));
    index_span{elements}[0] = 1;
    ASSERT_FALSE(elements.extend(std::int64_t{1} << 40));
    ASSERT_EQ(glGetError(), static_cast<GLenum>(GL_OUT_OF_MEMORY));
    const ulk_test::render_target_t target(3, 1);
    clear_target(target);
    drawn.program.use();
    elements.draw(three.vertex_array, GL_POINTS);
    program_t::unuse();
    EXPECT_EQ(drawn_row(target), ".K.");
}

}  // namespace
