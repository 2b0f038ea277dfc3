#include "app/editor/ulkedit.h"

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <sstream>

#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/pictures.h"
#include "support/scene_text.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

class Ulkedit : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        target.emplace(200, 160);
        target->bind();
        editor.init();
        editor.reshape(200, 160);
    }

    bool open(const std::string& text) {
        return editor.file_open(folder.write("scene.ulk", text).c_str(), messages);
    }

    temporary_folder_t folder;
    std::optional<render_target_t> target;
    std::ostringstream messages;
    ulkedit_t editor{"ulkedit"};
};

TEST_F(Ulkedit, StartsWithAnEmptySceneAndItsGlState) {
    EXPECT_TRUE(editor.models().empty());
    EXPECT_EQ(editor.current_model(), nullptr);
    EXPECT_EQ(editor.current_index(), 0U);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_FALSE(glIsEnabled(GL_CULL_FACE));
    EXPECT_FALSE(glIsEnabled(GL_DITHER));
    EXPECT_TRUE(glIsEnabled(GL_PROGRAM_POINT_SIZE));
    float clear_color[4];
    glGetFloatv(GL_COLOR_CLEAR_VALUE, clear_color);
    EXPECT_FLOAT_EQ(clear_color[0], 0.18F);
    EXPECT_FLOAT_EQ(clear_color[1], 0.18F);
    EXPECT_FLOAT_EQ(clear_color[2], 0.18F);
    EXPECT_FLOAT_EQ(clear_color[3], 1.0F);
}

TEST_F(Ulkedit, TheViewStaysTheIdentityUntilAFileIsOpened) {
    EXPECT_EQ(editor.camera().view.matrix, mtx_identity);
    EXPECT_EQ(editor.camera().trackball.translation, (dir3{0, 0, -7}));
    ASSERT_TRUE(open(triangle_block(2)));
    EXPECT_NEAR(editor.camera().view.matrix[14], editor.camera().trackball.translation.z, 1e-6);
    EXPECT_NE(editor.camera().trackball.translation.z, -7);
}

TEST_F(Ulkedit, ReshapeBeforeInitLeavesTheOrthographicViewsAlone) {
    ulkedit_t fresh{"ulkedit"};
    fresh.reshape(100, 100);
    EXPECT_EQ(fresh.camera().side.matrix, mtx_identity);
    EXPECT_NE(fresh.camera().perspective.matrix, mtx_identity);
    editor.reshape(100, 100);
    EXPECT_NE(editor.camera().side.matrix, mtx_identity);
}

TEST_F(Ulkedit, OpeningAddsToTheSceneAndMakesTheFirstNewModelCurrent) {
    ASSERT_TRUE(open(triangle_block()));
    EXPECT_EQ(editor.current_index(), 0U);
    ASSERT_TRUE(open(patch_block() + triangle_block()));
    EXPECT_EQ(editor.models().size(), 3U);
    EXPECT_EQ(editor.current_index(), 1U);
    EXPECT_EQ(editor.current_model()->kind, model_kind_t::nurbs);
    EXPECT_EQ(messages.str(), "");
}

TEST_F(Ulkedit, AFailedLoadLeavesTheSceneAsItWas) {
    ASSERT_TRUE(open(triangle_block()));
    const mtx3w fit = editor.camera().fit.matrix;
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(open(triangle_block(5) + "begin polygon_surface,1,0\nend\n"));
    EXPECT_EQ(errors.text(), folder.path("scene.ulk") + ": file open error.\n");
    EXPECT_NE(messages.str().find("too few vertex."), std::string::npos);
    EXPECT_EQ(editor.models().size(), 1U);
    EXPECT_EQ(editor.current_index(), 0U);
    EXPECT_EQ(editor.camera().fit.matrix, fit);
}

TEST_F(Ulkedit, AMissingFileIsToldInTheLogAndOnTheErrorStream) {
    const captured_stream errors(std::cerr);
    const std::string path = folder.path("missing.ulk");
    EXPECT_FALSE(editor.file_open(path.c_str(), messages));
    EXPECT_EQ(errors.text(), path + ": file open error.\n");
    EXPECT_EQ(messages.str(), path + ": file open error.\n");
}

TEST_F(Ulkedit, AFileWithoutBlocksFailsWithNoWordInTheLog) {
    const captured_stream errors(std::cerr);
    EXPECT_FALSE(open("# nothing\n\n"));
    EXPECT_EQ(messages.str(), "");
    EXPECT_EQ(errors.text(), folder.path("scene.ulk") + ": file open error.\n");
}

TEST_F(Ulkedit, AnEnvironmentWithAFileNameReplacesTheScenes) {
    ulk_test::write_cube(folder, "sky", {});
    ASSERT_TRUE(open("begin environment\ncubetex sky.png\nreflectalpha 0.5\nend\n"));
    EXPECT_EQ(editor.environment().cubetex, "sky.png");
    EXPECT_EQ(editor.environment().reflectalpha, 0.5F);
    ASSERT_TRUE(open(triangle_block()));
    EXPECT_EQ(editor.environment().cubetex, "sky.png");
    ASSERT_TRUE(open("begin environment\nreflectalpha 0.25\nend\n"));
    EXPECT_EQ(editor.environment().reflectalpha, 0.5F);
}

TEST_F(Ulkedit, AFileOfAnEnvironmentAloneAddsNoModel) {
    ulk_test::write_cube(folder, "sky", {});
    ASSERT_TRUE(open("begin environment\ncubetex sky.png\nend\n"));
    EXPECT_TRUE(editor.models().empty());
    EXPECT_EQ(editor.current_model(), nullptr);
    EXPECT_EQ(editor.current_index(), 0U);
}

TEST_F(Ulkedit, AFileOfAnEnvironmentAloneLeavesTheCurrentModel) {
    ulk_test::write_cube(folder, "sky", {});
    ASSERT_TRUE(open(triangle_block() + triangle_block()));
    editor.select_model(1);
    ASSERT_TRUE(open("begin environment\ncubetex sky.png\nend\n"));
    EXPECT_EQ(editor.environment().cubetex, "sky.png");
    EXPECT_EQ(editor.current_index(), 1U);
    EXPECT_EQ(editor.current_model(), editor.models().back().get());
}

TEST_F(Ulkedit, AddedModelsBecomeCurrent) {
    editor.add_model(model_kind_t::polygon);
    EXPECT_EQ(editor.current_index(), 0U);
    editor.add_model(model_kind_t::nurbs);
    EXPECT_EQ(editor.current_index(), 1U);
    EXPECT_EQ(editor.current_model()->kind, model_kind_t::nurbs);
}

TEST_F(Ulkedit, SelectingBeyondTheSceneSelectsNothing) {
    editor.add_model(model_kind_t::polygon);
    editor.select_model(7);
    EXPECT_EQ(editor.current_model(), nullptr);
    editor.select_model(0);
    EXPECT_NE(editor.current_model(), nullptr);
}

TEST_F(Ulkedit, DeletingAMiddleModelMakesTheNextOneCurrent) {
    editor.add_model(model_kind_t::polygon);
    editor.add_model(model_kind_t::nurbs);
    editor.add_model(model_kind_t::polygon);
    editor.select_model(1);
    editor.delete_current();
    EXPECT_EQ(editor.models().size(), 2U);
    EXPECT_EQ(editor.current_index(), 1U);
    EXPECT_EQ(editor.current_model(), editor.models().back().get());
}

TEST_F(Ulkedit, DeletingTheLastOfSeveralMovesTheIndexDown) {
    editor.add_model(model_kind_t::polygon);
    editor.add_model(model_kind_t::nurbs);
    editor.delete_current();
    EXPECT_EQ(editor.current_index(), 0U);
    EXPECT_EQ(editor.current_model(), editor.models().front().get());
}

TEST_F(Ulkedit, DeletingTheOnlyModelLeavesIndexAndCountAtZero) {
    editor.add_model(model_kind_t::polygon);
    editor.delete_current();
    EXPECT_TRUE(editor.models().empty());
    EXPECT_EQ(editor.current_index(), 0U);
    EXPECT_EQ(editor.current_model(), nullptr);
}

TEST_F(Ulkedit, DeletingInAnEmptySceneDoesNothing) {
    editor.delete_current();
    EXPECT_EQ(editor.current_index(), 0U);
    EXPECT_EQ(editor.current_model(), nullptr);
}

TEST_F(Ulkedit, FoldPicksFollowADeletion) {
    for (int i = 0; i < 3; ++i)
        editor.add_model(model_kind_t::polygon);
    editor.scene().fold_picks[0] = {1, 5};
    editor.scene().fold_picks[1] = {2, 6};
    editor.select_model(1);
    editor.delete_current();
    EXPECT_EQ(editor.scene().fold_picks[0].model, no_index);
    EXPECT_EQ(editor.scene().fold_picks[0].vertex, no_index);
    EXPECT_EQ(editor.scene().fold_picks[1].model, 1U);
    EXPECT_EQ(editor.scene().fold_picks[1].vertex, 6U);
}

TEST_F(Ulkedit, FoldPicksThatAreNotChosenStaySo) {
    editor.add_model(model_kind_t::polygon);
    editor.add_model(model_kind_t::polygon);
    editor.select_model(0);
    editor.delete_current();
    EXPECT_EQ(editor.scene().fold_picks[0].model, no_index);
    EXPECT_EQ(editor.scene().fold_picks[1].model, no_index);
}

TEST_F(Ulkedit, PolygonizingChangesTheKindAlone) {
    ASSERT_TRUE(open(patch_block()));
    editor.polygonize_current();
    EXPECT_EQ(editor.current_model()->kind, model_kind_t::polygon);
    EXPECT_EQ(editor.current_model()->nurbs.count1, 2U);
    EXPECT_EQ(editor.current_model()->polygon.vertex_count(), 33U * 33U);
    editor.delete_current();
    editor.polygonize_current();
    EXPECT_EQ(editor.current_model(), nullptr);
}

TEST_F(Ulkedit, SavingWithoutACurrentModelFails) {
    EXPECT_FALSE(editor.save_current_to(folder.path("out.ulk").c_str()));
}

TEST_F(Ulkedit, SavedModelsOpenAgain) {
    ASSERT_TRUE(open(triangle_block(2) + patch_block()));
    const std::string all = folder.path("all.ulk");
    ASSERT_TRUE(editor.save_models_to(all.c_str()));
    const std::string one = folder.path("one.ulk");
    ASSERT_TRUE(editor.save_current_to(one.c_str()));
    ASSERT_TRUE(editor.file_open(all.c_str(), messages));
    EXPECT_EQ(editor.models().size(), 4U);
    ASSERT_TRUE(editor.file_open(one.c_str(), messages));
    EXPECT_EQ(editor.models().size(), 5U);
    EXPECT_EQ(messages.str(), "");
}

TEST_F(Ulkedit, OpeningASceneOfEveryKindPrintsNothing) {
    const captured_stream errors(std::cerr);
    ASSERT_TRUE(editor.file_open(sample("mixed.ulk").c_str(), messages));
    editor.display();
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(messages.str(), "");
}

}  // namespace
