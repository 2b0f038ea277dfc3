#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "gl/model/polygon/vertex_recorder.h"
#include "model/polygon/strip_walk.h"
#include "render/gl/mapped_span.h"
#include "support/counted_mappings.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/gl_trace.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

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
    std::optional<vertex_recorder> drawn;
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

/// The corners as GL gets them, each triangle from its first one on.
struct SingleTriangles : PolygonDraw {
    std::vector<std::int32_t> drawn_corners() {
        return ids_of(drawn->record(GL_TRIANGLES, [this] { polygon.draw(); }));
    }
    bool are_drawn_without_indices() {
        const gl_trace trace;
        polygon.draw();
        return std::ranges::count(trace.events(), "glDrawElements") == 0;
    }
};

TEST_F(SingleTriangles, OfVerticesInOrderAreDrawnWithoutIndices) {
    build_polygon(polygon, vertices, {0, 1, 2, mark, 3, 4, 5, mark});
    EXPECT_EQ(drawn_corners(), (std::vector<std::int32_t>{0, 1, 2, 3, 4, 5}));
    EXPECT_TRUE(are_drawn_without_indices());
}

TEST_F(SingleTriangles, NeedNoLastMark) {
    build_polygon(polygon, vertices, {0, 1, 2, mark, 3, 4, 5});
    EXPECT_EQ(drawn_corners(), (std::vector<std::int32_t>{0, 1, 2, 3, 4, 5}));
    EXPECT_TRUE(are_drawn_without_indices());
}

TEST_F(SingleTriangles, InAnotherOrderAreDrawnAsStrips) {
    const std::vector<std::uint32_t> in_order{0, 1, 2, mark, 3, 4, 5, mark};
    for (std::size_t i = 0; i < in_order.size(); ++i) {
        std::vector<std::uint32_t> elements = in_order;
        elements[i] = elements[i] == mark ? 6 : elements[i] == 4 ? 0 : 4;
        polygon.clear();
        build_polygon(polygon, vertices, elements);
        std::vector<triangle> expected;
        walk_strips(elements, vertices.size(), [&](const strip_triangle_t& each) {
            triangle corners{static_cast<std::int32_t>(each.a), static_cast<std::int32_t>(each.b),
                             static_cast<std::int32_t>(each.c)};
            std::rotate(corners.begin(), std::ranges::min_element(corners), corners.end());
            expected.push_back(corners);
        });
        EXPECT_EQ(drawn_strips(), expected) << "element " << i;
    }
}

TEST_F(SingleTriangles, BeyondTheVerticesAreNotDrawn) {
    build_polygon(polygon, vertices, {0, 1, 2, mark, 3, 4, 5, mark});
    ASSERT_EQ(drawn_corners().size(), 6U);
    ASSERT_TRUE(polygon.extend(5, 8));
    EXPECT_EQ(drawn_corners(), (std::vector<std::int32_t>{0, 1, 2}));
    ASSERT_TRUE(polygon.extend(7, 8));
    EXPECT_EQ(drawn_corners(), (std::vector<std::int32_t>{0, 1, 2, 3, 4, 5}));
}

TEST_F(SingleTriangles, AreExchangedWithTheMesh) {
    build_polygon(polygon, vertices, {0, 1, 2, mark});
    ASSERT_EQ(drawn_corners().size(), 3U);
    polygon_t other;
    build_polygon(other, vertices, {0, 1, 2, 3});
    polygon.swap(other);
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}, {1, 3, 2}}));
}

TEST_F(SingleTriangles, FollowEdits) {
    build_polygon(polygon, vertices, {0, 1, 2, mark, 3, 4, 5, mark});
    ASSERT_EQ(drawn_corners().size(), 6U);
    index_span(polygon.elements)[3] = 3;
    EXPECT_EQ(drawn_strips(), (std::vector<triangle>{{0, 1, 2}, {1, 3, 2}, {2, 3, 3}, {3, 3, 4}, {3, 4, 5}}));
    index_span(polygon.elements)[3] = mark;
    EXPECT_EQ(drawn_corners(), (std::vector<std::int32_t>{0, 1, 2, 3, 4, 5}));
    ASSERT_TRUE(polygon.extend(7, 4));
    EXPECT_EQ(drawn_corners(), (std::vector<std::int32_t>{0, 1, 2}));
    polygon.clear();
    build_polygon(polygon, vertices, {4, 5, 6});
    EXPECT_EQ(drawn_corners(), (std::vector<std::int32_t>{4, 5, 6}));
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
