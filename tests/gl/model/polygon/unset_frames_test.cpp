#include "model/polygon/unset_frames.h"

#include <gtest/gtest.h>

#include "render/gl/mapped_span.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr frame_t given{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}};

/// Two triangles that share an edge: one in the front plane, one that stands on it.
class UnsetFrames : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        build_polygon(polygon, vertices_at({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 1, 1}}), {0, 1, 2, 3},
                      std::vector<frame_t>(4, given));
    }

    polygon_t polygon;
};

TEST_F(UnsetFrames, AreMadeFromTheTrianglesAndTheOthersStay) {
    polygon.unset_frames = {true, false, true, true};
    ASSERT_TRUE(make_unset_frames(polygon));
    const frame_t first = triangle_frame({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    const frame_t second = triangle_frame({0, 1, 0}, {1, 0, 0}, {0, 1, 1});
    EXPECT_EQ(first.normal, (dir3{0, 0, 1}));
    EXPECT_EQ(frames_of(polygon), (std::vector<frame_t>{first, given, second, second}));
}

TEST_F(UnsetFrames, BeyondTheEndOfTheMarksAreGiven) {
    polygon.unset_frames = {true};
    ASSERT_TRUE(make_unset_frames(polygon));
    EXPECT_EQ(frames_of(polygon)[3], given);
}

TEST_F(UnsetFrames, WithoutATriangleLookToTheFront) {
    polygon.unset_frames.assign(4, true);
    {
        const index_span elements(polygon.elements);
        elements[3] = mark;
    }
    ASSERT_TRUE(make_unset_frames(polygon));
    EXPECT_EQ(frames_of(polygon)[3], new_vertex_frame);
}

TEST_F(UnsetFrames, AreForgottenWhenTheMeshIsExtendedOrCleared) {
    polygon.unset_frames.assign(4, true);
    ASSERT_TRUE(polygon.extend(5, 4));
    EXPECT_TRUE(polygon.unset_frames.empty());
    polygon.unset_frames.assign(5, true);
    polygon.clear();
    EXPECT_TRUE(polygon.unset_frames.empty());
}

TEST_F(UnsetFrames, GoWithACopy) {
    polygon.unset_frames.assign(4, true);
    polygon_t copy;
    ASSERT_TRUE(copy.copy(polygon));
    EXPECT_EQ(copy.unset_frames, polygon.unset_frames);
    polygon_t other;
    other.swap(copy);
    EXPECT_EQ(other.unset_frames, polygon.unset_frames);
    EXPECT_TRUE(copy.unset_frames.empty());
}

}  // namespace
