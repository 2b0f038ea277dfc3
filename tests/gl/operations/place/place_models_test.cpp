#include "operations/place/place_models.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "formats/scene_files.h"
#include "gl/formats/scene/block_reading.h"
#include "model/math/vectors.h"
#include "render/gl/mapped_span.h"
#include "support/cut_meshes.h"
#include "support/failing_mapping.h"
#include "support/gl_context.h"
#include "support/places.h"
#include "support/polygon_builder.h"
#include "support/scene_text.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

class PlaceModels : public gl_test {
  protected:
    void add_mesh(const std::vector<pos3>& places, const std::vector<std::uint32_t>& elements = {0, 1, 2}) {
        auto entry = std::make_unique<model_entry_t>(model_kind_t::polygon);
        build_polygon(entry->polygon, vertices_at(places), elements);
        placed.push_back({entry.get(), {}});
        scene.models.push_back(std::move(entry));
    }
    /// A surface of four by four control points.
    nurbs_t& add_net() {
        std::ostringstream log;
        EXPECT_TRUE(load_scene(scene, sample("patch.ulk").c_str(), surface_programs(), log)) << log.str();
        placed.push_back({scene.models.back().get(), {}});
        return scene.models.back()->nurbs;
    }
    placed_t place(const std::vector<place_step_t>& steps) {
        EXPECT_TRUE(add_place_steps(placed, steps));
        for (const placed_model_t& model : placed)
            if (const placed_t result = place_model(model, surface_programs()); result != placed_t::done)
                return result;
        return placed_t::done;
    }
    std::vector<pos3> places(std::size_t model = 0) const {
        std::vector<pos3> all;
        for (const vertex_t& vertex : vertices_of(placed[model].model->polygon))
            all.push_back(vertex.position);
        return all;
    }
    frame_t first_frame() const { return frames_of(placed[0].model->polygon).front(); }

    scene_t scene;
    std::vector<placed_model_t> placed;
};

using places_t = std::vector<pos3>;

TEST_F(PlaceModels, PointsMoveTurnAndGrowAndFramesOnlyTurn) {
    add_mesh({{1, 0, 0}, {2, 0, 0}, {1, 1, 0}});
    const frame_t before = first_frame();
    ASSERT_EQ(place({{place_kind_t::move, {0, 0, 1}}, {place_kind_t::scale, {2}}}), placed_t::done);
    EXPECT_EQ(places(), (places_t{{2, 0, 2}, {4, 0, 2}, {2, 2, 2}}));
    EXPECT_EQ(first_frame(), before);
    placed[0].placement = {};
    ASSERT_EQ(place({{place_kind_t::turn, {90, 0, 0}}}), placed_t::done);
    EXPECT_EQ(places(), (places_t{{2, -2, 0}, {4, -2, 0}, {2, -2, 2}}));
    EXPECT_EQ(before.normal, (dir3{0, 0, 1}));
    EXPECT_EQ(first_frame().normal, (dir3{0, -1, 0}));
}

TEST_F(PlaceModels, CenterMovesTheMiddleOfTheCommonBoxToTheOrigin) {
    add_mesh({{1, 0, 0}, {2, 0, 0}, {1, 1, 0}});
    add_mesh({{4, 0, 0}, {5, 0, 0}, {4, 3, 8}});
    ASSERT_EQ(place({{place_kind_t::center}}), placed_t::done);
    EXPECT_EQ(places(0), (places_t{{-2, -1.5F, -4}, {-1, -1.5F, -4}, {-2, -0.5F, -4}}));
    EXPECT_EQ(places(1), (places_t{{1, -1.5F, -4}, {2, -1.5F, -4}, {1, 1.5F, 4}}));
}

TEST_F(PlaceModels, UnitFillsTheCube) {
    add_mesh({{10, 20, 30}, {14, 20, 30}, {10, 21, 32}});
    ASSERT_EQ(place({{place_kind_t::unit}}), placed_t::done);
    EXPECT_EQ(places(),
              (places_t{{-0.5F, -0.125F, -0.25F}, {0.5F, -0.125F, -0.25F}, {-0.5F, 0.125F, 0.25F}}));
}

TEST_F(PlaceModels, UnitNeverLeavesTheCube) {
    for (const float side : {0.1F, 0.7F, 3.3F, 1e-40F, 3e38F}) {
        placed.clear();
        add_mesh({{side / 3, 0, 0}, {side, 0, 0}, {side / 3, side / 7, 0}});
        ASSERT_EQ(place({{place_kind_t::unit}}), placed_t::done);
        EXPECT_EQ(places()[0].x, -0.5F);
        EXPECT_EQ(places()[1].x, 0.5F);
    }
}

TEST_F(PlaceModels, BoxesAreMeasuredAfterTheStepsBefore) {
    add_mesh({{0, 0, 0}, {4, 0, 0}, {0, 2, 0}});
    ASSERT_EQ(
        place({{place_kind_t::turn, {0, 0, 90}}, {place_kind_t::unit}, {place_kind_t::move, {1, 0, 0}}}),
        placed_t::done);
    EXPECT_EQ(places(), (places_t{{1.25F, -0.5F, 0}, {1.25F, 0.5F, 0}, {0.75F, -0.5F, 0}}));
}

TEST_F(PlaceModels, ABoxWithoutSizeIsOnlyCentred) {
    add_mesh({{3, 4, 5}, {3, 4, 5}, {3, 4, 5}});
    ASSERT_EQ(place({{place_kind_t::unit}}), placed_t::done);
    EXPECT_EQ(places(), places_t(3, pos3{0, 0, 0}));
}

TEST_F(PlaceModels, WhatIsNotFiniteOrNotUsedHasNoPartInTheBox) {
    add_mesh({{0, 0, 0}, {4, 0, 0}, {0, 2, 0}, {nan, 1, 1}, {100, 100, 100}, {1, 1, 1}},
             {0, 1, 2, 3, mark, 5, mark, 99});
    ASSERT_EQ(place({{place_kind_t::center}}), placed_t::done);
    EXPECT_EQ(places()[0], (pos3{-2, -1, -0.5F}));
    EXPECT_TRUE(std::isnan(places()[3].x));
    EXPECT_EQ(places()[3].y, 0);
    EXPECT_EQ(places()[4], (pos3{98, 99, 99.5F})) << "it goes along";
}

TEST_F(PlaceModels, WithoutABoxNothingIsCentred) {
    add_mesh({{1, 2, 3}}, {});
    ASSERT_EQ(place({{place_kind_t::unit}, {place_kind_t::move, {1, 0, 0}}}), placed_t::done);
    EXPECT_EQ(places(), (places_t{{2, 2, 3}}));
    placed.clear();
    placed.push_back(
        {scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon)).get(), {}});
    EXPECT_EQ(place({{place_kind_t::center}, {place_kind_t::scale, {2}}}), placed_t::done) << "no arrays";
}

TEST_F(PlaceModels, TooLargeCoordinatesAreRefused) {
    add_mesh({{1, 0, 0}, {2e38F, 0, 0}, {1, 1, 0}});
    const places_t before = places();
    EXPECT_EQ(place({{place_kind_t::scale, {2}}}), placed_t::too_far);
    EXPECT_EQ(places(), before);
    placed.clear();
    nurbs_t& nurbs = add_net();
    EXPECT_EQ(place({{place_kind_t::move, {0, 1e39, 0}}}), placed_t::too_far);
    EXPECT_TRUE(is_finite(nurbs.points.data[0].position));
}

TEST_F(PlaceModels, ANetTakesItsMeshAlong) {
    nurbs_t& nurbs = add_net();
    const std::vector<control_point_t> net = nurbs.points.data;
    const std::vector<float> weights = nurbs.weight.data;
    const places_t before = places();
    const frame_t frame = frames_of(*nurbs.polygon)[40];
    ASSERT_EQ(place({{place_kind_t::turn, {90, 0, 0}}, {place_kind_t::move, {0, 0, 2}}}), placed_t::done);
    for (std::size_t n = 0; n < net.size(); ++n) {
        const pos3& p = net[n].position;
        EXPECT_EQ(nurbs.points.data[n].position, (pos3{p.x, -p.z, p.y + 2}));
        EXPECT_EQ(nurbs.points.data[n].color, net[n].color);
    }
    EXPECT_EQ(nurbs.weight.data, weights);
    const places_t after = places();
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t n = 0; n < after.size(); ++n)
        EXPECT_LT(length(after[n] - pos3{before[n].x, -before[n].z, before[n].y + 2}), 1e-5F);
    const dir3 normal = frames_of(*nurbs.polygon)[40].normal;
    EXPECT_LT(length(normal - dir3{frame.normal.x, -frame.normal.z, frame.normal.y}), 1e-5F);
    const mapped_span<const control_point_t, array_t> uploaded(nurbs.ctlpts);
    EXPECT_TRUE(std::ranges::equal(uploaded.span(), nurbs.points.data)) << "what is drawn and picked";
}

TEST_F(PlaceModels, WhatCanNotBeMappedIsTold) {
    add_mesh({{1, 0, 0}, {2, 0, 0}, {1, 1, 0}});
    const places_t before = places();
    testing::internal::CaptureStderr();
    for (const int failing : {1, 2}) {
        const failing_mapping mappings(failing);
        EXPECT_FALSE(add_place_steps(placed, std::vector<place_step_t>{{place_kind_t::center}}));
    }
    placed[0].placement.move({1, 0, 0});
    for (const int failing : {1, 2}) {
        const failing_mapping mappings(failing);
        EXPECT_EQ(place_model(placed[0], surface_programs()), placed_t::no_memory);
    }
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(places(), before);
}

}  // namespace
