#include "operations/cut/strip_runs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "model/math/vectors.h"
#include "model/polygon/strip_walk.h"
#include "operations/strips/strip_surgery.h"
#include "support/cut_scenes.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

cut_plane_t random_plane(cut_scenes_t& random) {
    const dir3 normal = normalize(as_dir(random.one_in(3) ? random.lattice_place() : random.place(1)));
    return {normal, dot(normal, random.one_in(3) ? random.lattice_place() : random.place(1))};
}

/// Positions at which a triangle closes that is not strictly on one side.
std::set<std::uint32_t> expected_positions(const strip_mesh_t& mesh, const cut_plane_t& plane) {
    std::set<std::uint32_t> positions;
    walk_strips(mesh.elements, mesh.vertices.size(), [&](const strip_triangle_t& t) {
        int below = 0, above = 0;
        for (const std::uint32_t index : {t.a, t.b, t.c}) {
            const float value = dot(plane.normal, mesh.vertices[index].position);
            below += value < plane.d ? 1 : 0;
            above += value > plane.d ? 1 : 0;
        }
        if (below < 3 && above < 3)
            positions.insert(t.position + 2);
    });
    return positions;
}

std::vector<strip_runs_t::candidate_t> candidates_of(strip_runs_t& runs, const cut_plane_t& plane) {
    std::vector<strip_runs_t::candidate_t> candidates;
    for (const std::uint32_t run : runs.meeting(plane))
        runs.append_candidates(candidates, run, plane);
    return candidates;
}

/// The candidates are what a walk over all triangles finds, in its order, with its corners and counts.
void expect_right_candidates(strip_runs_t& runs, const strip_mesh_t& mesh, const cut_plane_t& plane) {
    const auto candidates = candidates_of(runs, plane);
    std::vector<std::uint32_t> positions;
    for (const auto& candidate : candidates)
        positions.push_back(runs.place(candidate).position);
    ASSERT_TRUE(std::ranges::equal(positions, expected_positions(mesh, plane)));

    for (const auto& candidate : candidates) {
        const strip_runs_t::place_t place = runs.place(candidate);
        const std::uint32_t i = place.position;
        std::uint32_t count = 0;
        while (count <= i && mesh.elements[i - count] < mesh.vertices.size())
            ++count;
        EXPECT_EQ(place.run_count, count);
        EXPECT_EQ(candidate.flipped, count % 2 == 0);
        const auto position = [&](std::uint32_t back) {
            return mesh.vertices[mesh.elements[i - back]].position;
        };
        const auto corners = runs.corners(candidate);
        EXPECT_TRUE(is_same(corners[0].x, position(candidate.flipped ? 1 : 2).x));
        EXPECT_TRUE(is_same(corners[1].y, position(candidate.flipped ? 2 : 1).y));
        EXPECT_TRUE(is_same(corners[2].z, position(0).z));
        if (!candidate.has_lone_corner())
            continue;
        const auto is_below = [&](std::size_t n) { return dot(plane.normal, corners[n]) < plane.d; };
        EXPECT_NE(is_below(candidate.lone), is_below((candidate.lone + 1) % 3));
        EXPECT_NE(is_below(candidate.lone), is_below((candidate.lone + 2) % 3));
    }
}

TEST(StripRuns, CandidatesAreThoseOfAWalkOverAll) {
    cut_scenes_t random(2);
    for (std::uint32_t kind = 0; kind < cut_scenes_t::kinds; ++kind) {
        const strip_mesh_t mesh = random.scene(kind).victim;
        strip_runs_t runs(mesh);
        for (int n = 0; n < 20; ++n)
            expect_right_candidates(runs, mesh, random_plane(random));
    }
}

TEST(StripRuns, LargeMeshIsSweptToItsEnd) {
    // Many times over the boxes that one sweep takes.
    const strip_mesh_t mesh = sheet(130, 2, [](float x, float y) { return x * y; });
    strip_runs_t runs(mesh);
    for (const float d : {-0.99F, 0.0F, 0.9F, 0.995F}) {
        expect_right_candidates(runs, mesh, {{0, 1, 0}, d});
        expect_right_candidates(runs, mesh, {{-1, 0, 0}, d});
    }
}

TEST(StripRuns, FollowTheMeshThroughSplits) {
    cut_scenes_t random(4);
    for (const std::uint32_t kind : {1U, 3U, 4U, 8U}) {
        strip_mesh_t mesh = random.scene(kind).victim;
        strip_runs_t runs(mesh);
        for (int n = 0; n < 60; ++n) {
            const auto candidates = candidates_of(runs, random_plane(random));
            if (candidates.empty())
                continue;
            const auto& candidate = candidates[random.below(static_cast<std::uint32_t>(candidates.size()))];
            auto [i, run_count] = runs.place(candidate);
            auto number = static_cast<std::int32_t>(run_count) - 3;
            const bool flipped = candidate.flipped;
            const std::size_t size = mesh.elements.size();
            ASSERT_NE(add_vertex(mesh, number, run_count, flipped ? i - 1 : i - 2, flipped ? i - 2 : i - 1, i,
                                 0.5F, 0.25F),
                      0U);
            runs.update(candidate.run, static_cast<std::uint32_t>(mesh.elements.size() - size));
            if (random.one_in(10))
                runs.tidy();
            expect_right_candidates(runs, mesh, random_plane(random));
        }
    }
}

/// Splits the triangle that closes at a position of a single strip, which begins at `start`, and looks at
/// what the runs make of it, with planes through the triangles about the place.
void expect_right_candidates_after_split(cut_scenes_t& random, strip_mesh_t mesh, std::uint32_t start,
                                         std::uint32_t position, std::uint32_t turn, bool is_apex) {
    strip_runs_t runs(mesh);
    const std::size_t size = mesh.elements.size();
    const std::size_t vertex_count = mesh.vertices.size();
    std::uint32_t run_count = position - start + 1;
    auto number = static_cast<std::int32_t>(run_count) - 3;
    std::array<std::uint32_t, 3> corners{position - 2, position - 1, position};
    if (run_count % 2 == 0)
        std::swap(corners[0], corners[1]);
    std::rotate(corners.begin(), corners.begin() + turn, corners.end());
    const auto [i0, i1, i2] = corners;
    const std::uint32_t advance = is_apex ? add_vertex(mesh, number, run_count, i0, i1, i2, 0.5F, 0.25F)
                                          : add_vertex0(mesh, number, run_count, i0, i1, i2, 0.5F);
    ASSERT_NE(advance, 0U);
    std::uint32_t run = 0;
    while (position >= runs.end_of(run))
        ++run;
    runs.update(run, static_cast<std::uint32_t>(mesh.elements.size() - size));
    for (std::uint32_t n = position - 2; n < position + 4; ++n) {
        const dir3 normal = normalize(as_dir(random.place(1)));
        const pos3& a = mesh.vertices[n].position;
        const pos3& b = mesh.vertices[(n + 1) % vertex_count].position;
        expect_right_candidates(runs, mesh, {normal, dot(normal, (a + b) * 0.5F)});
    }
}

TEST(StripRuns, FollowSplitsOnBothSidesOfTheirBorders) {
    cut_scenes_t random(5);
    for (const std::uint32_t start : {0U, 1U}) {
        strip_mesh_t ribbon = random.ribbon(200);
        ribbon.elements.insert(ribbon.elements.begin(), start, restart_mark);
        for (std::uint32_t position = 58; position < 68; ++position)
            for (std::uint32_t turn = 0; turn < 3; ++turn)
                for (const bool is_apex : {false, true})
                    expect_right_candidates_after_split(random, ribbon, start, position, turn, is_apex);
    }
}

TEST(StripRuns, BoxesGrowWithVerticesThatRoundingPutsOutside) {
    // At the end of the edge, a + (b - a) is not b but the next number after it.
    const float a = -2.1F;
    float b = 1.3F;
    while (a + (b - a) <= b)
        b = std::nextafter(b, 2.0F);
    strip_mesh_t mesh = mesh_of({{a, 0, 0}, {b, 0, 0}, {a, 1, 0}}, {{0, 1, 2}});
    strip_runs_t runs(mesh);
    const cut_plane_t beyond{{1, 0, 0}, a + (b - a)};
    EXPECT_TRUE(candidates_of(runs, beyond).empty());
    std::uint32_t run_count = 3;
    std::int32_t number = 0;
    const std::size_t size = mesh.elements.size();
    ASSERT_NE(add_vertex(mesh, number, run_count, 0, 1, 2, 1, 0.5F), 0U);
    runs.update(0, static_cast<std::uint32_t>(mesh.elements.size() - size));
    EXPECT_FALSE(candidates_of(runs, beyond).empty());
}

TEST(StripRuns, PlaneBesideTheMeshMeetsNoRun) {
    const strip_mesh_t mesh = sphere({0, 0, 0}, 1, 3);
    strip_runs_t runs(mesh);
    EXPECT_TRUE(runs.meeting({{0, 0, 1}, 1.5F}).empty());
    EXPECT_TRUE(runs.meeting({{0, -1, 0}, 1.5F}).empty());
    EXPECT_LT(runs.meeting({{1, 0, 0}, 0.9F}).size(), 30U);
    EXPECT_FALSE(runs.meeting({{1, 0, 0}, 0.9F}).empty());
}

TEST(StripRuns, MeshWithoutElementsHasNone) {
    const strip_mesh_t mesh;
    strip_runs_t runs(mesh);
    EXPECT_TRUE(runs.meeting({{0, 0, 1}, 0}).empty());
}

}  // namespace
