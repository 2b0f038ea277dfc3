#include "model/vertex.h"

#include <gtest/gtest.h>

namespace {

using namespace ulk3d;

constexpr vertex_t first{{1, 2, 3}, {0.5F, 0.25F, 1, 2}, {4, 8}};
constexpr vertex_t second{{10, 20, 30}, {0.5F, 0.5F, 3, 4}, {16, 32}};
constexpr frame_t first_frame{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
constexpr frame_t second_frame{{10, 20, 30}, {40, 50, 60}, {70, 80, 90}};

TEST(Vertex, SumTakesAllNineFloats) {
    EXPECT_EQ(first + second, (vertex_t{{11, 22, 33}, {1, 0.75F, 4, 6}, {20, 40}}));
}

TEST(Vertex, DifferenceTakesAllNineFloats) {
    EXPECT_EQ(second - first, (vertex_t{{9, 18, 27}, {0, 0.25F, 2, 2}, {12, 24}}));
}

TEST(Vertex, ScaleTakesAllNineFloats) {
    EXPECT_EQ(first * 2, (vertex_t{{2, 4, 6}, {1, 0.5F, 2, 4}, {8, 16}}));
}

TEST(Vertex, MiddleOfAnEdge) {
    EXPECT_EQ(first + (second - first) * 0.5F, (vertex_t{{5.5F, 11, 16.5F}, {0.5F, 0.375F, 2, 3}, {10, 20}}));
}

TEST(Frame, SumTakesAllNineFloats) {
    EXPECT_EQ(first_frame + second_frame, (frame_t{{11, 22, 33}, {44, 55, 66}, {77, 88, 99}}));
}

TEST(Frame, DifferenceTakesAllNineFloats) {
    EXPECT_EQ(second_frame - first_frame, (frame_t{{9, 18, 27}, {36, 45, 54}, {63, 72, 81}}));
}

TEST(Frame, ScaleTakesAllNineFloats) {
    EXPECT_EQ(first_frame * -1, (frame_t{{-1, -2, -3}, {-4, -5, -6}, {-7, -8, -9}}));
}

}  // namespace
