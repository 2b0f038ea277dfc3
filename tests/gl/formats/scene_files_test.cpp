#include "formats/scene_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>

#include "gl/formats/scene/block_reading.h"
#include "gltextures/textures/texture_stores.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/locale_scope.h"
#include "support/pictures.h"
#include "support/scene_text.h"
#include "support/stl_bytes.h"

using namespace ulk3d;
using namespace ulk_test;

namespace {

struct loading_t {
    bool result = false;
    scene_t scene;
    std::string messages;
};

class SceneFiles : public gl_test {
  protected:
    std::string file(const std::string& text) { return folder.write("scene.ulk", text); }

    loading_t load(const std::string& path) {
        loading_t loading;
        std::ostringstream log;
        const captured_stream errors(std::cerr);
        loading.result = load_scene(loading.scene, path.c_str(), surface_programs(), log);
        loading.messages = log.str();
        return loading;
    }

    /// The text that the models of a load are saved to.
    std::string save(loading_t& loading) {
        const std::string path = folder.path("saved.ulk");
        EXPECT_TRUE(save_models(loading.scene.models, path.c_str()));
        return read_file(path);
    }

    loading_t load_text(const std::string& text) { return load(file(text)); }

    temporary_folder_t folder;
};

using LoadScene = SceneFiles;
using LoadModels = SceneFiles;
using SaveModel = SceneFiles;
using SaveModels = SceneFiles;
using SaveScene = SceneFiles;

/// A polar point may have a coordinate of -0, which the evaluator reads back as 0.
std::string without_negative_zeros(const std::string& text) {
    std::istringstream input(text);
    std::string result;
    for (std::string line; std::getline(input, line);) {
        if (line.starts_with("position"))
            line = std::regex_replace(line, std::regex("-0(?=[,\r])"), "0");
        result += line + "\n";
    }
    return result;
}

/// A model with a scene block of its own.
std::unique_ptr<model_entry_t> triangle() {
    return std::move(read_polygon(triangle_block()).entry);
}

std::unique_ptr<model_entry_t> patch() {
    return std::move(read_nurbs(patch_block()).entry);
}

model_list_t triangle_and_patch() {
    model_list_t models;
    models.push_back(triangle());
    models.push_back(patch());
    return models;
}

}  // namespace

TEST_F(LoadScene, ModelsComeInFileOrder) {
    const std::string path =
        file("# a scene\r\n\r\n" + triangle_block() + "\n" + patch_block() + triangle_block());
    const loading_t loading = load(path);
    EXPECT_TRUE(loading.result);
    EXPECT_EQ(loading.messages, "");
    ASSERT_EQ(loading.scene.models.size(), 3U);
    auto model = loading.scene.models.begin();
    EXPECT_EQ((*model)->kind, model_kind_t::polygon);
    EXPECT_EQ((*model)->polygon.name, path);
    EXPECT_EQ((*++model)->kind, model_kind_t::nurbs);
    EXPECT_EQ((*model)->nurbs.name, path);
    EXPECT_EQ((*++model)->kind, model_kind_t::polygon);
}

TEST_F(LoadScene, AddsToTheModelsThatAreThere) {
    loading_t loading;
    loading.scene.models.push_back(triangle());
    std::ostringstream log;
    EXPECT_TRUE(load_scene(loading.scene, file(patch_block()).c_str(), surface_programs(), log));
    ASSERT_EQ(loading.scene.models.size(), 2U);
    EXPECT_EQ(loading.scene.models.back()->kind, model_kind_t::nurbs);
}

TEST_F(LoadScene, TheLastLineNeedsNoLineFeed) {
    std::string text = triangle_block();
    text.pop_back();
    EXPECT_TRUE(load_text(text).result);
}

TEST_F(LoadScene, LineNumbersGoOnAcrossBlocks) {
    const loading_t loading = load_text(
        "\nbegin environment\nillegal 2\nend\nbegin nurbs_surface,1,1,1,1\n"
        "illegal 5\nknot1 0\nknot1 1\nknot2 0\nknot2 1\nweight 1\nposition 0,0,0\n"
        "end\n# 13\nbegin polygon_surface,0,0\nillegal 15\nend\n"
        "begin polygon_surface,1,0\nend\n");
    EXPECT_FALSE(loading.result);
    EXPECT_EQ(
        loading.messages,
        "2: illegal command: illegal 2\n5: illegal command: illegal 5\n15: illegal command: illegal 15\n"
        "18: vertex(0) < 1: too few vertex.\n18: tangent(0) < 1: too few tangent.\n"
        "18: binormal(0) < 1: too few binormal.\n18: normal(0) < 1: too few normal.\n");
}

TEST_F(LoadScene, UnknownLinesAreToldWithoutANumber) {
    const std::string nul("a\0b\n", 4);
    const loading_t loading = load_text("position 1,2,3\r\n begin environment\nBegin environment\n" + nul +
                                        "begin\nend\n" + triangle_block());
    EXPECT_TRUE(loading.result);
    EXPECT_EQ(loading.messages,
              "unknown line: position 1,2,3\r\nunknown line:  begin environment\n"
              "unknown line: Begin environment\nunknown line: " +
                  nul + "unknown line: begin\nunknown line: end\n");
}

TEST_F(LoadScene, OpeningLinesArePrefixes) {
    EXPECT_TRUE(load_text("begin environmental\nend\n").result);
    EXPECT_TRUE(load_text("begin polygon_surfaces,0,0\nend\n").result);
}

TEST_F(LoadScene, APathThatCanNotBeOpenedIsAMessage) {
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {folder.path("missing.ulk"), folder.path(""), fifo,
                                    std::string("/dev/zero"), folder.path("\xff\xfe.ulk")}) {
        const loading_t loading = load(path);
        EXPECT_FALSE(loading.result);
        EXPECT_EQ(loading.messages, path + ": file open error.\n");
        EXPECT_TRUE(loading.scene.models.empty());
    }
}

TEST_F(LoadScene, APathThatIsNotUtf8IsOpened) {
    const std::string path = folder.write("\x83\x5c\xff.ulk", triangle_block());
    const loading_t loading = load(path);
    EXPECT_TRUE(loading.result);
    EXPECT_EQ(loading.scene.models.front()->polygon.name, path);
}

TEST_F(LoadScene, AFileWithoutABlockFailsWithoutAWord) {
    for (const char* text : {"", "\n", "# a comment\r\n\r\n#another", "\r"}) {
        const loading_t loading = load_text(text);
        EXPECT_FALSE(loading.result) << text;
        EXPECT_EQ(loading.messages, "");
    }
}

TEST_F(LoadScene, ABadBlockFailsTheWholeFileAndLeavesItsModel) {
    const loading_t loading =
        load_text(triangle_block() + "begin polygon_surface,1,0\nend\n" + triangle_block());
    EXPECT_FALSE(loading.result);
    EXPECT_EQ(loading.scene.models.size(), 2U);
}

TEST_F(LoadScene, AnOpeningLineWithoutACommaFailsTheFile) {
    EXPECT_FALSE(load_text(triangle_block() + "begin nurbs_surface\nend\n").result);
    EXPECT_FALSE(load_text(triangle_block() + "begin polygon_surface\nend\n").result);
}

TEST_F(LoadScene, APolygonBlockThatTheFileCutsOffFails) {
    std::string text = triangle_block();
    text.resize(text.size() - 4);
    const loading_t loading = load_text(text);
    EXPECT_FALSE(loading.result);
    EXPECT_EQ(loading.messages, "");
}

TEST_F(LoadScene, ANurbsBlockThatTheFileCutsOffIsABlock) {
    const loading_t loading = load_text("begin nurbs_surface,2,2,2,2\nresolution 3,3");
    EXPECT_TRUE(loading.result);
    EXPECT_EQ(loading.scene.models.size(), 1U);
}

TEST_F(LoadScene, AnEnvironmentAloneIsASceneWithoutModels) {
    const loading_t loading = load_text("begin environment\nreflectalpha 1/2\nend\n");
    EXPECT_TRUE(loading.result);
    EXPECT_TRUE(loading.scene.models.empty());
    EXPECT_EQ(loading.scene.environment.reflectalpha, 0.5F);
}

TEST_F(LoadScene, ASecondEnvironmentOverwritesWhatItNames) {
    const loading_t loading = load_text(
        "begin environment\nreflectalpha 1/2\nrefractalpha 1/4\nend\n"
        "begin environment\nrefractalpha 3\nend\n");
    EXPECT_TRUE(loading.result);
    EXPECT_EQ(loading.scene.environment.reflectalpha, 0.5F);
    EXPECT_EQ(loading.scene.environment.refractalpha, 3.0F);
}

TEST_F(LoadScene, EveryEnvironmentLoadsItsCubeMap) {
    libgr::clear_texture_stores();
    for (const char* name : {"day", "night"})
        write_cube(folder, name, {});
    const loading_t loading = load_text(
        "begin environment\ncubetex day.png\nend\n"
        "begin environment\ncubetex night.png\nend\n");
    EXPECT_TRUE(loading.result);
    const std::uint32_t day = libgr::cube_textures.find(folder.path("day.png"));
    const std::uint32_t night = libgr::cube_textures.find(folder.path("night.png"));
    for (const std::uint32_t handle : {day, night}) {
        ASSERT_NE(handle, 0U);
        EXPECT_NE(libgr::cube_textures.get(handle)->object.texture_id(), 0U);
    }
    EXPECT_EQ(loading.scene.environment.cube_handle, night);
    libgr::clear_texture_stores();
}

TEST_F(LoadScene, AnEnvironmentWithoutItsPicturesFailsTheFileAlsoBeforeAGoodOne) {
    libgr::clear_texture_stores();
    write_cube(folder, "night", {});
    const loading_t loading = load_text(
        "begin environment\ncubetex missing.png\nend\n"
        "begin environment\ncubetex night.png\nend\n");
    EXPECT_FALSE(loading.result);
    EXPECT_EQ(loading.messages, "environment.initex() failed.\n");
    libgr::clear_texture_stores();
}

TEST_F(LoadScene, PicturesBesideASceneAreFoundInAFolderWithAColon) {
    libgr::clear_texture_stores();
    std::filesystem::create_directory(folder.path("a:b"));
    write_cube(folder, "a:b/sky", {});
    write_picture(folder, "a:b/red.png", plain_picture(1, 1, {255, 0, 0}));
    std::string block = triangle_block();
    block.insert(block.find('\n') + 1, "texture red.png\n");
    const loading_t loading =
        load(folder.write("a:b/scene.ulk", "begin environment\ncubetex sky.png\nend\n" + block));
    ASSERT_TRUE(loading.result) << loading.messages;
    const std::uint32_t color = loading.scene.models.front()->texture.color_handle;
    EXPECT_EQ(color, libgr::model_textures.find(folder.path("a:b/red.png")));
    EXPECT_NE(libgr::model_textures.get(color)->object.texture_id(), 0U);
    EXPECT_EQ(loading.scene.environment.cube_handle, libgr::cube_textures.find(folder.path("a:b/sky.png")));
    libgr::clear_texture_stores();
}

TEST_F(LoadModels, KnowsSurfacesOnly) {
    const std::string path =
        file("begin environment\nreflectalpha 0\nend\n" + triangle_block() + patch_block() + "# end\n");
    model_list_t models;
    std::ostringstream log;
    EXPECT_EQ(load_models(models, path.c_str(), surface_programs(), log), 2U);
    EXPECT_EQ(models.size(), 2U);
    EXPECT_EQ(log.str(), "load filename: " + path +
                             "\nunknown line: begin environment\nunknown line: reflectalpha 0\n"
                             "unknown line: end\n");
}

TEST_F(LoadModels, CountsNothingAfterAFailure) {
    const std::string path = file(triangle_block() + "begin polygon_surface\n");
    model_list_t models;
    std::ostringstream log;
    EXPECT_EQ(load_models(models, path.c_str(), surface_programs(), log), 0U);
    EXPECT_EQ(log.str(), "load filename: " + path + "\n");
}

TEST_F(LoadModels, APathThatCanNotBeOpenedHasNoModels) {
    const std::string path = folder.path("missing.ulk");
    model_list_t models;
    std::ostringstream log;
    EXPECT_EQ(load_models(models, path.c_str(), surface_programs(), log), 0U);
    EXPECT_EQ(log.str(), "load filename: " + path + "\n");
}

TEST_F(LoadModels, HasNoStlBranch) {
    model_list_t models;
    std::ostringstream log;
    EXPECT_EQ(
        load_models(models, folder.write("text.stl", triangle_block()).c_str(), surface_programs(), log), 1U);
}

TEST_F(SaveModel, APolygonModelTakesThePathAsItsName) {
    const auto entry = triangle();
    const std::string path = folder.path("saved.ulk");
    EXPECT_TRUE(save_model(*entry, path.c_str()));
    EXPECT_EQ(read_file(path), written_polygon(*entry));
    EXPECT_EQ(entry->polygon.name, path);
    EXPECT_EQ(entry->nurbs.name, "");
}

TEST_F(SaveModel, ANurbsModelTakesItTwice) {
    const auto entry = patch();
    const std::string path = folder.path("saved.ulk");
    EXPECT_TRUE(save_model(*entry, path.c_str()));
    EXPECT_EQ(read_file(path), written_nurbs(*entry));
    EXPECT_EQ(entry->polygon.name, path);
    EXPECT_EQ(entry->nurbs.name, path);
}

TEST_F(SaveModel, OfAnotherKindIsAnEmptyFile) {
    model_entry_t entry(static_cast<model_kind_t>(2));
    const std::string path = folder.path("saved.ulk");
    EXPECT_TRUE(save_model(entry, path.c_str()));
    EXPECT_EQ(read_file(path), "");
    EXPECT_EQ(entry.polygon.name, path);
    EXPECT_EQ(entry.nurbs.name, "");
}

TEST_F(SaveModel, FailsWhenNotAllBytesReachTheFile) {
    const auto entry = triangle();
    for (const std::string& path :
         {folder.path("missing/saved.ulk"), folder.path(""), std::string("/dev/full")}) {
        EXPECT_FALSE(save_model(*entry, path.c_str())) << path;
        EXPECT_EQ(entry->polygon.name, path);
    }
}

TEST_F(SaveModels, ABlankLineFollowsEachModel) {
    model_list_t models = triangle_and_patch();
    const std::string path = folder.write("saved.ulk", std::string(100'000, 'x'));
    EXPECT_TRUE(save_models(models, path.c_str()));
    EXPECT_EQ(read_file(path),
              written_polygon(*models.front()) + "\r\n" + written_nurbs(*models.back()) + "\r\n");
    EXPECT_EQ(models.front()->polygon.name, path);
    EXPECT_EQ(models.back()->nurbs.name, path);
}

TEST_F(SaveModels, AnEmptyListIsAnEmptyFile) {
    model_list_t models;
    const std::string path = folder.write("saved.ulk", "old");
    EXPECT_TRUE(save_models(models, path.c_str()));
    EXPECT_EQ(read_file(path), "");
}

TEST_F(SaveModels, AnEmptyListThatReachesNoFileIsAFailure) {
    model_list_t models;
    EXPECT_FALSE(save_models(models, folder.path("missing/saved.ulk").c_str()));
}

TEST_F(SaveModels, StopsAtTheModelThatFails) {
    for (const std::string& path : {folder.path("missing/saved.ulk"), std::string("/dev/full")}) {
        model_list_t models = triangle_and_patch();
        EXPECT_FALSE(save_models(models, path.c_str())) << path;
        EXPECT_EQ(models.front()->polygon.name, path);
        EXPECT_EQ(models.back()->polygon.name, "folder/scene.ulk");
    }
}

TEST_F(SaveScene, ABlankLineFollowsTheEnvironmentOnly) {
    scene_t scene;
    scene.models = triangle_and_patch();
    const std::string path = folder.path("saved.ulk");
    EXPECT_TRUE(save_scene(scene, path.c_str()));
    const std::string blocks = written_polygon(*scene.models.front()) + written_nurbs(*scene.models.back());
    EXPECT_EQ(read_file(path), blocks);

    scene.environment.cubetex = "sky.png";
    EXPECT_TRUE(save_scene(scene, path.c_str()));
    EXPECT_EQ(
        read_file(path),
        "begin environment\r\ncubetex sky.png\r\nreflectalpha 1\r\nrefractalpha 0\r\nrefractfactor 1\r\n"
        "end\r\n\r\n" +
            blocks);
    EXPECT_EQ(scene.models.front()->polygon.name, path);
    EXPECT_EQ(scene.models.back()->nurbs.name, path);
}

TEST_F(SaveScene, StopsAtTheModelThatFails) {
    scene_t scene;
    scene.models = triangle_and_patch();
    EXPECT_FALSE(save_scene(scene, "/dev/full"));
    EXPECT_EQ(scene.models.front()->polygon.name, "/dev/full");
    EXPECT_EQ(scene.models.back()->polygon.name, "folder/scene.ulk");
    scene_t empty;
    empty.environment.cubetex = "sky.png";
    EXPECT_FALSE(save_scene(empty, "/dev/full"));
}

TEST_F(SceneFiles, AnStlPathIsKnownInAnyCaseOfLetters) {
    for (const char* name : {"model.stl", "model.STL", "model.Stl", ".stl"}) {
        // As scene text this would be a triangle; as STL it is a header and less than one triangle behind it.
        const std::string path = folder.write(name, triangle_block().substr(0, 100));
        const loading_t loading = load(path);
        EXPECT_TRUE(loading.result) << name;
        EXPECT_EQ(loading.messages, "") << name;
        ASSERT_EQ(loading.scene.models.size(), 1U) << name;
        EXPECT_EQ(loading.scene.models.front()->polygon.vertex_count(), 0U) << name;

        scene_t scene;
        scene.models = triangle_and_patch();
        scene.environment.cubetex = "sky.png";
        const std::size_t patch_triangles = 2 * 32 * 32;
        EXPECT_TRUE(save_model(*scene.models.front(), path.c_str())) << name;
        EXPECT_EQ(stl_triangles(read_file(path)).size(), 1U) << name;
        EXPECT_TRUE(save_models(scene.models, path.c_str())) << name;
        EXPECT_EQ(stl_triangles(read_file(path)).size(), 1U + patch_triangles) << name;
        EXPECT_TRUE(save_scene(scene, path.c_str())) << name;
        EXPECT_EQ(stl_triangles(read_file(path)).size(), 1U + patch_triangles) << name;
        EXPECT_EQ(scene.models.front()->polygon.name, "folder/scene.ulk") << name;
    }
    EXPECT_EQ(
        load(folder.write("model.stl.ulk", triangle_block())).scene.models.front()->polygon.vertex_count(),
        3U);
    EXPECT_EQ(load(folder.write("stl", triangle_block())).scene.models.front()->polygon.vertex_count(), 3U);
}

TEST_F(SceneFiles, AnStlPathThatCanNotBeOpenedFailsWithoutAWord) {
    const loading_t loading = load(folder.path("missing.stl"));
    EXPECT_FALSE(loading.result);
    EXPECT_EQ(loading.messages, "");
    EXPECT_TRUE(loading.scene.models.empty());

    scene_t scene;
    scene.models = triangle_and_patch();
    const std::string path = folder.path("missing/model.stl");
    EXPECT_FALSE(save_model(*scene.models.front(), path.c_str()));
    EXPECT_FALSE(save_models(scene.models, path.c_str()));
    EXPECT_FALSE(save_scene(scene, path.c_str()));
}

TEST_F(SceneFiles, SamplesLoadAndSave) {
    for (const char* name : {"cube.ulk", "knots.ulk", "mixed.ulk", "net.ulk", "paper.ulk", "patch.ulk",
                             "sphere.ulk", "torus.ulk", "vase.ulk"}) {
        loading_t loading = load(sample(name));
        EXPECT_TRUE(loading.result) << name;
        EXPECT_EQ(loading.messages, "") << name;
        const std::string first = save(loading);
        loading_t again = load_text(first);
        EXPECT_TRUE(again.result) << name;
        EXPECT_EQ(again.messages, "") << name;
        EXPECT_EQ(again.scene.models.size(), loading.scene.models.size()) << name;
        EXPECT_EQ(save(again), without_negative_zeros(first)) << name;
    }
}

TEST_F(SceneFiles, DoNotDependOnTheLocale) {
    std::string expected;
    for (const char* name : file_locales) {
        const ulk_test::locale_scope_t scope(name);
        if (!scope.is_set())
            continue;
        loading_t loading = load(sample("mixed.ulk"));
        ASSERT_TRUE(loading.result) << name;
        loading.scene.environment.cubetex = "sky.png";
        loading.scene.environment.reflectalpha = 0.25F;
        const std::string path = folder.path("saved.ulk");
        ASSERT_TRUE(save_scene(loading.scene, path.c_str()));
        if (expected.empty())
            expected = read_file(path);
        EXPECT_EQ(read_file(path), expected) << name;
        EXPECT_EQ(load_text("begin polygon_surface,1234,0\nillegal 1.5\nposition 1,2,3\nend\n").messages,
                  "1: illegal command: illegal 1.5\n3: vertex(1) < 1234: too few vertex.\n"
                  "3: tangent(0) < 1234: too few tangent.\n3: binormal(0) < 1234: too few binormal.\n"
                  "3: normal(0) < 1234: too few normal.\n")
            << name;
    }
}
