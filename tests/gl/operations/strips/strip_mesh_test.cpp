#include "operations/strips/strip_mesh.h"

#include <gtest/gtest.h>

#include <iostream>

#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/failing_stores.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

using indices_t = std::vector<std::uint32_t>;

frame_t frame_of(float number) {
    return {{number, 0, 1}, {0, number, 2}, {0.25F, 0.5F, number}};
}

std::vector<frame_t> frames_of_four() {
    return {frame_of(1), frame_of(2), frame_of(3), frame_of(4)};
}

struct StripMesh : gl_test {
    void SetUp() override {
        gl_test::SetUp();
        build_polygon(polygon, corners, {0, 1, 2, 3}, frames_of_four());
    }
    strip_mesh_t in_buffers() const {
        return {vertices_of(polygon), frames_of(polygon), elements_of(polygon)};
    }
    const std::vector<vertex_t> corners = vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}});
    polygon_t polygon;
};

/// The mesh of the fixture with two more vertices and another strip.
strip_mesh_t larger(strip_mesh_t mesh) {
    mesh.vertices.push_back(vertex_at(5, 6, 7));
    mesh.vertices.push_back(vertex_at(8, 9, 1));
    mesh.frames.push_back(frame_of(5));
    mesh.frames.push_back(frame_of(6));
    mesh.elements.insert(mesh.elements.end(), {mark, 3, 4, 5});
    return mesh;
}

TEST_F(StripMesh, IsWhatTheBuffersHold) {
    const strip_mesh_t expected{corners, frames_of_four(), {0, 1, 2, 3}};
    EXPECT_EQ(*read_strip_mesh(polygon), expected);
}

TEST_F(StripMesh, IndicesFromTheVertexCountOnBecomeMarks) {
    build_polygon(polygon, corners, {0, 1, 3, 4, 1, 2, 3, 5, 2147483648U, mark, 3}, frames_of_four());
    EXPECT_EQ(read_strip_mesh(polygon)->elements, (indices_t{0, 1, 3, mark, 1, 2, 3, mark, mark, mark, 3}));
}

TEST_F(StripMesh, ReadingMapsEachBufferOnce) {
    const counted_mappings mappings;
    EXPECT_EQ(read_strip_mesh(polygon)->elements.size(), 4U);
    EXPECT_EQ(mappings.count(), 3);
}

TEST_F(StripMesh, ReadingAModelOfNothingPrintsNothing) {
    ASSERT_TRUE(polygon.allocate(0, 0));
    const captured_stream errors(std::cerr);
    EXPECT_EQ(*read_strip_mesh(polygon), strip_mesh_t{});
    EXPECT_EQ(errors.text(), "");
}

TEST_F(StripMesh, WrittenUnchangedLeavesAllAsItWas) {
    polygon.selection[1] = true;
    select_polygons(polygon, {1});
    polygon.selectpolygon(1);
    const indices_t selected = selectelems_of(polygon);
    const strip_mesh_t mesh = *read_strip_mesh(polygon);
    ASSERT_TRUE(write_strip_mesh(polygon, mesh));
    EXPECT_EQ(in_buffers(), mesh);
    EXPECT_EQ(polygon.selection, (std::vector<bool>{false, true, false, false}));
    EXPECT_EQ(selectelems_of(polygon), selected);
}

TEST_F(StripMesh, GrownMeshIsWrittenWithItsNewVerticesAndFrames) {
    const strip_mesh_t mesh = larger(*read_strip_mesh(polygon));
    ASSERT_TRUE(write_strip_mesh(polygon, mesh));
    EXPECT_EQ(in_buffers(), mesh);
    EXPECT_EQ(*read_strip_mesh(polygon), mesh);
}

TEST_F(StripMesh, GrownModelNumbersItsPolygonsAnewAndHasNewPointsUnselected) {
    polygon.selection[3] = true;
    ASSERT_TRUE(write_strip_mesh(polygon, larger(*read_strip_mesh(polygon))));
    ASSERT_EQ(polygon.polyidvector.size(), 6U);
    EXPECT_EQ(polygon.polyidvector[2].position, 5U);
    EXPECT_EQ(polygon.polyidvector[3].position, mark);
    EXPECT_EQ(polygon.selection, (std::vector<bool>{false, false, false, true, false, false}));
    EXPECT_EQ(pointsizes_of(polygon).size(), 6U);
    EXPECT_EQ(polygon.wknmls.element_count(), 6);
}

TEST_F(StripMesh, SmallerMeshIsWritten) {
    const strip_mesh_t mesh{
        vertices_at({{7, 0, 0}, {8, 0, 0}, {9, 1, 0}}), {frame_of(7), frame_of(8), frame_of(9)}, {2, 1, 0}};
    ASSERT_TRUE(write_strip_mesh(polygon, mesh));
    EXPECT_EQ(in_buffers(), mesh);
    EXPECT_EQ(polygon.polyidvector.size(), 1U);
    EXPECT_EQ(polygon.selection.size(), 3U);
}

TEST_F(StripMesh, FewerThanThreeElementsAreWritten) {
    for (std::uint32_t count = 0; count < 3; ++count) {
        strip_mesh_t mesh = *read_strip_mesh(polygon);
        mesh.elements = {3, 2};
        mesh.elements.resize(count);
        const captured_stream errors(std::cerr);
        ASSERT_TRUE(write_strip_mesh(polygon, mesh));
        EXPECT_EQ(in_buffers(), mesh);
        EXPECT_EQ(polygon.element_count(), count);
        EXPECT_EQ(polygon.selectelems.element_count(), 0);
        EXPECT_EQ(errors.text(), "");
    }
}

TEST_F(StripMesh, MeshOfNothingIsWrittenAndGrowsAgain) {
    const strip_mesh_t mesh = *read_strip_mesh(polygon);
    const captured_stream errors(std::cerr);
    ASSERT_TRUE(write_strip_mesh(polygon, {}));
    EXPECT_EQ(polygon.vertex_count(), 0U);
    EXPECT_EQ(polygon.element_count(), 0U);
    EXPECT_EQ(*read_strip_mesh(polygon), strip_mesh_t{});
    ASSERT_TRUE(write_strip_mesh(polygon, mesh));
    EXPECT_EQ(in_buffers(), mesh);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(StripMesh, WritingExtendsTheModelOnce) {
    const strip_mesh_t mesh = larger(*read_strip_mesh(polygon));
    const forced_marks marks;
    (void)write_strip_mesh(polygon, mesh);
    EXPECT_EQ(marks.beginning_with("polygon_t::extend(start)").size(), 1U);
}

/// Each of the three arrays takes two stores to grow.
TEST_F(StripMesh, WithoutMemoryTheModelStaysAsItWas) {
    const strip_mesh_t before = in_buffers();
    strip_mesh_t mesh = larger(before);
    // More than what is left in any buffer.
    mesh.vertices.resize(100);
    mesh.frames.resize(100);
    mesh.elements.resize(100, mark);
    for (int store = 1; store <= 6; ++store) {
        polygon_t small;
        build_polygon(small, corners, {0, 1, 2, 3}, frames_of_four());
        const failing_stores failing(store);
        const captured_stream errors(std::cerr);
        EXPECT_FALSE(write_strip_mesh(small, mesh)) << "store " << store;
        EXPECT_EQ(*read_strip_mesh(small), before) << "store " << store;
        EXPECT_EQ(small.polyidvector.size(), 2U);
        EXPECT_EQ(errors.text(), "");
    }
}

TEST_F(StripMesh, FailureOfALaterArrayIsTold) {
    strip_mesh_t mesh = in_buffers();
    mesh.vertices.resize(100);
    mesh.frames.resize(100);
    ASSERT_TRUE(polygon.wknmls.provide());
    const failing_stores failing(5);
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(write_strip_mesh(polygon, mesh));
    EXPECT_EQ(errors.text(), "wknmls.extend() failed.\n");
}

TEST_F(StripMesh, ModelThatWasNeverAllocatedIsNotWritten) {
    polygon_t empty;
    EXPECT_FALSE(write_strip_mesh(empty, *read_strip_mesh(polygon)));
    EXPECT_EQ(empty.vertex_count(), 0U);
    EXPECT_EQ(empty.element_count(), 0U);
}

}  // namespace
