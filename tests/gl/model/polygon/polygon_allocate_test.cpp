#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <limits>
#include <optional>

#include "render/gl/mapped_span.h"
#include "support/captured_stream.h"
#include "support/failing_stores.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/poisoned_stores.h"
#include "support/polygon_builder.h"
#include "utils/memory/memory_budget.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

struct PolygonAllocate : gl_test {};

/// Draws of nothing are calls all the same, and GL wants a framebuffer for them.
struct EmptyPolygon : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        target.emplace(4, 4);
        target->bind();
    }
    std::optional<render_target_t> target;
};

constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

/// What a failing call printed.
std::string refusal_of(polygon_t& polygon, std::uint64_t vertices, std::uint64_t elements) {
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(polygon.allocate(vertices, elements));
    return errors.text();
}

/// An attribute of a vertex array as GL has it.
struct attribute_t {
    GLint enabled = 0, buffer = 0, components = 0, type = 0, normalized = 0, stride = 0;
    std::intptr_t offset = 0;
    bool operator==(const attribute_t&) const = default;
};

void PrintTo(const attribute_t& a, std::ostream* stream) {
    *stream << "{" << a.enabled << ", buffer " << a.buffer << ", " << a.components << " of " << a.type
            << ", normalized " << a.normalized << ", stride " << a.stride << ", offset " << a.offset << "}";
}

attribute_t attribute_of(const vertex_array_ref& holder, GLuint location) {
    attribute_t attribute;
    holder->bind();
    glGetVertexAttribiv(location, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &attribute.enabled);
    glGetVertexAttribiv(location, GL_VERTEX_ATTRIB_ARRAY_BUFFER_BINDING, &attribute.buffer);
    glGetVertexAttribiv(location, GL_VERTEX_ATTRIB_ARRAY_SIZE, &attribute.components);
    glGetVertexAttribiv(location, GL_VERTEX_ATTRIB_ARRAY_TYPE, &attribute.type);
    glGetVertexAttribiv(location, GL_VERTEX_ATTRIB_ARRAY_NORMALIZED, &attribute.normalized);
    glGetVertexAttribiv(location, GL_VERTEX_ATTRIB_ARRAY_STRIDE, &attribute.stride);
    void* pointer = nullptr;
    glGetVertexAttribPointerv(location, GL_VERTEX_ATTRIB_ARRAY_POINTER, &pointer);
    attribute.offset = reinterpret_cast<std::intptr_t>(pointer);
    holder->unbind();
    return attribute;
}

TEST_F(PolygonAllocate, SizesAllArrays) {
    polygon_t polygon;
    ASSERT_TRUE(polygon.allocate(7, 10));
    EXPECT_EQ(polygon.vertex_count(), 7U);
    EXPECT_EQ(polygon.element_count(), 10U);
    EXPECT_EQ(polygon.vertices.element_count(), 7);
    EXPECT_EQ(polygon.vertices.vertex_stride(), 9U);
    EXPECT_EQ(polygon.normals.element_count(), 7);
    EXPECT_EQ(polygon.normals.vertex_stride(), 9U);
    EXPECT_EQ(polygon.wknmls.element_count(), 7);
    EXPECT_EQ(polygon.wknmls.vertex_stride(), 12U);
    EXPECT_EQ(polygon.pointsizes.element_count(), 7);
    EXPECT_EQ(polygon.pointsizes.vertex_stride(), 1U);
    EXPECT_EQ(polygon.elements.element_count(), 10);
    EXPECT_EQ(polygon.selectelems.element_count(), 24);
    EXPECT_EQ(polygon.selectionfeedback.element_count(), 70);
    EXPECT_EQ(polygon.normalfeedback.element_count(), 63);
    EXPECT_EQ(polygon.selection.size(), 7U);
}

TEST_F(PolygonAllocate, ArraysShareTheElementLists) {
    polygon_t polygon;
    ASSERT_TRUE(polygon.allocate(3, 3));
    EXPECT_TRUE(is_same_list(polygon.vertices.element_list(), vertex_elements()));
    EXPECT_TRUE(is_same_list(polygon.normals.element_list(), frame_elements()));
    EXPECT_TRUE(is_same_list(polygon.wknmls.element_list(), work_frame_elements()));
    EXPECT_TRUE(is_same_list(polygon.pointsizes.element_list(), size_elements()));
}

TEST_F(PolygonAllocate, VerticesAreZeroAndElementsMarks) {
    const ulk_test::poisoned_stores poison;
    polygon_t polygon;
    ASSERT_TRUE(polygon.allocate(2, 4));
    EXPECT_EQ(ulk_test::vertices_of(polygon), (std::vector<vertex_t>(2)));
    EXPECT_EQ(ulk_test::frames_of(polygon), (std::vector<frame_t>(2)));
    EXPECT_EQ(ulk_test::elements_of(polygon), (std::vector<std::uint32_t>(4, ulk_test::mark)));
    EXPECT_EQ(polygon.polyidvector[0].position, ulk_test::mark);
}

TEST_F(PolygonAllocate, NoPointAndNoPolygonIsSelected) {
    polygon_t polygon;
    ASSERT_TRUE(polygon.allocate(4, 5));
    EXPECT_EQ(pointsizes_of(polygon), std::vector<float>(4, 3.0F));
    EXPECT_EQ(polygon.selection, std::vector<bool>(4, false));
    EXPECT_EQ(selectelems_of(polygon), std::vector<std::uint32_t>(9, 4294967295U));
}

TEST_F(PolygonAllocate, AgainUnselectsAllPoints) {
    polygon_t polygon;
    ASSERT_TRUE(polygon.allocate(4, 5));
    ASSERT_TRUE(polygon.select(1));
    ASSERT_TRUE(polygon.allocate(4, 5));
    EXPECT_EQ(pointsizes_of(polygon), std::vector<float>(4, 3.0F));
    EXPECT_EQ(polygon.selection, std::vector<bool>(4, false));
}

TEST_F(PolygonAllocate, SelectelemsOfFewElements) {
    const std::pair<std::uint64_t, std::int64_t> rows[] = {{0, 0}, {1, 0}, {2, 0}, {3, 3}, {4, 6}, {10, 24}};
    for (const auto& [elements, selects] : rows) {
        polygon_t polygon;
        ASSERT_TRUE(polygon.allocate(3, elements));
        EXPECT_EQ(polygon.selectelems.element_count(), selects) << elements << " elements";
    }
}

TEST_F(EmptyPolygon, NothingIsLegalAndSilent) {
    const captured_stream errors(std::cerr);
    polygon_t polygon;
    ASSERT_TRUE(polygon.allocate(0, 0));
    polygon.clearselection();
    polygon.afterload("a");
    polygon.draw();
    polygon.drawselected();
    polygon.drawpoints();
    polygon.drawframes();
    EXPECT_EQ(polygon.drawvertices(), 0U);
    pos3 low{1, 1, 1};
    pos3 high{2, 2, 2};
    polygon.bounds(low, high);
    ASSERT_TRUE(polygon.extend(0, 0));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(EmptyPolygon, VerticesWithoutElementsAreLegalAndSilent) {
    const captured_stream errors(std::cerr);
    polygon_t polygon;
    build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}}), {});
    pos3 low{1, 1, 1};
    pos3 high{2, 2, 2};
    polygon.bounds(low, high);
    polygon.draw();
    EXPECT_EQ(errors.text(), "");
}

TEST_F(EmptyPolygon, ElementsWithoutVerticesAreLegalAndSilent) {
    const captured_stream errors(std::cerr);
    polygon_t polygon;
    build_polygon(polygon, {}, {0, 1, 2, mark});
    pos3 low{1, 1, 1};
    pos3 high{2, 2, 2};
    polygon.bounds(low, high);
    polygon.draw();
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(polygon.polyidvector[0].position, mark);
}

TEST_F(PolygonAllocate, VertexArraysAreFedByTwoArraysEach) {
    polygon_t polygon;
    ASSERT_TRUE(polygon.allocate(3, 3));
    const auto vertices = static_cast<GLint>(polygon.vertices.buffer_id());
    const auto normals = static_cast<GLint>(polygon.normals.buffer_id());
    const auto wknmls = static_cast<GLint>(polygon.wknmls.buffer_id());
    const auto pointsizes = static_cast<GLint>(polygon.pointsizes.buffer_id());
    const attribute_t position{1, vertices, 3, GL_FLOAT, 0, 36, 0};
    const attribute_t color{1, vertices, 4, GL_FLOAT, 1, 36, 12};
    const attribute_t texcoord{1, vertices, 2, GL_FLOAT, 0, 36, 28};
    const attribute_t none{0, 0, 4, GL_FLOAT, 0, 0, 0};
    struct row {
        const char* name;
        const vertex_array_ref& holder;
        std::vector<attribute_t> attributes;
    };
    const row rows[] = {
        {"drawarray",
         polygon.drawarray,
         {position,
          color,
          texcoord,
          {1, normals, 3, GL_FLOAT, 1, 36, 0},
          {1, normals, 3, GL_FLOAT, 1, 36, 12},
          {1, normals, 3, GL_FLOAT, 1, 36, 24},
          none}},
        {"workarray",
         polygon.workarray,
         {position,
          color,
          texcoord,
          {1, wknmls, 3, GL_FLOAT, 1, 48, 0},
          {1, wknmls, 3, GL_FLOAT, 1, 48, 12},
          {1, wknmls, 3, GL_FLOAT, 1, 48, 24},
          {1, wknmls, 3, GL_FLOAT, 1, 48, 36},
          none}},
        {"pointarray", polygon.pointarray, {position, color, {1, pointsizes, 1, GL_FLOAT, 0, 4, 0}, none}},
    };
    for (const row& expected : rows)
        for (std::size_t location = 0; location < expected.attributes.size(); ++location)
            EXPECT_EQ(attribute_of(expected.holder, static_cast<GLuint>(location)),
                      expected.attributes[location])
                << expected.name << " at " << location;
}

TEST_F(PolygonAllocate, SetsItsMarks) {
    polygon_t polygon;
    const forced_marks marks;
    ASSERT_TRUE(polygon.allocate(3, 3));
    EXPECT_EQ(marks.beginning_with("polygon_t::"),
              (std::vector<std::string>{
                  "polygon_t::allocate(0)", "polygon_t::allocate(1)", "polygon_t::allocate(2)",
                  "polygon_t::allocate(3)", "polygon_t::allocate(4)", "polygon_t::allocate(5)",
                  "polygon_t::allocate(6)", "polygon_t::allocate(7)", "polygon_t::allocate(end)"}));
}

TEST_F(PolygonAllocate, TakesNoStoreBeforeItsUse) {
    polygon_t polygon;
    {
        const failing_stores failing(1);
        const captured_stream errors(std::cerr);
        ASSERT_TRUE(polygon.allocate(3, 3));
        EXPECT_EQ(errors.text(), "");
        EXPECT_TRUE(vertices_of(polygon).empty());
        EXPECT_EQ(errors.text(), "buffer_t::MapBufferRange(): ptr is NULL.\narray pointer is NULL.\n");
        EXPECT_FALSE(polygon.afterload(nullptr));
    }
    EXPECT_EQ(vertices_of(polygon), std::vector<vertex_t>(3));
    EXPECT_EQ(ulk_test::elements_of(polygon), std::vector<std::uint32_t>(3, mark));
}

TEST_F(PolygonAllocate, CountsBeyondMemoryAreRefusedByTheFirstArrayConcerned) {
    // Bytes per vertex: 116 with the vertices, 36 with the normals, 48 with the work normals. Per element: 12
    // with the elements, 12 more with the selected ones, which at three times the count are also the first to
    // exceed what a draw call takes.
    const std::uint64_t budget = libutils::memory_budget();
    struct row {
        std::uint64_t vertices, elements;
        const char* message;
    };
    const row rows[] = {
        {budget / 100, 3, "vertices.allocate() failed.\n"},
        {budget / 134, 3, "normals.allocate() failed.\n"},
        {budget / 175, 3, "wknmls.allocate() failed.\n"},
        {3, budget / 10, "elements.allocate() failed.\n"},
        {3, std::min<std::uint64_t>(budget / 17, 800'000'000), "selectelems.allocate() failed.\n"},
    };
    for (const row& expected : rows) {
        polygon_t polygon;
        EXPECT_EQ(refusal_of(polygon, expected.vertices, expected.elements), expected.message);
        EXPECT_FALSE(polygon.vertices.has_buffer());
        EXPECT_FALSE(polygon.elements.has_buffer());
    }
}

TEST_F(PolygonAllocate, CountsWhoseBytesOverflowAreRefused) {
    // The first products would wrap round to a few bytes.
    for (const std::uint64_t count : {most, most / 36 + 1, most / 2 + 1, std::uint64_t{0xFFFFFFFF}}) {
        polygon_t polygon;
        EXPECT_EQ(refusal_of(polygon, count, 3), "vertices.allocate() failed.\n") << count;
        EXPECT_EQ(refusal_of(polygon, 3, count), "elements.allocate() failed.\n") << count;
    }
}

TEST_F(PolygonAllocate, RefusalLeavesTheModelAsItWas) {
    polygon_t polygon;
    build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), {0, 1, 2});
    ASSERT_TRUE(polygon.select(1));
    const auto vertices = vertices_of(polygon);
    EXPECT_EQ(refusal_of(polygon, most, 3), "vertices.allocate() failed.\n");
    EXPECT_EQ(refusal_of(polygon, 3, most), "elements.allocate() failed.\n");
    EXPECT_EQ(vertices_of(polygon), vertices);
    EXPECT_EQ(pointsizes_of(polygon), (std::vector<float>{3, 5, 3}));
}

TEST_F(PolygonAllocate, ReusesItsBuffers) {
    polygon_t polygon;
    ASSERT_TRUE(polygon.allocate(8, 8));
    const GLuint vertices = polygon.vertices.buffer_id();
    const GLuint drawarray = polygon.drawarray->id();
    ASSERT_TRUE(polygon.allocate(4, 4));
    EXPECT_EQ(polygon.vertices.buffer_id(), vertices);
    EXPECT_EQ(polygon.drawarray->id(), drawarray);
    EXPECT_EQ(polygon.vertex_count(), 4U);
    EXPECT_EQ(polygon.selection.size(), 4U);
}

TEST_F(PolygonAllocate, ClearReturnsToTheEmptyState) {
    polygon_t polygon;
    select_polygons(polygon, {0});
    build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), {0, 1, 2});
    polygon.name = "a.ulk";
    polygon.clear();
    EXPECT_EQ(polygon.name, "");
    for (const array_t* array : {&polygon.vertices, &polygon.normals, &polygon.wknmls, &polygon.pointsizes}) {
        EXPECT_FALSE(array->has_buffer());
        EXPECT_EQ(array->element_count(), 0);
    }
    EXPECT_FALSE(polygon.elements.has_buffer());
    EXPECT_EQ(polygon.element_count(), 0U);
    EXPECT_FALSE(polygon.selectelems.has_buffer());
    EXPECT_FALSE(polygon.drawarray);
    EXPECT_FALSE(polygon.workarray);
    EXPECT_FALSE(polygon.pointarray);
    EXPECT_EQ(polygon.normalfeedback.buffer_id(), 0U);
    EXPECT_EQ(polygon.selectionfeedback.buffer_id(), 0U);
    EXPECT_TRUE(polygon.selection.empty());
    EXPECT_TRUE(polygon.selectpolygons().empty());
    EXPECT_TRUE(polygon.polyidvector.empty());
}

TEST_F(PolygonAllocate, WorksAgainAfterClear) {
    polygon_t polygon;
    const auto vertices = vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    build_polygon(polygon, vertices, {0, 1, 2});
    polygon.clear();
    build_polygon(polygon, vertices, {2, 1, 0});
    EXPECT_EQ(ulk_test::elements_of(polygon), (std::vector<std::uint32_t>{2, 1, 0}));
    EXPECT_EQ(vertices_of(polygon), vertices);
}

}  // namespace
