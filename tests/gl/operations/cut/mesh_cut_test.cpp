#include "operations/cut/mesh_cut.h"

#include <gtest/gtest.h>

#include <iostream>

#include "support/captured_stream.h"
#include "support/closed_surface.h"
#include "support/cut_meshes.h"
#include "support/exact_volume.h"
#include "support/forced_marks.h"
#include "support/gl_context.h"
#include "support/plain_mesh_cut.h"
#include "support/polygon_builder.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

struct MeshCut : gl_test {
    model_entry_t& add(const strip_mesh_t& mesh, model_kind_t kind = model_kind_t::polygon) {
        models.push_back(std::make_unique<model_entry_t>(kind));
        build_polygon(models.back()->polygon, mesh.vertices, mesh.elements, mesh.frames);
        return *models.back();
    }

    void cut(std::uint64_t current = 0) { EXPECT_TRUE(mesh_cut(progress, current, models)); }

    model_list_t models;
    progress_signal_t progress;
};

strip_mesh_t content(const model_entry_t& entry) {
    return {vertices_of(entry.polygon), frames_of(entry.polygon), elements_of(entry.polygon)};
}

const strip_mesh_t cutter_box = box({-1, -1, -1}, {1, 1, 1});
const strip_mesh_t victim_sphere = sphere({1, 0.5F, 0.25F}, 1, 1);

TEST_F(MeshCut, VictimsAreCutAsByThePlainLoop) {
    add(victim_sphere);
    add(cutter_box);
    const strip_mesh_t torus_mesh = torus({0, 1, 0}, 1, 0.25F, 8, 5);
    add(torus_mesh);
    cut(1);

    strip_mesh_t first = victim_sphere, third = torus_mesh;
    plain_mesh_cut(first, cutter_box);
    plain_mesh_cut(third, cutter_box);
    EXPECT_EQ(content(*models.front()), first);
    EXPECT_EQ(content(*models.back()), third);
    EXPECT_NE(first, victim_sphere);
    EXPECT_NE(third, torus_mesh);
}

TEST_F(MeshCut, OpeningsGetWallsWhereAskedFor) {
    const model_entry_t& cutter = add(cutter_box);
    const model_entry_t& ball = add(victim_sphere);
    const strip_mesh_t around = box({-2, -2, -2}, {2, 2, 2}), beside = box({3, 3, 3}, {4, 4, 4});
    const model_entry_t& hollow = add(around);
    const model_entry_t& untouched = add(beside);
    EXPECT_TRUE(mesh_cut(progress, 0, models, openings_t::get_walls));
    EXPECT_EQ(content(cutter), cutter_box);
    EXPECT_EQ(content(untouched), beside);
    EXPECT_EQ(count_edges_without_partner(content(ball)), 0U);
    EXPECT_NEAR(volume_of(content(ball)),
                volume_of(victim_sphere) - volume_of_both(victim_sphere, cutter_box), 1e-5);
    // Nothing of it is cut, but it has a hollow now.
    EXPECT_NEAR(volume_of(content(hollow)), 64 - 8, 1e-4);
}

TEST_F(MeshCut, CutterStaysAsItIs) {
    const model_entry_t& cutter = add(cutter_box);
    add(victim_sphere);
    cut();
    EXPECT_EQ(content(cutter), cutter_box);
}

TEST_F(MeshCut, ModelsOfOtherKindsTakeNoPart) {
    add(cutter_box);
    const model_entry_t& nurbs = add(victim_sphere, model_kind_t::nurbs);
    cut();
    EXPECT_EQ(content(nurbs), victim_sphere);
}

TEST_F(MeshCut, CurrentModelOfAnotherKindDoesNothing) {
    add(cutter_box, model_kind_t::nurbs);
    const model_entry_t& victim = add(victim_sphere);
    cut();
    EXPECT_EQ(content(victim), victim_sphere);
}

TEST_F(MeshCut, PlaceOutsideOfTheListDoesNothing) {
    add(cutter_box);
    const model_entry_t& victim = add(victim_sphere);
    cut(2);
    cut(~std::uint64_t{0});
    EXPECT_EQ(content(victim), victim_sphere);
    models.clear();
    cut();
}

TEST_F(MeshCut, CutterWithoutVerticesOrElementsDoesNothing) {
    const model_entry_t& victim = add(victim_sphere);
    add({});
    add({cutter_box.vertices, cutter_box.frames, {}});
    models.push_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    const captured_stream messages(std::cerr);
    for (const std::uint64_t current : {1U, 2U, 3U})
        cut(current);
    EXPECT_EQ(messages.text(), "");
    EXPECT_EQ(content(victim), victim_sphere);
}

TEST_F(MeshCut, VictimsWithoutVerticesOrElementsAreLeftAlone) {
    add(cutter_box);
    add({});
    add({cutter_box.vertices, cutter_box.frames, {}});
    models.push_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    const captured_stream messages(std::cerr);
    cut();
    EXPECT_EQ(messages.text(), "");
    EXPECT_EQ(models.size(), 4U);
}

TEST_F(MeshCut, SceneOfOneModelChangesNothing) {
    const model_entry_t& cutter = add(cutter_box);
    cut();
    EXPECT_EQ(content(cutter), cutter_box);
}

TEST_F(MeshCut, EnclosedVictimLosesAllTriangles) {
    add(cutter_box);
    const model_entry_t& victim = add(in_strips(sphere({0, 0, 0}, 0.5F, 1)));
    cut();
    walk_strips(content(victim).elements, content(victim).vertices.size(),
                [](const strip_triangle_t&) { ADD_FAILURE() << "a triangle is left"; });
}

TEST_F(MeshCut, VictimThatIsNotTouchedIsNotWritten) {
    add(cutter_box);
    // The index beyond the vertices would become a restart mark in a mesh that is written.
    strip_mesh_t mesh = box({3, 3, 3}, {4, 4, 4});
    mesh.elements.push_back(77);
    model_entry_t& victim = add(mesh);
    // And marks of polygons would be renewed.
    victim.polygon.polyidvector.clear();
    cut();
    EXPECT_EQ(content(victim), mesh);
    EXPECT_TRUE(victim.polygon.polyidvector.empty());
}

TEST_F(MeshCut, IndexBeyondTheVerticesDoesNotComeToLife) {
    add(cutter_box);
    strip_mesh_t mesh = victim_sphere;
    const auto beyond = static_cast<std::uint32_t>(mesh.vertices.size()) + 1;
    mesh.elements.insert(mesh.elements.end(), {mark, 0, 1, beyond});
    const model_entry_t& victim = add(mesh);
    cut();
    const std::vector<std::uint32_t> elements = content(victim).elements;
    ASSERT_GT(content(victim).vertices.size(), beyond);
    EXPECT_EQ(elements.back(), mark);
}

TEST_F(MeshCut, VictimCanLoseAllElements) {
    add(cutter_box);
    const model_entry_t& victim = add(mesh_of({{0, 0, 0}, {0.5F, 0, 0}, {0, 0.5F, 0}}, {{0, 1, 2}}));
    cut();
    EXPECT_EQ(victim.polygon.element_count(), 0U);
    EXPECT_EQ(victim.polygon.vertex_count(), 3U);
}

TEST_F(MeshCut, EachChangedVictimIsExtendedOnce) {
    add(cutter_box);
    add(victim_sphere);
    add(sphere({9, 9, 9}, 1, 1));
    add(in_strips(victim_sphere));
    std::vector<std::string> marks;
    {
        const forced_marks all;
        cut();
        marks = all.beginning_with("polygon_t::extend(start)");
    }
    EXPECT_EQ(marks.size(), 2U);
}

TEST_F(MeshCut, PolygonIdsAreRenewed) {
    add(cutter_box);
    const model_entry_t& victim = add(victim_sphere);
    cut();
    EXPECT_EQ(victim.polygon.polyidvector.size(), victim.polygon.element_count() - 2);
    EXPECT_EQ(victim.polygon.selection.size(), victim.polygon.vertex_count());
}

TEST_F(MeshCut, ProgressTellsPlacesInCutterAndVictim) {
    std::vector<double> fractions;
    progress.connect([&](double fraction) { fractions.push_back(fraction); });
    const strip_mesh_t two = mesh_of({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}, {{0, 1, 2}, {2, 1, 3}});
    const strip_mesh_t far = transformed(two, translation({9, 9, 9}));
    add(two);
    add(far);
    add(in_strips(far));
    cut();
    EXPECT_EQ(fractions, (std::vector<double>{2 * (0.5 / 7), 6 * (0.5 / 7), 2 * (0.5 / 7), 6 * (0.5 / 7),
                                              2 * (0.5 / 7) + 0.5, 6 * (0.5 / 7) + 0.5, 2 * (0.5 / 4) + 0.5,
                                              3 * (0.5 / 4) + 0.5}));
}

TEST_F(MeshCut, NothingIsMappedWhileProgressIsTold) {
    const model_entry_t& cutter = add(cutter_box);
    const model_entry_t& victim = add(victim_sphere);
    int calls = 0;
    progress.connect([&](double) {
        // A buffer can be mapped once only.
        ASSERT_EQ(content(cutter), cutter_box);
        ASSERT_EQ(content(victim), victim_sphere);
        ++calls;
    });
    cut();
    EXPECT_GT(calls, 12);
}

TEST_F(MeshCut, ModelsMayLeaveTheListMeanwhile) {
    add(cutter_box);
    add(victim_sphere);
    const model_entry_t& stays = add(victim_sphere);
    progress.connect([&](double fraction) {
        if (fraction > 0.5 && models.size() == 3) {
            models.pop_front();
            models.pop_front();
        }
    });
    cut();
    EXPECT_EQ(models.size(), 1U);
    EXPECT_NE(content(stays), victim_sphere);
}

}  // namespace
