#include <gtest/gtest.h>

#include <random>
#include <string>

#include "strip_surgery_walk.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

/// Lists in which a strip of `triangles` stands alone and between other strips, with all that can end it.
std::vector<indices_t> lists_with_strip(std::uint32_t triangles) {
    indices_t strip(triangles + 2);
    std::iota(strip.begin(), strip.end(), 20U);
    const std::vector<indices_t> befores = {{}, {mark}, {0, 1, 2, mark}, {0, 1, 2, 3, mark, 4, 5, mark}};
    const std::vector<indices_t> afters = {
        {}, {mark}, {mark, mark, 6, 7}, {mark, 6, 7, 8}, {mark, 6, 7, 8, 9, mark, 10, 11, 12, mark}};
    std::vector<indices_t> lists;
    for (const indices_t& before : befores) {
        for (const indices_t& after : afters) {
            indices_t list = before;
            list.insert(list.end(), strip.begin(), strip.end());
            list.insert(list.end(), after.begin(), after.end());
            lists.push_back(list);
        }
    }
    return lists;
}

using triangle_list = std::vector<triangle_indices>;

/// What becomes of a triangle at a split; `start` is the corner from which it is turned.
using pieces_t = triangle_list (*)(triangle_indices abc, std::uint32_t new_vertex, bool other_diagonal);
using split_t = passed_place_t (*)(strip_mesh_t& mesh, const met_triangle_t& met, std::uint32_t start);

triangle_list one_edge_pieces(triangle_indices abc, std::uint32_t n, bool) {
    const auto [a, b, c] = abc;
    return {{a, n, c}, {n, b, c}};
}

triangle_list two_edge_pieces(triangle_indices abc, std::uint32_t n1, bool other_diagonal) {
    const auto [a, b, c] = abc;
    const std::uint32_t n2 = n1 + 1;
    if (other_diagonal)
        return {{a, n1, n2}, {n1, b, n2}, {b, c, n2}};
    return {{a, n1, n2}, {n1, b, c}, {n1, c, n2}};
}

triangle_list sorted(triangle_list triangles) {
    for (triangle_indices& triangle : triangles)
        triangle = turned_to_lowest(triangle);
    std::ranges::sort(triangles);
    return triangles;
}

/// The triangles that refer to old vertices only.
triangle_list untouched(const triangle_list& triangles, std::size_t old_vertices) {
    triangle_list old;
    std::ranges::copy_if(
        triangles, std::back_inserter(old), [old_vertices](const triangle_indices& triangle) {
            return std::ranges::all_of(triangle,
                                       [old_vertices](std::uint32_t index) { return index < old_vertices; });
        });
    return old;
}

struct kind_of_split_t {
    const char* name;
    split_t split;
    pieces_t pieces;
};
const kind_of_split_t one_edge = {"one edge", split_one_edge, one_edge_pieces};
const kind_of_split_t two_edges = {"two edges", split_two_edges, two_edge_pieces};

/// Walks the list and splits the triangles for which `choose(number over all strips)` gives a corner below 3.
/// Every old triangle must be met once, in order, no new one, and the new mesh must hold the same triangles
/// but for the pieces of the split ones.
template <class Choose>
void expect_splits(const indices_t& list, const kind_of_split_t& kind, Choose&& choose) {
    strip_mesh_t mesh = numbered_mesh(list);
    const triangle_list before = triangles_of(mesh);
    const std::size_t old_vertices = mesh.vertices.size();
    triangle_list met_triangles, kept, pieces, other_pieces;
    walk_mesh(mesh, [&](const met_triangle_t& met) {
        const std::uint32_t start = choose(met_triangles.size());
        met_triangles.push_back(turned_to_lowest(met.vertices));
        if (start >= 3 || met_triangles.size() > before.size()) {
            kept.push_back(met_triangles.back());
            return keep(met);
        }
        triangle_indices abc = met.vertices;
        std::ranges::rotate(abc, abc.begin() + start);
        const auto new_vertex = static_cast<std::uint32_t>(mesh.vertices.size());
        const passed_place_t passed = kind.split(mesh, met, start);
        // Of the two diagonals of a quad any one will do: the mesh tells which it is.
        const triangle_list now = triangles_of(mesh);
        triangle_list chosen = kind.pieces(abc, new_vertex, false);
        if (std::ranges::find(now, turned_to_lowest(chosen[1])) == now.end())
            chosen = kind.pieces(abc, new_vertex, true);
        pieces.insert(pieces.end(), chosen.begin(), chosen.end());
        return passed;
    });
    EXPECT_EQ(met_triangles, before);
    const triangle_list after = triangles_of(mesh);
    EXPECT_EQ(untouched(after, old_vertices), kept);
    pieces.insert(pieces.end(), kept.begin(), kept.end());
    EXPECT_EQ(sorted(after), sorted(pieces));
}

void expect_each_split(const kind_of_split_t& kind) {
    for (std::uint32_t triangles = 1; triangles <= 10; ++triangles) {
        for (const indices_t& list : lists_with_strip(triangles)) {
            const std::size_t all = triangles_of(numbered_mesh(list)).size();
            for (std::size_t place = 0; place < all; ++place) {
                for (std::uint32_t start = 0; start < 3; ++start) {
                    SCOPED_TRACE(std::string(kind.name) + ": " + testing::PrintToString(list) + " triangle " +
                                 std::to_string(place) + " corner " + std::to_string(start));
                    expect_splits(list, kind,
                                  [=](std::size_t number) { return number == place ? start : 3U; });
                    if (testing::Test::HasFailure())
                        return;
                }
            }
        }
    }
}

void expect_random_splits(const kind_of_split_t& kind) {
    std::mt19937 random(20);
    for (std::uint32_t triangles = 1; triangles <= 10; ++triangles) {
        for (const indices_t& list : lists_with_strip(triangles)) {
            for (int repeat = 0; repeat < 20; ++repeat) {
                SCOPED_TRACE(std::string(kind.name) + ": " + testing::PrintToString(list));
                expect_splits(list, kind,
                              [&](std::size_t) { return static_cast<std::uint32_t>(random() % 4); });
                if (testing::Test::HasFailure())
                    return;
            }
        }
    }
}

TEST(StripSplit, OneEdgeOfEachTriangleKeepsAllOthers) {
    expect_each_split(one_edge);
}

TEST(StripSplit, TwoEdgesOfEachTriangleKeepAllOthers) {
    expect_each_split(two_edges);
}

TEST(StripSplit, ManySplitsInOneWalkKeepAllOthers) {
    expect_random_splits(one_edge);
    expect_random_splits(two_edges);
}

}  // namespace
