#include "app/editor/fit_view.h"

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <sstream>

#include "formats/scene_files.h"
#include "model/math/vectors.h"
#include "render/models/glpolygon.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/polygon_builder.h"
#include "support/scene_text.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class FitView : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        target.emplace(8, 8);
        target->bind();
        ASSERT_TRUE(glpolygon.init(nullptr));
        view_layout_t layout;
        layout.resize(400, 400);
        camera.update_perspective(layout);
        camera.update_ortho(layout);
    }

    void load(const std::string& text) {
        std::ostringstream log;
        ASSERT_TRUE(load_scene(scene, folder.write("scene.ulk", text).c_str(), glpolygon, log)) << log.str();
    }

    temporary_folder_t folder;
    std::optional<render_target_t> target;
    glpolygon_t glpolygon;
    scene_t scene;
    camera_t camera;
};

TEST_F(FitView, AnEmptySceneIsSeenFromSevenUnitsAway) {
    camera.trackball.rotation = {30, {0, 1, 0}};
    camera.trackball.rotation_inverse = {-30, {0, 1, 0}};
    camera.trackball.translation = {1, 2, 3};
    camera.fit.matrix = scale(3, 3, 3);
    camera.view.matrix = scale(3, 3, 3);
    reset_view(camera, scene.models);
    EXPECT_EQ(camera.trackball.translation, (dir3{0, 0, -7}));
    EXPECT_EQ(camera.trackball.rotation, rot3_identity);
    EXPECT_EQ(camera.trackball.rotation_inverse, rot3_identity);
    EXPECT_EQ(camera.fit.matrix, mtx_identity);
    EXPECT_EQ(camera.fit.inverse, mtx_identity);
    EXPECT_EQ(camera.view.matrix, mtx_identity);
}

TEST_F(FitView, ScalesEachAxisOfTheRoomyBoxToUnitSizeAndAFlatOneByOne) {
    load(triangle_block(2));
    reset_view(camera, scene.models);
    EXPECT_EQ(camera.fit.matrix, scale(1 / 2.25F, 1 / 2.25F, 1));
    EXPECT_EQ(camera.fit.inverse, scale(2.25F, 2.25F, 1));
}

TEST_F(FitView, TheBoxIsThatOfAllModels) {
    load(triangle_block(2) + patch_block() + triangle_block(1, 4));
    reset_view(camera, scene.models);
    EXPECT_EQ(camera.fit.inverse, scale(2.25F, 2.25F, 4.5F));
}

TEST_F(FitView, GoesBackUntilTheOutermostPointIsSeen) {
    load(triangle_block(2));
    reset_view(camera, scene.models);
    // The corner (0, 2, 0): -max(|0|, |2|) * 1.25 - 1.
    EXPECT_EQ(camera.trackball.translation.x, 0);
    EXPECT_EQ(camera.trackball.translation.y, 0);
    EXPECT_NEAR(camera.trackball.translation.z, -3.5, 1e-4);
}

TEST_F(FitView, DepthOfTheOutermostPointCounts) {
    load(triangle_block(2, -3));
    reset_view(camera, scene.models);
    // The corner (0, 2, -3).
    EXPECT_NEAR(camera.trackball.translation.z, (-2.0 - 3.0) * 1.25 - 1.0, 1e-3);
}

TEST_F(FitView, TheOutermostPointMayLieToEachSide) {
    polygon_t& polygon =
        scene.models.emplace_back(std::make_unique<model_entry_t>(model_kind_t::polygon))->polygon;
    // The point that is near the eye lies further outside the picture than its opposite. The other axis of
    // the picture is a short one, or of no length, which counts as 1.
    for (const float across : {0.0F, 0.5F})
        for (const dir3& side : {dir3{-1, 0, 0}, {1, 0, 0}, {0, -1, 0}, {0, 1, 0}}) {
            const std::vector<pos3> places{{side.y * across, side.x * across, 0},
                                           {side.y * -across, side.x * -across, 0},
                                           {side.x * 4, side.y * 4, 5},
                                           {side.x * -4, side.y * -4, -2}};
            build_polygon(polygon, vertices_at(places), {0, 1, 2, 3});
            reset_view(camera, scene.models);
            EXPECT_NEAR(camera.trackball.translation.z, (-4.0 - 5.0) * 1.25 - 1.0, 1e-3)
                << across << ' ' << side.x << ' ' << side.y;
        }
}

TEST_F(FitView, AFlatModelInThePlaneOfTheTrialEyeIsSeen) {
    // Up to a size of 1 the eye from which a flat model is tried stands in its plane.
    load(triangle_block(0.5F));
    reset_view(camera, scene.models);
    EXPECT_NEAR(camera.trackball.translation.z, -0.5 * 1.25 - 1.0, 1e-4);
}

TEST_F(FitView, ANurbsModelCountsByItsControlPoints) {
    load(patch_block());
    reset_view(camera, scene.models);
    EXPECT_EQ(camera.fit.inverse, scale(1.125F, 1.125F, 1));
    EXPECT_NEAR(camera.trackball.translation.z, -1.0 * 1.25 - 1.0, 1e-4);
}

TEST_F(FitView, AModelWithoutPointsAddsNothing) {
    load(triangle_block(2, 3));
    scene.models.push_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    camera_t alone = camera;
    reset_view(camera, scene.models);
    scene.models.pop_back();
    reset_view(alone, scene.models);
    EXPECT_EQ(camera.fit.matrix, alone.fit.matrix);
    EXPECT_EQ(camera.trackball.translation, alone.trackball.translation);
}

TEST_F(FitView, ModelsWithoutPointsArePassedOverInSilence) {
    scene.models.push_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    scene.models.push_back(std::make_unique<model_entry_t>(model_kind_t::nurbs));
    const captured_stream errors(std::cerr);
    reset_view(camera, scene.models);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(FitView, OnlyModelsWithoutPointsAreSeenAsAnEmptyScene) {
    scene.models.push_back(std::make_unique<model_entry_t>(model_kind_t::polygon));
    reset_view(camera, scene.models);
    EXPECT_EQ(camera.trackball.translation, (dir3{0, 0, -7}));
    EXPECT_EQ(camera.fit.matrix, mtx_identity);
}

}  // namespace
