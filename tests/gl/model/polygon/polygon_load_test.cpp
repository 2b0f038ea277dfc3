#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "render/gl/mapped_span.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

struct PolygonLoad : gl_test {};

struct place_row {
    std::uint32_t position;
    bool flipped;
    bool operator==(const place_row&) const = default;
};

std::vector<place_row> places_of(const polygon_t& polygon) {
    std::vector<place_row> rows;
    for (std::size_t id = 0; id < polygon.polyidvector.size(); ++id)
        rows.push_back({polygon.polyidvector[id].position, polygon.polyidvector[id].flipped});
    return rows;
}

void PrintTo(const place_row& row, std::ostream* stream) {
    *stream << "(" << row.position << (row.flipped ? ", flipped)" : ")");
}

/// Eight places of which no three that the tests use lie on a line.
std::vector<vertex_t> eight_vertices() {
    return vertices_at(
        {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {2, 2, 1}, {0, 4, 3}, {2, 5, -1}, {-3, 1, 2}, {-2, 7, 5}});
}

void expect_dir(const dir3& actual, const dir3& expected) {
    EXPECT_FLOAT_EQ(actual.x, expected.x);
    EXPECT_FLOAT_EQ(actual.y, expected.y);
    EXPECT_FLOAT_EQ(actual.z, expected.z);
}

/// What a triangle of these corners gives its vertices, by the plain formula.
frame_t frame_of(const pos3& a, const pos3& b, const pos3& c) {
    const auto unit = [](float x, float y, float z) {
        const float length = std::sqrt(x * x + y * y + z * z);
        return dir3{x / length, y / length, z / length};
    };
    const dir3 u{b.x - a.x, b.y - a.y, b.z - a.z};
    const dir3 v{c.x - b.x, c.y - b.y, c.z - b.z};
    const dir3 n = unit(u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x);
    const dir3 t = unit(b.x - c.x, b.y - c.y, b.z - c.z);
    return {t, {n.y * t.z - n.z * t.y, n.z * t.x - n.x * t.z, n.x * t.y - n.y * t.x}, n};
}

frame_t frame_of(const std::vector<vertex_t>& vertices, int a, int b, int c) {
    const auto at = [&](int i) { return vertices[static_cast<std::size_t>(i)].position; };
    return frame_of(at(a), at(b), at(c));
}

void expect_frame(const frame_t& actual, const frame_t& expected) {
    expect_dir(actual.tangent, expected.tangent);
    expect_dir(actual.binormal, expected.binormal);
    expect_dir(actual.normal, expected.normal);
}

std::vector<frame_t> first_frames_of(const polygon_t& polygon, std::size_t count) {
    auto frames = frames_of(polygon);
    frames.resize(count);
    return frames;
}

const frame_t given_frame{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

TEST_F(PolygonLoad, GivenNameReplacesTheName) {
    polygon_t polygon;
    polygon.name = "old.ulk";
    polygon.afterload("new.ulk");
    EXPECT_EQ(polygon.name, "new.ulk");
}

TEST_F(PolygonLoad, NullNameKeepsTheName) {
    polygon_t polygon;
    polygon.name = "old.ulk";
    polygon.afterload(nullptr);
    EXPECT_EQ(polygon.name, "old.ulk");
}

TEST_F(PolygonLoad, NumbersTrianglesOverAllStrips) {
    polygon_t polygon;
    build_polygon(polygon, eight_vertices(), {0, 1, 2, 3, mark, 4, 5, 6, 7});
    // Four triangles in seven records: those without a triangle keep the mark.
    EXPECT_EQ(
        places_of(polygon),
        (std::vector<place_row>{
            {0, false}, {1, true}, {5, false}, {6, true}, {mark, false}, {mark, false}, {mark, false}}));
}

TEST_F(PolygonLoad, IndexAtTheVertexCountEndsAStrip) {
    polygon_t polygon;
    build_polygon(polygon, eight_vertices(), {0, 1, 2, 8, 3, 4, 5});
    EXPECT_EQ(places_of(polygon),
              (std::vector<place_row>{{0, false}, {4, false}, {mark, false}, {mark, false}, {mark, false}}));
}

TEST_F(PolygonLoad, TwoElementsMakeNoRecords) {
    polygon_t polygon;
    build_polygon(polygon, eight_vertices(), {0, 1});
    EXPECT_TRUE(polygon.polyidvector.empty());
}

TEST_F(PolygonLoad, ThreeElementsMakeOneRecord) {
    polygon_t polygon;
    build_polygon(polygon, eight_vertices(), {2, 1, 0});
    EXPECT_EQ(places_of(polygon), (std::vector<place_row>{{0, false}}));
}

TEST_F(PolygonLoad, OnlyMarksMakeNoTriangle) {
    polygon_t polygon;
    build_polygon(polygon, eight_vertices(), {mark, mark, mark, mark});
    EXPECT_EQ(places_of(polygon), (std::vector<place_row>{{mark, false}, {mark, false}}));
}

TEST_F(PolygonLoad, DefaultFrameOfOneTriangle) {
    polygon_t polygon;
    build_polygon(polygon, vertices_at({{0, 0, 0}, {2, 0, 0}, {0, 2, 0}}), {0, 1, 2});
    const float half = std::sqrt(0.5F);
    for (const frame_t& frame : frames_of(polygon))
        expect_frame(frame, {{half, -half, 0}, {half, half, 0}, {0, 0, 1}});
}

TEST_F(PolygonLoad, EvenTriangleHasTheSameSideAsItsStrip) {
    // Vertex 3 has the zero normal only: the frame comes from the flipped triangle (2, 1, 3).
    const auto vertices = eight_vertices();
    polygon_t polygon;
    build_polygon(polygon, vertices, {0, 1, 2, 3}, {given_frame, given_frame, given_frame, {}});
    const auto frames = frames_of(polygon);
    expect_frame(frames[3], frame_of(vertices, 2, 1, 3));
    expect_frame(frames[2], frame_of(vertices, 2, 1, 3));
    expect_frame(frames[1], frame_of(vertices, 2, 1, 3));
    EXPECT_EQ(frames[0], given_frame);
}

TEST_F(PolygonLoad, OnlyTheLastVertexIsTestedForANormal) {
    const auto vertices = eight_vertices();
    polygon_t polygon;
    build_polygon(polygon, vertices, {0, 1, 2}, {{}, {}, given_frame});
    EXPECT_EQ(first_frames_of(polygon, 3), (std::vector<frame_t>{{}, {}, given_frame}));
}

TEST_F(PolygonLoad, FrameOfATriangleOverwritesItsFirstTwoVertices) {
    const auto vertices = eight_vertices();
    polygon_t polygon;
    build_polygon(polygon, vertices, {0, 1, 2}, {given_frame, given_frame, {}});
    for (const frame_t& frame : first_frames_of(polygon, 3))
        expect_frame(frame, frame_of(vertices, 0, 1, 2));
}

TEST_F(PolygonLoad, TangentWithoutANormalIsReplaced) {
    const auto vertices = eight_vertices();
    polygon_t polygon;
    build_polygon(polygon, vertices, {0, 1, 2},
                  {given_frame, given_frame, {given_frame.tangent, given_frame.binormal, {}}});
    expect_frame(frames_of(polygon)[2], frame_of(vertices, 0, 1, 2));
}

TEST_F(PolygonLoad, TinyNormalIsANormal) {
    const frame_t tiny{{}, {}, {0, 0, 1e-30F}};
    polygon_t polygon;
    build_polygon(polygon, eight_vertices(), {0, 1, 2}, {given_frame, given_frame, tiny});
    EXPECT_EQ(first_frames_of(polygon, 3), (std::vector<frame_t>{given_frame, given_frame, tiny}));
}

TEST_F(PolygonLoad, LaterStripWinsOnASharedVertex) {
    const auto vertices = eight_vertices();
    polygon_t polygon;
    build_polygon(polygon, vertices, {0, 1, 2, mark, 2, 3, 4});
    const auto frames = frames_of(polygon);
    expect_frame(frames[0], frame_of(vertices, 0, 1, 2));
    expect_frame(frames[1], frame_of(vertices, 0, 1, 2));
    expect_frame(frames[2], frame_of(vertices, 2, 3, 4));
    expect_frame(frames[3], frame_of(vertices, 2, 3, 4));
    expect_frame(frames[4], frame_of(vertices, 2, 3, 4));
}

TEST_F(PolygonLoad, FrameWrittenByAnEarlierTriangleCountsAsANormal) {
    // The second triangle ends on a vertex of the first: it has a normal by then, so 3 and 4 stay without.
    const auto vertices = eight_vertices();
    polygon_t polygon;
    build_polygon(polygon, vertices, {0, 1, 2, mark, 3, 4, 0});
    const auto frames = frames_of(polygon);
    expect_frame(frames[0], frame_of(vertices, 0, 1, 2));
    EXPECT_EQ(frames[3], frame_t{});
    EXPECT_EQ(frames[4], frame_t{});
}

TEST_F(PolygonLoad, TrianglesOfAStripWriteInStripOrder) {
    const auto vertices = eight_vertices();
    polygon_t polygon;
    build_polygon(polygon, vertices, {0, 1, 2, 3, 4});
    const auto frames = frames_of(polygon);
    expect_frame(frames[0], frame_of(vertices, 0, 1, 2));
    expect_frame(frames[1], frame_of(vertices, 2, 1, 3));
    expect_frame(frames[2], frame_of(vertices, 2, 3, 4));
    expect_frame(frames[3], frame_of(vertices, 2, 3, 4));
    expect_frame(frames[4], frame_of(vertices, 2, 3, 4));
}

TEST_F(PolygonLoad, DegenerateTriangleGetsAFrameWithoutNotANumber) {
    polygon_t polygon;
    build_polygon(polygon, vertices_at({{0, 0, 0}, {4, 0, 0}, {1, 0, 0}}), {0, 1, 2});
    for (const frame_t& frame : frames_of(polygon))
        EXPECT_EQ(frame, (frame_t{{1, 0, 0}, {0, 0, 0}, {0, 0, 0}}));
}

TEST_F(PolygonLoad, VertexOfNoTriangleKeepsItsFrame) {
    polygon_t polygon;
    build_polygon(polygon, eight_vertices(), {0, 1, 2});
    EXPECT_EQ(frames_of(polygon)[7], frame_t{});
}

TEST_F(PolygonLoad, WritesTheSelectedTrianglesOnly) {
    polygon_t polygon;
    select_polygons(polygon, {1, 2});
    build_polygon(polygon, eight_vertices(), {0, 1, 2, 3, mark, 4, 5, 6, mark, 5, 6, 7});
    std::vector<std::uint32_t> expected(30, mark);
    std::ranges::copy(std::vector<std::uint32_t>{2, 1, 3, 4, 5, 6}, expected.begin() + 3);
    EXPECT_EQ(selectelems_of(polygon), expected);
}

TEST_F(PolygonLoad, SelectedIdsWithoutATriangleAreLeftOut) {
    polygon_t polygon;
    select_polygons(polygon, {0, 7, 4000000000U});
    build_polygon(polygon, eight_vertices(), {0, 1, 2, mark});
    EXPECT_EQ(selectelems_of(polygon), (std::vector<std::uint32_t>{0, 1, 2, mark, mark, mark}));
}

TEST_F(PolygonLoad, TakesOutTrianglesThatAreNoLongerSelected) {
    polygon_t polygon;
    build_polygon(polygon, eight_vertices(), {0, 1, 2});
    polygon.selectpolygon(0);
    polygon.unselectpolygon(0);
    std::ranges::fill(index_span(polygon.selectelems).span(), 1U);
    polygon.afterload(nullptr);
    EXPECT_EQ(selectelems_of(polygon), (std::vector<std::uint32_t>{mark, mark, mark}));
}

TEST_F(PolygonLoad, TakesOutTrianglesThatNoLongerExist) {
    polygon_t polygon;
    build_polygon(polygon, eight_vertices(), {0, 1, 2, 3, 4});
    select_polygons(polygon, {2});
    ASSERT_EQ(selectelems_of(polygon)[6], 2U);
    index_span(polygon.elements)[4] = mark;
    polygon.afterload(nullptr);
    EXPECT_EQ(selectelems_of(polygon), std::vector<std::uint32_t>(9, mark));
}

}  // namespace
