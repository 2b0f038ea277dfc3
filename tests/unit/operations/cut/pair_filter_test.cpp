#include "operations/cut/pair_filter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <limits>

#include "model/math/vectors.h"
#include "support/captured_stream.h"
#include "support/cut_scenes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

/// The corner that is strictly on one side of the cutter's plane while both others are on the other; 3 when
/// there is none.
std::uint32_t lone_corner(const cutter_triangle_t& cutter, const corners_t& corners) {
    const float d = dot(cutter.cut.normal, cutter.cut.centroid);
    std::array<int, 3> sides{};
    for (std::size_t k = 0; k < 3; ++k) {
        const float value = dot(cutter.cut.normal, corners[k]);
        sides[k] = value < d ? -1 : value > d ? 1 : 0;
    }
    for (std::uint32_t k = 0; k < 3; ++k)
        if (sides[k] != 0 && sides[(k + 1) % 3] == -sides[k] && sides[(k + 2) % 3] == -sides[k])
            return k;
    return 3;
}

corners_t random_triangle(cut_scenes_t& random, std::uint32_t kind) {
    corners_t corners;
    const pos3 middle = random.place(1);
    const float size = std::pow(10.0F, random.between(-4, 0));
    for (pos3& corner : corners)
        corner = kind == 0   ? random.lattice_place()
                 : kind == 1 ? random.place(1)
                             : middle + as_dir(random.place(size));
    if (kind == 3)
        corners[2] = corners[1] + as_dir(random.place(1e-5F));
    return corners;
}

TEST(PairFilter, WhatIsNotAskedAboutIsNotCut) {
    const captured_stream messages(std::cerr);
    cut_scenes_t random(1);
    pair_filter_t filter;
    int taken = 0, asked = 0;
    for (std::uint32_t round = 0; round < 400; ++round) {
        cutter_triangle_t cutter(random_triangle(random, round % 4));
        if (!cutter.has_area())
            continue;
        filter.start(cutter);
        std::vector<corners_t> victims;
        for (std::uint32_t n = 0; n < 100; ++n) {
            const corners_t corners = random_triangle(random, random.below(4));
            const std::uint32_t lone = lone_corner(cutter, corners);
            if (lone == 3)
                continue;
            filter.add(corners, lone, static_cast<std::uint32_t>(victims.size()));
            victims.push_back(corners);
        }
        std::vector<bool> is_asked(victims.size());
        for (const std::uint32_t tag : filter.finish())
            is_asked.at(tag) = true;
        for (std::size_t n = 0; n < victims.size(); ++n) {
            EXPECT_TRUE(is_asked[n] || cut_pair(cutter, victims[n], 0, 0) == pair_cut_t{})
                << round << ' ' << n;
            ++taken;
            asked += is_asked[n] ? 1 : 0;
        }
    }
    EXPECT_GT(taken, 5000);
    EXPECT_GT(asked, 100);
    EXPECT_LT(asked, taken / 2);
}

TEST(PairFilter, TagsComeInRisingOrder) {
    cutter_triangle_t cutter({{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}});
    const corners_t victim{{{1, 1, 1}, {1, 1, -1}, {1.5F, 1, -1}}};
    const corners_t turned{{victim[2], victim[0], victim[1]}};
    pair_filter_t filter;
    filter.start(cutter);
    std::vector<std::uint32_t> expected;
    for (std::uint32_t tag = 0; tag < 40; ++tag) {
        expected.push_back(tag);
        if (tag % 7 == 0)
            filter.ask(tag);
        else if (tag % 2 == 0)
            filter.add(victim, 0, tag);
        else
            filter.add(turned, 1, tag);
    }
    EXPECT_EQ(filter.finish(), expected);
}

TEST(PairFilter, NotANumberIsAskedAbout) {
    cutter_triangle_t cutter({{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}});
    pair_filter_t filter;
    filter.start(cutter);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    filter.add({{{nan, 50, 1}, {50, 53, -1}, {51, 50, -1}}}, 0, 0);
    filter.add({{{50, 50, 1}, {50, 53, -1}, {51, 50, -1}}}, 0, 1);
    EXPECT_EQ(filter.finish(), (std::vector<std::uint32_t>{0}));
}

TEST(PairFilter, LineParallelToAnEdgeIsAskedAbout) {
    cutter_triangle_t cutter({{{0, 0, 0}, {4, 4, 0}, {0, 8, 0}}});
    // Beside the first edge, but within the tolerance: the cutter is on one side of the victim's plane.
    const float beside = std::ldexp(1.0F, -17);
    const corners_t victim{{{0, -beside, 1}, {-4, -4 - beside, -1}, {16, 16 - beside, -1}}};
    ASSERT_EQ(cut_pair(cutter, victim, 0, 0).new_vertices, 2U);
    pair_filter_t filter;
    filter.start(cutter);
    filter.add(victim, 0, 5);
    EXPECT_EQ(filter.finish(), (std::vector<std::uint32_t>{5}));
}

TEST(PairFilter, CutterWithAnEdgeLineThatIsNotANumberAlwaysAsks) {
    const corners_t victim{{{50, 50, 1}, {50, 53, -1}, {51, 50, -1}}};
    for (std::size_t edge = 0; edge < 3; ++edge) {
        cutter_triangle_t cutter({{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}}});
        cutter.cut.make_flat();
        cutter.cut.flat_edges[edge].line.a = std::numeric_limits<float>::quiet_NaN();
        pair_filter_t filter;
        filter.start(cutter);
        filter.add(victim, 0, 5);
        EXPECT_EQ(filter.finish(), (std::vector<std::uint32_t>{5})) << edge;
    }
}

}  // namespace
