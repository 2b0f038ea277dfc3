#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string>

#include "model/polygon/strip_walk.h"
#include "render/gl/feedback_buffer.h"
#include "render/gl/mapped_span.h"
#include "render/gl/program.h"
#include "render/gl/query.h"
#include "render/gl/shader.h"
#include "render/gl/transform_feedback.h"
#include "support/counted_mappings.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

/// What a draw handed to GL for one vertex: its number, and the first floats of two locations.
struct drawn_vertex_t {
    std::int32_t id;
    float second;
    float third;
};

constexpr const char* recorder_source = R"(#version 330 core
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
class recorder {
  public:
    recorder() {
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
    const render_target_t target{4, 4};
    shader_t shader;
    program_t program;
    transform_feedback_t feedback;
    feedback_buffer_t buffer;
};

using triangle = std::array<std::int32_t, 3>;

/// Each triangle with its least corner first: which one GL begins with does not matter, the winding does.
std::vector<triangle> triangles_of(const std::vector<drawn_vertex_t>& vertices) {
    std::vector<triangle> triangles;
    for (std::size_t i = 0; i + 2 < vertices.size(); i += 3) {
        triangle corners{vertices[i].id, vertices[i + 1].id, vertices[i + 2].id};
        std::rotate(corners.begin(), std::ranges::min_element(corners), corners.end());
        triangles.push_back(corners);
    }
    return triangles;
}

std::vector<std::int32_t> ids_of(const std::vector<drawn_vertex_t>& vertices) {
    std::vector<std::int32_t> ids;
    for (const auto& vertex : vertices)
        ids.push_back(vertex.id);
    return ids;
}

struct PolygonDraw : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        drawn.emplace();
    }
    std::vector<triangle> drawn_strips() {
        return triangles_of(drawn->record(GL_TRIANGLES, [this] { polygon.draw(); }));
    }
    std::vector<triangle> drawn_selection() {
        return triangles_of(drawn->record(GL_TRIANGLES, [this] { polygon.drawselected(); }));
    }
    const std::vector<vertex_t> vertices =
        vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 2, 0}, {1, 2, 0}, {0, 3, 0}});
    std::optional<recorder> drawn;
    polygon_t polygon;
};

TEST_F(PolygonDraw, DrawsTheTrianglesOfTheWalk) {
    build_polygon(polygon, vertices, {0, 1, 2, 3, 4, mark, 4, 5, 6});
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}, {1, 3, 2}, {2, 3, 4}, {4, 5, 6}}));
}

TEST_F(PolygonDraw, IndexAtTheVertexCountEndsAStripAndIsNotDrawn) {
    build_polygon(polygon, vertices, {0, 1, 2, 7, 3, 4, 5});
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}, {3, 4, 5}}));
    EXPECT_EQ(ulk_test::elements_of(polygon), (std::vector<std::uint32_t>{0, 1, 2, 7, 3, 4, 5}));
}

TEST_F(PolygonDraw, StrayIndexComesToLifeWithItsVertex) {
    build_polygon(polygon, vertices, {0, 1, 2, 7});
    ASSERT_EQ(drawn_strips().size(), 1U);
    ASSERT_TRUE(polygon.extend(8, 4));
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}, {1, 7, 2}}));
}

TEST_F(PolygonDraw, FollowsEditsThatNumberNothing) {
    build_polygon(polygon, vertices, {0, 1, 2, 3});
    ASSERT_EQ(drawn_strips().size(), 2U);
    index_span(polygon.elements)[3] = 1000;
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}}));
    index_span(polygon.elements)[3] = 4;
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}, {1, 4, 2}}));
}

TEST_F(PolygonDraw, StripsThatWereOnlyReadAreNotWalkedAgain) {
    build_polygon(polygon, vertices, {0, 1, 2, 9});
    ASSERT_EQ(drawn_strips().size(), 1U);
    pos3 low, high;
    polygon.bounds(low, high);
    polygon.selectpolygon(0);
    const counted_mappings mappings;
    polygon.draw();
    EXPECT_EQ(mappings.count(), 0);
}

TEST_F(PolygonDraw, StripsThatGoAreNotDrawnBesideAStrayIndex) {
    build_polygon(polygon, vertices, {0, 1, 2, 9, 3, 4, 5});
    ASSERT_EQ(drawn_strips().size(), 2U);
    ASSERT_TRUE(polygon.extend(7, 4));
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}}));
}

TEST_F(PolygonDraw, IndexBecomesStrayWhenVerticesGo) {
    build_polygon(polygon, vertices, {0, 1, 2, mark, 3, 4, 6});
    ASSERT_EQ(drawn_strips().size(), 2U);
    ASSERT_TRUE(polygon.extend(5, 7));
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}}));
}

TEST_F(PolygonDraw, ModelIsDrawnAnewAfterClear) {
    build_polygon(polygon, vertices, {0, 1, 9});
    ASSERT_TRUE(drawn_strips().empty());
    polygon.clear();
    EXPECT_TRUE(drawn_strips().empty());
    build_polygon(polygon, vertices, {0, 1, 2});
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}}));
}

TEST_F(PolygonDraw, ReadsVerticesAndFrames) {
    auto textured = vertices;
    textured[2].texcoord = {0.25F, 0.5F};
    std::vector<frame_t> frames(7, frame_t{{0.5F, 0, 0}, {}, {0, 0, 1}});
    build_polygon(polygon, textured, {2, 3, 4}, frames);
    const auto seen = drawn->record(GL_TRIANGLES, [this] { polygon.draw(); });
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0].second, 0.25F);
    EXPECT_EQ(seen[0].third, 0.5F);
}

TEST_F(PolygonDraw, SetsItsMarks) {
    build_polygon(polygon, vertices, {0, 1, 2});
    const forced_marks marks;
    polygon.draw();
    EXPECT_EQ(marks.beginning_with("polygon_t::"),
              (std::vector<std::string>{"polygon_t::draw(0)", "polygon_t::draw(1)", "polygon_t::draw(2)",
                                        "polygon_t::draw(3)", "polygon_t::draw(end)"}));
}

TEST_F(PolygonDraw, DrawselectedHasNoMarksOfItsOwn) {
    build_polygon(polygon, vertices, {0, 1, 2});
    const forced_marks marks;
    polygon.drawselected();
    EXPECT_TRUE(marks.beginning_with("polygon_t::").empty());
}

TEST_F(PolygonDraw, LeavesPrimitiveRestartOff) {
    build_polygon(polygon, vertices, {0, 1, 2});
    polygon.draw();
    EXPECT_FALSE(glIsEnabled(GL_PRIMITIVE_RESTART));
    polygon.drawselected();
    EXPECT_FALSE(glIsEnabled(GL_PRIMITIVE_RESTART));
    GLint index = 0;
    glGetIntegerv(GL_PRIMITIVE_RESTART_INDEX, &index);
    EXPECT_EQ(index, -1);
}

TEST_F(PolygonDraw, DrawselectedDrawsTheSelectedTrianglesOnly) {
    build_polygon(polygon, vertices, {0, 1, 2, 3, 4, 5});
    EXPECT_TRUE(drawn_selection().empty());
    polygon.selectpolygon(1);
    polygon.selectpolygon(3);
    EXPECT_EQ(drawn_selection(), (std::vector<triangle>{{1, 3, 2}, {3, 5, 4}}));
    polygon.unselectpolygon(1);
    EXPECT_EQ(drawn_selection(), (std::vector<triangle>{{3, 5, 4}}));
}

TEST_F(PolygonDraw, DrawpointsShowsAllVerticesAtTheirSizes) {
    build_polygon(polygon, vertices, {0, 1, 2});
    ASSERT_TRUE(polygon.select(4));
    const auto points = drawn->record(GL_POINTS, [this] { polygon.drawpoints(); });
    EXPECT_EQ(ids_of(points), (std::vector<std::int32_t>{0, 1, 2, 3, 4, 5, 6}));
    for (const auto& point : points)
        EXPECT_EQ(point.second, point.id == 4 ? 5.0F : 3.0F);
}

TEST_F(PolygonDraw, DrawpointsFollowsTheSelectionAfterGrowth) {
    build_polygon(polygon, vertices, {0, 1, 2});
    ASSERT_TRUE(polygon.extend(100, 3));
    ASSERT_TRUE(polygon.select(99));
    const auto points = drawn->record(GL_POINTS, [this] { polygon.drawpoints(); });
    ASSERT_EQ(points.size(), 100U);
    EXPECT_EQ(points[98].second, 3.0F);
    EXPECT_EQ(points[99].second, 5.0F);
}

TEST_F(PolygonDraw, DrawframesReadsTheWorkNormals) {
    build_polygon(polygon, vertices, {0, 1, 2});
    {
        const array_span<work_frame_t> work(polygon.wknmls);
        for (std::size_t i = 0; i < work.size(); ++i)
            work[i].first.x = static_cast<float>(i) * 0.5F;
    }
    const auto points = drawn->record(GL_POINTS, [this] { polygon.drawframes(); });
    ASSERT_EQ(points.size(), 7U);
    for (std::size_t i = 0; i < points.size(); ++i)
        EXPECT_EQ(points[i].third, static_cast<float>(i) * 0.5F);
}

TEST_F(PolygonDraw, DrawverticesReadsTheFramesAndReturnsTheCount) {
    const std::vector<frame_t> frames(7, frame_t{{0.75F, 0, 0}, {}, {0, 0, 1}});
    build_polygon(polygon, vertices, {0, 1, 2}, frames);
    std::uint64_t count = 0;
    const auto points = drawn->record(GL_POINTS, [&] { count = polygon.drawvertices(); });
    EXPECT_EQ(count, 7U);
    ASSERT_EQ(points.size(), 7U);
    for (const auto& point : points)
        EXPECT_EQ(point.third, 0.75F);
}

struct PolygonBounds : gl_test {
    polygon_t polygon;
    pos3 low{-100, -100, -100};
    pos3 high{100, 100, 100};
};

TEST_F(PolygonBounds, OnlyVerticesInStripsCount) {
    build_polygon(polygon, vertices_at({{9, 9, 9}, {1, -2, 3}, {-1, 2, 5}, {0, 1, 4}, {-9, -9, -9}}),
                  {1, 2, mark, 3});
    polygon.bounds(low, high);
    EXPECT_EQ(low, (pos3{-1, -2, 3}));
    EXPECT_EQ(high, (pos3{1, 2, 5}));
}

TEST_F(PolygonBounds, OneIndexIsABoxOfOnePoint) {
    build_polygon(polygon, vertices_at({{0, 0, 0}, {4, 5, 6}}), {mark, 7, 1});
    polygon.bounds(low, high);
    EXPECT_EQ(low, (pos3{4, 5, 6}));
    EXPECT_EQ(high, (pos3{4, 5, 6}));
}

TEST_F(PolygonBounds, WithoutAnyVertexTheBoxStays) {
    build_polygon(polygon, vertices_at({{1, 1, 1}, {2, 2, 2}}), {mark, 2, 1000});
    polygon.bounds(low, high);
    EXPECT_EQ(low, (pos3{-100, -100, -100}));
    EXPECT_EQ(high, (pos3{100, 100, 100}));
}

}  // namespace
