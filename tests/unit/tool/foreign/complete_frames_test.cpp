#include "tool/foreign/library/complete_frames.h"

#include <gtest/gtest.h>

#include <array>

#include "model/math/vectors.h"

namespace {

using ulk3d::dir3;
using ulk3d::frame_t;
using ulk3d::vertex_t;

constexpr std::array<std::uint32_t, 3> one_triangle{0, 1, 2};

/// The frame of a triangle's first vertex, whose corners have these texture coordinates.
frame_t first_frame(const dir3& normal, const std::array<ulk3d::txc2, 3>& coordinates) {
    std::array<vertex_t, 3> vertices{};
    vertices[1].position = {2, 0, 0};
    vertices[2].position = {0, 2, 0};
    std::array<frame_t, 3> frames{};
    for (std::size_t i = 0; i < 3; ++i) {
        vertices[i].texcoord = coordinates[i];
        frames[i].normal = normal;
    }
    ulktool::complete_frames(vertices, frames, one_triangle);
    return frames[0];
}

TEST(CompleteFrames, TangentAndBinormalLieAlongTheMap) {
    // u runs along y, v along -x.
    const frame_t frame = first_frame({0, 0, 1}, {{{0, 1}, {0, 0}, {1, 1}}});
    EXPECT_EQ(frame, (frame_t{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}));
}

TEST(CompleteFrames, AMirroredMapHasAMirroredFrame) {
    const frame_t frame = first_frame({0, 0, 1}, {{{1, 0}, {0, 0}, {1, 1}}});
    EXPECT_EQ(frame, (frame_t{{-1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

TEST(CompleteFrames, TheTangentIsSquareToASlantingNormal) {
    const float part = 0.70710677F;
    const frame_t frame = first_frame({part, 0, part}, {{{0, 0}, {1, 0}, {0, 1}}});
    EXPECT_NEAR(frame.tangent.x, part, 1e-6F);
    EXPECT_NEAR(frame.tangent.z, -part, 1e-6F);
    EXPECT_NEAR(frame.binormal.y, 1, 1e-6F);
}

TEST(CompleteFrames, WithoutAMapAnyDirectionsSquareToTheNormalDo) {
    for (const dir3& normal : {dir3{1, 0, 0}, dir3{0, -1, 0}, dir3{0, 0, 1}}) {
        const frame_t frame = first_frame(normal, {});
        EXPECT_EQ(dot(frame.tangent, normal), 0);
        EXPECT_EQ(length(frame.tangent), 1);
        EXPECT_EQ(frame.binormal, cross(normal, frame.tangent));
    }
}

TEST(CompleteFrames, AVertexWithoutANormalKeepsAnEmptyFrame) {
    EXPECT_EQ(first_frame({}, {{{0, 0}, {1, 0}, {0, 1}}}), frame_t{});
}

}  // namespace
