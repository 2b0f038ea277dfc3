#include "operations/cut/walls/cut_walls.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <numbers>

#include "support/captured_stream.h"
#include "support/closed_surface.h"
#include "support/cut_works.h"
#include "support/exact_volume.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

strip_mesh_t without(const strip_mesh_t& victim, const strip_mesh_t& cutter) {
    strip_mesh_t mesh = victim;
    split_by(mesh, cutter, {});
    remove_inside(mesh, cutter, {});
    return mesh;
}

strip_mesh_t walled(const strip_mesh_t& victim, const strip_mesh_t& cutter) {
    strip_mesh_t mesh = without(victim, cutter);
    add_walls(mesh, victim, cutter, {});
    return mesh;
}

/// One cut after the other.
strip_mesh_t walled(const strip_mesh_t& victim, std::span<const strip_mesh_t> cutters) {
    strip_mesh_t mesh = victim;
    for (const strip_mesh_t& cutter : cutters)
        mesh = walled(mesh, cutter);
    return mesh;
}

strip_mesh_t coloured(strip_mesh_t mesh, const col3a& color) {
    for (vertex_t& vertex : mesh.vertices)
        vertex.color = color;
    return mesh;
}

bool is_convex(const strip_mesh_t& mesh) {
    for (const face_t& face : faces_of(mesh)) {
        const half_space_t side(face);
        for (const vertex_t& v : mesh.vertices)
            if (dot(side.normal, {v.position.x, v.position.y, v.position.z}) > side.distance + 1e-5)
                return false;
    }
    return true;
}

const strip_mesh_t cube = box({-0.5F, -0.5F, -0.5F}, {0.5F, 0.5F, 0.5F});

TEST(CutWalls, ClosedFormsOfBoxesAndPrisms) {
    const double prism_area = 16 * 0.25 * std::sin(2 * std::numbers::pi / 32);
    const struct {
        const char* name;
        strip_mesh_t victim, cutter;
        double volume;
    } rows[] = {
        {"corner", cube, box({0, 0, 0}, {1, 1, 1}), 7.0 / 8},
        {"half", cube, box({0, -0.5F, -0.5F}, {0.5F, 0.5F, 0.5F}), 0.5},
        {"notch to the middle", cube, box({-0.25F, -0.25F, 0}, {0.25F, 0.25F, 1}), 1 - 0.125},
        {"hollow", cube, box({-0.25F, -0.25F, -0.25F}, {0.25F, 0.25F, 0.25F}), 1 - 0.125},
        {"all", cube, box({-1, -1, -1}, {1, 1, 1}), 0},
        {"itself", cube, cube, 0},
        {"beside", cube, box({2, 2, 2}, {3, 3, 3}), 1},
        {"touched", cube, box({0.5F, -0.25F, -0.25F}, {1, 0.25F, 0.25F}), 1},
        {"touched by its like", cube, box({0.5F, -0.5F, -0.5F}, {1.5F, 0.5F, 0.5F}), 1},
        {"drilled", box({-1, -1, -0.25F}, {1, 1, 0.25F}), cylinder(0, 0, 0.5F, 32, -1, 1),
         2 - prism_area / 2},
        {"drilled as deep as it is thick", box({-1, -1, -0.25F}, {1, 1, 0.25F}),
         cylinder(0, 0, 0.5F, 32, -0.25F, 0.25F), 2 - prism_area / 2},
        {"drilled half through", box({-1, -1, -0.25F}, {1, 1, 0.25F}), cylinder(0, 0, 0.5F, 32, 0, 1),
         2 - prism_area / 4},
    };
    for (const auto& row : rows) {
        const strip_mesh_t mesh = walled(row.victim, row.cutter);
        EXPECT_NEAR(volume_of(mesh), row.volume, 1e-6) << row.name;
        EXPECT_EQ(count_edges_without_partner(mesh), 0U) << row.name;
    }
}

TEST(CutWalls, SpheresTendToTheClosedForm) {
    // Of two balls of radius 1 whose middles are 1 apart, the lens between them is 5 pi / 12.
    const strip_mesh_t mesh = walled(sphere({0, 0, 0}, 1, 4), sphere({1, 0, 0}, 1, 4));
    const double exact = std::numbers::pi * (4.0 / 3 - 5.0 / 12);
    EXPECT_NEAR(volume_of(mesh), exact, 2e-3 * exact);
    EXPECT_EQ(count_edges_without_partner(mesh), 0U);
}

struct place_t {
    float size, offset;
};

class CutWallsAt : public testing::TestWithParam<place_t> {};

TEST_P(CutWallsAt, WorksAreClosedAndHaveTheirVolumes) {
    const auto [size, offset] = GetParam();
    const double cube_of_size = std::pow(static_cast<double>(size), 3);
    // What single precision leaves of places this far from the origin, over the area of some faces.
    const double tolerance =
        cube_of_size * std::max(3e-6, 2e-6 * static_cast<double>(offset) / static_cast<double>(size));
    for (const cut_work_t& plain_work : works()) {
        const cut_work_t work = scaled(plain_work, size, offset);
        const strip_mesh_t mesh = walled(work.victim, work.cutters);
        EXPECT_EQ(count_edges_without_partner(mesh), 0U) << work.name;
        if (work.cutters.size() <= 8) {
            EXPECT_NEAR(volume_of(mesh), volume_without(work.victim, work.cutters), tolerance) << work.name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Places, CutWallsAt,
                         testing::Values(place_t{1, 0}, place_t{1e-3F, 0}, place_t{1e4F, 0},
                                         place_t{1, 100}));

TEST(CutWalls, SixteenHoles) {
    const strip_mesh_t plate = box({-1, -1, -0.1F}, {1, 1, 0.1F});
    const strip_mesh_t mesh = walled(plate, holes(4, 16, 0.2F));
    EXPECT_NEAR(volume_of(mesh), 0.2 * (4 - 16 * 8 * 0.04 * std::sin(std::numbers::pi / 8)), 3e-6);
    EXPECT_EQ(count_edges_without_partner(mesh), 0U);
}

TEST(CutWalls, AnyTwoBodies) {
    const captured_stream messages(std::cerr);
    cut_scenes_t random(21);
    for (int n = 0; n < 160; ++n) {
        const bool on_lattice = n % 2 == 0;
        const strip_mesh_t victim = on_lattice ? random.lattice_box() : random.closed_mesh(0);
        const strip_mesh_t cutter = on_lattice ? random.lattice_box() : random.closed_mesh(0);
        const strip_mesh_t mesh = walled(victim, cutter);
        EXPECT_NEAR(volume_of(mesh), volume_of(victim) - volume_of_both(victim, cutter), 1e-5) << n;
        EXPECT_EQ(count_edges_without_partner(mesh), 0U) << n;
    }
}

TEST(CutWalls, OneCutAfterTheOther) {
    const captured_stream messages(std::cerr);
    cut_scenes_t random(33);
    for (int n = 0; n < 30; ++n) {
        const auto next = [&] {
            for (;;) {
                const strip_mesh_t mesh = n % 3 == 0   ? random.lattice_box()
                                          : n % 3 == 1 ? random.turned(random.random_box())
                                                       : random.closed_mesh(0);
                if (is_convex(mesh))
                    return mesh;
            }
        };
        const strip_mesh_t victim = n % 3 == 2 ? random.closed_mesh(0) : next();
        const std::vector<strip_mesh_t> cutters{next(), next(), next(), next()};
        const strip_mesh_t mesh = walled(victim, cutters);
        EXPECT_NEAR(volume_of(mesh), volume_without(victim, cutters), 1e-5) << n;
        EXPECT_EQ(count_edges_without_partner(mesh), 0U) << n;
    }
}

TEST(CutWalls, StripsStayAndAreTurnedRound) {
    // The strips of both are long, of odd and even numbers of triangles.
    const strip_mesh_t mesh =
        walled(in_strips(sphere({0, 0, 0}, 1, 3)), in_strips(sphere({0.4F, 0.3F, 0.2F}, 0.3F, 3)));
    EXPECT_NEAR(volume_of(mesh),
                volume_of(sphere({0, 0, 0}, 1, 3)) - volume_of(sphere({0.4F, 0.3F, 0.2F}, 0.3F, 3)), 1e-5);
    EXPECT_EQ(count_edges_without_partner(mesh), 0U);
    EXPECT_LT(mesh.elements.size(), 2 * faces_of(mesh).size());
}

TEST(CutWalls, HaveTheCuttersColoursAndTextureCoordinates) {
    const col3a red{1, 0, 0, 1}, blue{0, 0, 1, 1};
    const strip_mesh_t cutter = coloured(box({0, -0.25F, -0.25F}, {1, 0.25F, 0.25F}), blue);
    const strip_mesh_t mesh = walled(coloured(cube, red), cutter);
    std::size_t walls = 0;
    for (const strip_triangle_t& t : [&] {
             std::vector<strip_triangle_t> all;
             walk_strips(mesh.elements, mesh.vertices.size(), [&](const auto& each) { all.push_back(each); });
             return all;
         }()) {
        const vertex_t &a = mesh.vertices[t.a], &b = mesh.vertices[t.b], &c = mesh.vertices[t.c];
        EXPECT_EQ(a.color, b.color);
        EXPECT_EQ(a.color, c.color);
        if (a.color != blue)
            continue;
        ++walls;
        for (const vertex_t& vertex : {a, b, c}) {
            EXPECT_NEAR(vertex.texcoord.s, vertex.position.x / 4, 1e-6F);
            EXPECT_NEAR(vertex.texcoord.t, vertex.position.y / 4, 1e-6F);
        }
        // All faces of the hole look to its middle.
        const pos3 middle = (a.position + b.position + c.position) * (1 / 3.0F);
        EXPECT_GT(dot(unit_face_normal(a.position, b.position, c.position), pos3{0.3F, 0, 0} - middle), 0);
    }
    EXPECT_GT(walls, 9U);
}

TEST(CutWalls, FramesAreTurnedAboutTheirTangentsAndStayRightHanded) {
    strip_mesh_t cutter = box({-0.25F, -0.25F, -0.25F}, {0.25F, 0.25F, 0.25F});
    for (frame_t& frame : cutter.frames)
        frame = {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}};
    const strip_mesh_t wall = wall_inside(cube, cutter, {});
    ASSERT_EQ(wall.frames.size(), 8U);
    for (const frame_t& frame : wall.frames)
        EXPECT_EQ(frame, (frame_t{{0, 1, 0}, {0, 0, -1}, {-1, 0, 0}}));
}

TEST(CutWalls, ThereIsNoneWhereFacesLieInOneAnother) {
    EXPECT_TRUE(wall_inside(cube, cube, {}).elements.empty());
    EXPECT_TRUE(wall_inside(cube, box({0.5F, -0.5F, -0.5F}, {1.5F, 0.5F, 0.5F}), {}).elements.empty());
    // Five faces of the pocket are inside; the sixth lies in the top of the cube.
    const strip_mesh_t pocket = wall_inside(cube, box({-0.25F, -0.25F, 0}, {0.25F, 0.25F, 0.5F}), {});
    EXPECT_NEAR(area_of(pocket), 4 * 0.25 + 0.25, 1e-6);
}

TEST(CutWalls, HaveNoVerticesWithoutTriangles) {
    const strip_mesh_t wall = wall_inside(cube, box({-0.25F, -0.25F, 0}, {0.25F, 0.25F, 1}), {});
    std::vector<bool> is_used(wall.vertices.size());
    for (const std::uint32_t element : wall.elements)
        if (element != restart_mark)
            is_used[element] = true;
    EXPECT_EQ(std::ranges::count(is_used, false), 0);
}

TEST(CutWalls, VictimThatTheCutterDoesNotTouchStays) {
    strip_mesh_t mesh = cube;
    EXPECT_FALSE(add_walls(mesh, cube, box({2, 2, 2}, {3, 3, 3}), {}));
    EXPECT_TRUE(is_same(mesh, cube));
}

TEST(CutWalls, OfAnOpenVictimNothingIsFilledThatHasNoWall) {
    // The upright sheet has no inside: its hole stays.
    const strip_mesh_t flag = upright(sheet(6, 2, [](float, float) { return 0.0F; }));
    const strip_mesh_t ball = sphere({0.1F, 0.03F, 0.2F}, 0.5F, 2);
    const strip_mesh_t mesh = walled(flag, ball);
    EXPECT_NEAR(area_of(mesh), area_of(without(flag, ball)), 1e-4);
    EXPECT_GT(count_edges_without_partner(mesh), 0U);
}

TEST(CutWalls, ProgressRunsFromZeroToOne) {
    progress_signal_t progress;
    std::vector<double> seen;
    progress.connect([&](double fraction) { seen.push_back(fraction); });
    strip_mesh_t mesh = without(cube, box({0, 0, 0}, {1, 1, 1}));
    add_walls(mesh, cube, box({0, 0, 0}, {1, 1, 1}), progress);
    EXPECT_TRUE(std::ranges::is_sorted(seen));
    EXPECT_GE(seen.front(), 0);
    EXPECT_GT(seen.back(), 0.8);
    EXPECT_LE(seen.back(), 1);
}

TEST(CutWalls, StrangeMeshesComeToAnEnd) {
    const captured_stream messages(std::cerr);
    cut_scenes_t random(5);
    for (std::uint32_t n = 0; n < 8 * cut_scenes_t::kinds; ++n) {
        const cut_scene_t scene = random.scene(n % cut_scenes_t::kinds);
        const strip_mesh_t mesh = walled(scene.victim, scene.cutter);
        EXPECT_EQ(mesh.vertices.size(), mesh.frames.size());
        for (const std::uint32_t element : mesh.elements)
            ASSERT_TRUE(element == restart_mark || element < mesh.vertices.size());
    }
    EXPECT_TRUE(walled({}, cube).elements.empty());
    EXPECT_TRUE(is_same(walled(cube, strip_mesh_t{}), cube));
}

}  // namespace
