#include "operations/fold/fold_polygons.h"

#include <gtest/gtest.h>

#include <iostream>

#include "support/captured_stream.h"
#include "support/counted_mappings.h"
#include "support/failing_stores.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

/// The fold on the arrays of a model; what it makes of a mesh is told by the tests of the host lists.
namespace {

using namespace ulk3d;
using namespace ulk_test;

class FoldArrays : public gl_test {
  protected:
    /// One strip of so many triangles.
    void build(std::uint32_t triangles) {
        std::vector<pos3> places;
        std::vector<std::uint32_t> strip;
        for (std::uint32_t i = 0; i < triangles + 2; ++i) {
            places.push_back({0.5F * static_cast<float>(i), i % 2 == 0 ? 0.0F : 1.0F, 0});
            strip.push_back(i);
        }
        build_polygon(polygon, vertices_at(places), strip);
    }
    bool fold(const std::set<std::uint32_t>& selected) {
        return fold_polygons(selected, {1, 0, 0}, {1, 1, 0}, 30, polygon.vertices, polygon.normals,
                             polygon.elements);
    }
    strip_mesh_t mesh() const { return {vertices_of(polygon), frames_of(polygon), elements_of(polygon)}; }

    polygon_t polygon;
};

TEST_F(FoldArrays, HoldWhatTheHostListsHold) {
    build(50);
    strip_mesh_t expected = mesh();
    const std::set<std::uint32_t> selected{0, 3, 4, 5, 8, 20, 21, 49};
    EXPECT_TRUE(fold_polygons(selected, {1, 0, 0}, {1, 1, 0}, 30, expected));
    EXPECT_TRUE(fold(selected));
    EXPECT_EQ(mesh().vertices, expected.vertices);
    EXPECT_EQ(mesh().frames, expected.frames);
    EXPECT_EQ(mesh().elements, expected.elements);
    EXPECT_GT(polygon.vertices.element_count(), 52);
    EXPECT_EQ(polygon.normals.element_count(), polygon.vertices.element_count());
}

TEST_F(FoldArrays, AreMappedOnceToReadAndOnceToWrite) {
    build(50);
    ASSERT_TRUE(fold({1}));
    const counted_mappings mappings;
    EXPECT_TRUE(fold({0, 3, 4, 5}));
    EXPECT_EQ(mappings.count(), 6);
}

TEST_F(FoldArrays, IndicesBeyondTheVerticesEndStripsAlsoWhereVerticesAreAdded) {
    // The copies of 1, 2 and 3 take the numbers from 4 on. Some of these stand in the list and were no
    // vertices.
    build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}),
                  {0, 1, 2, 3, 4, 0, 1, 5, 3, 77, mark, 0, 1, 6});
    ASSERT_TRUE(fold({1}));
    EXPECT_EQ(elements_of(polygon), (std::vector<std::uint32_t>{0, 1, 2, mark, 5, 4, 6, mark, 0, 1, mark, 3,
                                                                mark, mark, 0, 1, mark}));
    EXPECT_EQ(polygon.vertices.element_count(), 7);
}

TEST_F(FoldArrays, StayAsTheyWereWithoutMemory) {
    build(5);
    const strip_mesh_t before = mesh();
    for (const int first_failing : {1, 2, 3}) {
        const captured_stream errors(std::cerr);
        const failing_stores no_memory(first_failing);
        EXPECT_FALSE(fold({2})) << first_failing;
        EXPECT_EQ(mesh().vertices, before.vertices);
        EXPECT_EQ(mesh().frames, before.frames);
        EXPECT_EQ(mesh().elements, before.elements);
    }
    EXPECT_TRUE(fold({2}));
}

TEST_F(FoldArrays, DoNotFoldWhereThereAreNone) {
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(fold({0}));
}

}  // namespace
