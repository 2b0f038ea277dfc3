#include <gtest/gtest.h>

#include <iostream>

#include "operations/cut/mesh_cut.h"
#include "support/captured_stream.h"
#include "support/cut_area.h"
#include "support/cut_works.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

void cut(strip_mesh_t& victim, const strip_mesh_t& cutter) {
    split_by(victim, cutter, {});
    remove_inside(victim, cutter, {});
}

strip_mesh_t without(strip_mesh_t victim, const strip_mesh_t& cutter) {
    cut(victim, cutter);
    return victim;
}

cut_work_t work_named(const std::string& name) {
    for (const cut_work_t& work : works())
        if (work.name == name)
            return work;
    ADD_FAILURE() << name;
    return {};
}

std::size_t triangles_after(const std::string& name) {
    const cut_work_t work = work_named(name);
    strip_mesh_t mesh = work.victim;
    for (const strip_mesh_t& cutter : work.cutters)
        cut(mesh, cutter);
    return faces_of(mesh).size();
}

struct place_t {
    float size, offset;
};

class MeshCutWorks : public testing::TestWithParam<place_t> {};

TEST_P(MeshCutWorks, WhatIsInsideGoesAllElseStaysAndNoSeamOpens) {
    const auto [size, offset] = GetParam();
    // What single precision leaves of places this far from the origin.
    const double tolerance = std::max(1e-4 * static_cast<double>(size), 1e-6 * static_cast<double>(offset));
    for (const cut_work_t& plain_work : works()) {
        const cut_work_t work = scaled(plain_work, size, offset);
        strip_mesh_t before, mesh = work.victim;
        for (const strip_mesh_t& cutter : work.cutters) {
            before = mesh;
            cut(mesh, cutter);
        }
        // The last cut meets what the others have left.
        const strip_mesh_t& cutter = work.cutters.back();
        const auto samples = static_cast<std::uint32_t>(300 / faces_of(before).size() + 1);
        const cut_area_t area = measure_cut(before, mesh, cutter, samples, 1, tolerance);
        EXPECT_EQ(area.left_inside, 0) << work.name;
        EXPECT_EQ(area.lost_outside, 0) << work.name;
        EXPECT_EQ(length_of_cracks(before, mesh, cutter, tolerance), 0) << work.name;
        const std::vector<face_t> faces = faces_of(mesh);
        EXPECT_LE(count_slivers(faces), faces.size() / 20) << work.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Places, MeshCutWorks,
                         testing::Values(place_t{1, 0}, place_t{1e-3F, 0}, place_t{1e4F, 0}, place_t{1, 100},
                                         place_t{1, 1000}));

TEST(MeshCutGrowth, HolesMakeFewTriangles) {
    for (const char* turn : {"", ", upright"}) {
        EXPECT_LT(triangles_after(std::string("plate with a hole") + turn), 200U);
        EXPECT_LT(triangles_after(std::string("plate with a hole as deep as it") + turn), 200U);
        EXPECT_LT(triangles_after(std::string("plate with sixteen holes") + turn), 2000U);
    }
}

TEST(MeshCutGrowth, TrianglesThatTheCutterDoesNotReachAreNotSplit) {
    // The planes of the small box meet most triangles of the sphere.
    const strip_mesh_t ball = sphere({0, 0, 0}, 1, 3);
    const strip_mesh_t after = without(ball, box({0.9F, -0.1F, -0.1F}, {1.1F, 0.1F, 0.1F}));
    const std::vector<face_t> faces = faces_of(after);
    const auto far_faces = [](const std::vector<face_t>& all) {
        return std::ranges::count_if(all, [](const face_t& f) { return f[0].x < 0.8 && f[1].x < 0.8; });
    };
    EXPECT_EQ(far_faces(faces), far_faces(faces_of(ball)));
}

TEST(MeshCutOfSolids, HoleAsDeepAsThePlateHasNoLid) {
    const cut_work_t work = work_named("plate with a hole as deep as it");
    const std::vector<face_t> faces = faces_of(without(work.victim, work.cutters[0]));
    EXPECT_FALSE(is_within({0.1, 0.05, 0.1}, faces, 1e-3));
    EXPECT_FALSE(is_within({0.1, 0.05, -0.1}, faces, 1e-3));
    EXPECT_TRUE(is_within({0.7, 0.7, 0.1}, faces, 1e-3));
}

TEST(MeshCutOfSolids, TouchedFaceStays) {
    for (const char* name : {"box touched at a side", "box touched by its like"}) {
        const cut_work_t work = work_named(name);
        EXPECT_NEAR(area_of(without(work.victim, work.cutters[0])), 6, 1e-5) << name;
    }
}

strip_mesh_t joined(strip_mesh_t a, const strip_mesh_t& b) {
    const auto count = static_cast<std::uint32_t>(a.vertices.size());
    a.vertices.insert(a.vertices.end(), b.vertices.begin(), b.vertices.end());
    a.frames.insert(a.frames.end(), b.frames.begin(), b.frames.end());
    a.elements.push_back(restart_mark);
    for (const std::uint32_t index : b.elements)
        a.elements.push_back(index == restart_mark ? index : index + count);
    return a;
}

/// All that is outside of a mesh in strips of one triangle, up to a box.
strip_mesh_t complement_of(strip_mesh_t mesh) {
    for (std::size_t i = 0; i + 2 < mesh.elements.size(); i += 4)
        std::swap(mesh.elements[i], mesh.elements[i + 1]);
    return joined(mesh, box({-4, -4, -4}, {4, 4, 4}));
}

TEST(MeshCutProperties, PartsOfCutterAndComplementAddUp) {
    const captured_stream messages(std::cerr);
    cut_scenes_t random(11);
    for (int n = 0; n < 60; ++n) {
        const bool on_lattice = n % 2 == 0;
        const strip_mesh_t victim = on_lattice ? random.lattice_box() : random.closed_mesh(0);
        const strip_mesh_t cutter = on_lattice ? random.lattice_box() : random.closed_mesh(0);
        const double parts =
            area_of(without(victim, cutter)) + area_of(without(victim, complement_of(cutter)));
        EXPECT_NEAR(parts, area_of(victim), 2e-4 * area_of(victim)) << n;
    }
}

TEST(MeshCutProperties, SecondCutByTheSameCutterChangesNothing) {
    const captured_stream messages(std::cerr);
    cut_scenes_t random(12);
    for (int n = 0; n < 60; ++n) {
        const bool on_lattice = n % 2 == 0;
        const strip_mesh_t victim = on_lattice ? random.lattice_box() : random.closed_mesh(0);
        const strip_mesh_t cutter = on_lattice ? random.lattice_box() : random.closed_mesh(0);
        const strip_mesh_t once = without(victim, cutter);
        EXPECT_TRUE(is_same(without(once, cutter), once)) << n;
    }
    for (const cut_work_t& work : works()) {
        const strip_mesh_t once = without(work.victim, work.cutters[0]);
        EXPECT_TRUE(is_same(without(once, work.cutters[0]), once)) << work.name;
    }
}

TEST(MeshCutProperties, TurnedScenesGiveTurnedResults) {
    const captured_stream messages(std::cerr);
    cut_scenes_t random(13);
    for (int n = 0; n < 40; ++n) {
        const bool on_lattice = n % 2 == 0;
        const strip_mesh_t victim = on_lattice ? random.lattice_box() : random.closed_mesh(0);
        const strip_mesh_t cutter = on_lattice ? random.lattice_box() : random.closed_mesh(0);
        const mtx3w turn = n % 4 < 2 ? rotation(90, {1, 0, 0}) : rotation(random.between(0, 360), {1, 2, 3});
        const double area = area_of(without(victim, cutter));
        const double turned = area_of(without(transformed(victim, turn), transformed(cutter, turn)));
        EXPECT_NEAR(turned, area, 2e-4 * area_of(victim)) << n;
    }
}

/// Mirrored in x, with the winding that keeps the front outside.
strip_mesh_t mirrored(strip_mesh_t mesh) {
    for (vertex_t& vertex : mesh.vertices)
        vertex.position.x = -vertex.position.x;
    for (std::size_t i = 0; i + 2 < mesh.elements.size(); i += 4)
        std::swap(mesh.elements[i], mesh.elements[i + 1]);
    return mesh;
}

TEST(MeshCutProperties, MirroredScenesGiveMirroredResults) {
    const captured_stream messages(std::cerr);
    cut_scenes_t random(14);
    for (int n = 0; n < 40; ++n) {
        const strip_mesh_t victim = n % 2 == 0 ? random.lattice_box() : random.closed_mesh(0);
        const strip_mesh_t cutter = n % 2 == 0 ? random.lattice_box() : random.closed_mesh(0);
        const double area = area_of(without(victim, cutter));
        EXPECT_NEAR(area_of(without(mirrored(victim), mirrored(cutter))), area, 2e-4 * area_of(victim)) << n;
    }
}

}  // namespace
