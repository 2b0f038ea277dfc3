#include "model/polygon/ungiven_frames.h"

#include <gtest/gtest.h>

#include "render/gl/mapped_span.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr frame_t given{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}};

/// Two triangles that share an edge: one in the front plane, one that stands on it.
class UngivenFrames : public gl_test {
  protected:
    void build() {
        build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 1, 1}}), {0, 1, 2, 3});
    }
    void set_frame(std::size_t vertex, const frame_t& frame) {
        const array_span<frame_t> frames(polygon.normals);
        frames[vertex] = frame;
    }
    void set_position(std::size_t vertex, const pos3& position) {
        const array_span<vertex_t> vertices(polygon.vertices);
        vertices[vertex].position = position;
    }
    std::vector<bool> flags() { return ungiven_frames(polygon); }

    polygon_t polygon;
};

TEST_F(UngivenFrames, AreThoseThatLoadingMakes) {
    build();
    EXPECT_EQ(flags(), std::vector<bool>(4, true));
    set_frame(2, given);
    EXPECT_EQ(flags(), (std::vector<bool>{true, true, false, true}));
}

TEST_F(UngivenFrames, AreThoseOfNewVerticesAndThoseWithoutANormal) {
    build();
    for (std::size_t i = 0; i < 4; ++i)
        set_frame(i, given);
    EXPECT_EQ(flags(), std::vector<bool>(4, false));
    set_frame(0, new_vertex_frame);
    set_frame(3, {{1, 0, 0}, {0, 1, 0}, {0, 0, 0}});
    EXPECT_EQ(flags(), (std::vector<bool>{true, false, false, true}));
}

TEST_F(UngivenFrames, AreMadeFromTheTrianglesAsTheyAreNow) {
    build();
    const std::vector<bool> ungiven = flags();
    set_frame(2, given);
    set_position(3, {1, 1, 0});
    ASSERT_TRUE(make_frames(polygon, {true, true, false, true}));
    for (const std::size_t vertex : {0U, 1U, 3U})
        EXPECT_EQ(frames_of(polygon)[vertex].normal, (dir3{0, 0, 1})) << vertex;
    EXPECT_EQ(frames_of(polygon)[2], given);
}

TEST_F(UngivenFrames, OfTheLaterTriangleDecide) {
    build();
    ASSERT_TRUE(make_frames(polygon, flags()));
    const frame_t later = triangle_frame({0, 1, 0}, {1, 0, 0}, {0, 1, 1});
    EXPECT_EQ(frames_of(polygon)[1], later);
    EXPECT_EQ(frames_of(polygon)[2], later);
    EXPECT_EQ(frames_of(polygon)[0].normal, (dir3{0, 0, 1}));
}

TEST_F(UngivenFrames, WithoutATriangleLookToTheFront) {
    build();
    const std::vector<bool> ungiven = flags();
    {
        const index_span elements(polygon.elements);
        elements[3] = mark;
    }
    ASSERT_TRUE(make_frames(polygon, ungiven));
    EXPECT_EQ(frames_of(polygon)[3], new_vertex_frame);
}

}  // namespace
