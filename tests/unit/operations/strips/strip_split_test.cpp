#include <gtest/gtest.h>

#include <random>
#include <string>

#include "strip_changes.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using enum change_kind_t;

/// Lists in which a strip stands alone and between other strips, with all that can end it.
std::vector<indices_t> lists_around(const indices_t& strip) {
    const std::vector<indices_t> befores = {
        {}, {mark}, {12, 13, 14, mark}, {12, 13, 14, 15, mark, 16, 17, mark}};
    const std::vector<indices_t> afters = {
        {}, {mark}, {mark, mark, 18, 19}, {mark, 18, 19, 20}, {mark, 18, 19, 20, 21, mark, 22, 23, 24, mark}};
    std::vector<indices_t> lists;
    for (const indices_t& before : befores) {
        for (const indices_t& after : afters) {
            indices_t& list = lists.emplace_back(before);
            list.insert(list.end(), strip.begin(), strip.end());
            list.insert(list.end(), after.begin(), after.end());
        }
    }
    return lists;
}

/// Splits each triangle of many lists, alone and from each of its corners.
void expect_each_split(change_kind_t kind) {
    for (std::uint32_t triangles = 1; triangles <= 10; ++triangles) {
        for (const indices_t& list : lists_around(strip_of(triangles))) {
            const std::size_t all = triangles_of(numbered_mesh(list)).size();
            for (std::size_t split = 0; split < 3 * all; ++split) {
                const auto corner = static_cast<std::uint32_t>(split % 3);
                SCOPED_TRACE(testing::PrintToString(list) + " triangle " + std::to_string(split / 3) +
                             " corner " + std::to_string(corner));
                strip_mesh_t mesh = numbered_mesh(list);
                expect_changes(mesh, [=](std::size_t number) {
                    return number == split / 3 ? change_t{kind, corner} : change_t{};
                });
                if (testing::Test::HasFailure())
                    return;
            }
        }
    }
}

TEST(StripSplit, OneEdgeOfEachTriangleKeepsAllOthers) {
    expect_each_split(split_one_edge);
}

TEST(StripSplit, TwoEdgesOfEachTriangleKeepAllOthers) {
    expect_each_split(split_two_edges);
}

TEST(StripSplit, FirstOfTwoTrianglesLeavesThreeOfTheSameOrientation) {
    strip_mesh_t mesh = numbered_mesh({0, 1, 2, 3});
    expect_changes(mesh, [](std::size_t number) {
        return number == 0 ? change_t{split_one_edge, 0} : change_t{};
    });
    EXPECT_EQ(triangles_of(mesh), (triangles_t{{0, 4, 2}, {1, 2, 4}, {1, 3, 2}}));
}

/// Walk after walk over the same mesh, as when one mesh is cut by many triangles.
TEST(StripSurgery, AnyChangesInManyWalksKeepAllOtherTriangles) {
    std::mt19937 random(35);
    for (std::uint32_t triangles = 1; triangles <= 10; ++triangles) {
        for (const indices_t& list : lists_around(strip_of(triangles))) {
            SCOPED_TRACE(testing::PrintToString(list));
            strip_mesh_t mesh = numbered_mesh(list);
            for (int walk = 0; walk < 6; ++walk) {
                expect_changes(mesh, [&](std::size_t) {
                    return change_t{static_cast<change_kind_t>(random() % 4),
                                    static_cast<std::uint32_t>(random() % 3)};
                });
            }
            if (HasFailure())
                return;
        }
    }
}

}  // namespace
