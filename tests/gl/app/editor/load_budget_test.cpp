// What one load may take in all: many blocks, each of which would fit by itself.

#include <gmock/gmock.h>

#include <iostream>

#include "formats/scene_files.h"
#include "formats/stl/stl_reader.h"
#include "gl/app/editor/editor_test.h"
#include "gltextures/textures/texture_stores.h"
#include "support/captured_stream.h"
#include "support/stl_bytes.h"
#include "support/watched_stores.h"
#include "utils/memory/memory_budget.h"
#include "utils/pictures/image_files.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;
using libutils::load_budget_t;
using testing::HasSubstr;

constexpr std::uint64_t mebibyte = 1 << 20;

std::string repeated(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

class LoadBudget : public editor_test {
  protected:
    void SetUp() override {
        editor_test::SetUp();
        open(triangle_block());
        current = editor.current_model();
        shown = frame();
    }

    struct opening_t {
        bool opened;
        std::string log;
        std::string errors;
    };

    /// Opens a file with so much memory for all of it.
    opening_t open_within(std::uint64_t bytes, const std::string& content, const char* name = "new.ulk") {
        const std::string path = folder.write(name, content);
        std::ostringstream log;
        const captured_stream errors(std::cerr);
        const load_budget_t budget(bytes);
        const bool opened = editor.file_open(path.c_str(), log);
        return {opened, log.str(), errors.text()};
    }

    void expect_unchanged_scene() {
        EXPECT_EQ(editor.models().size(), 1U);
        EXPECT_EQ(editor.current_model(), current);
        EXPECT_TRUE(frame().pixels == shown.pixels);
    }

    const model_entry_t* current = nullptr;
    libutils::rgba_picture_t shown;
};

TEST_F(LoadBudget, ManyPatchesAreHeldAgainstOneSum) {
    // Each is a mesh of 33 by 33 points.
    EXPECT_TRUE(open_within(mebibyte, repeated(3, patch_block())).opened);
    for (int i = 0; i < 3; ++i)
        editor.delete_current();
    const opening_t opening = open_within(mebibyte, repeated(10, patch_block()));
    EXPECT_FALSE(opening.opened);
    EXPECT_EQ(opening.log, "nurbs.makeVertices() error.\n");
    EXPECT_THAT(opening.errors, HasSubstr("polygon.allocate() fail.\n"));
    EXPECT_EQ(editor.models().size(), 1U);
    EXPECT_TRUE(open_within(4 * mebibyte, repeated(10, patch_block())).opened);
}

TEST_F(LoadBudget, ARefusedPatchLeavesTheSceneAlone) {
    EXPECT_FALSE(open_within(mebibyte, repeated(10, patch_block())).opened);
    expect_unchanged_scene();
}

TEST_F(LoadBudget, TablesOfNetsAreHeldAgainstTheSum) {
    // 20,000 numbers and 10,000 points each, of which the lines are missing.
    const std::string net = "begin nurbs_surface,100,2,100,2\nresolution 2,2\nend\n";
    const opening_t opening = open_within(mebibyte / 2, net);
    EXPECT_FALSE(opening.opened);
    EXPECT_EQ(opening.log, "0: nurbs allocate error.\n");
    expect_unchanged_scene();
}

TEST_F(LoadBudget, ManyMeshesAreHeldAgainstOneSum) {
    const std::string block = triangle_block();
    const auto lines = static_cast<std::size_t>(std::ranges::count(block, '\n'));
    const opening_t opening = open_within(40'000, repeated(10, block));
    EXPECT_FALSE(opening.opened);
    // The third one has no room; lines are counted from 0.
    EXPECT_EQ(opening.log, std::to_string(2 * lines) + ": polygon allocate error.\n");
    EXPECT_EQ(opening.errors,
              "vertices.allocate() failed.\n" + folder.path("new.ulk") + ": file open error.\n");
    expect_unchanged_scene();
}

/// A block of 30 bytes takes kilobytes: its records, and the names and buffers of its arrays.
TEST_F(LoadBudget, EmptyMeshesCountToo) {
    const opening_t opening = open_within(mebibyte, repeated(1000, "begin polygon_surface,0,0\nend\n"));
    EXPECT_FALSE(opening.opened);
    EXPECT_THAT(opening.log, HasSubstr(": polygon allocate error.\n"));
    expect_unchanged_scene();
}

TEST_F(LoadBudget, TrianglesOfAnStlFileAreHeldAgainstIt) {
    const std::string file = stl_file(std::vector<stl_triangle_t>(1000, flat_triangle()));
    EXPECT_FALSE(open_within(mebibyte / 2, file, "new.stl").opened);
    expect_unchanged_scene();
    EXPECT_TRUE(open_within(mebibyte, file, "new.stl").opened);
}

TEST_F(LoadBudget, ALineThatDoesNotFitEndsTheLoad) {
    const std::string line(3 * mebibyte, 'x');
    const opening_t opening = open_within(mebibyte, triangle_block() + "# text\n" + line + "\n");
    EXPECT_FALSE(opening.opened);
    const std::string block = triangle_block();
    EXPECT_EQ(opening.log,
              std::to_string(std::ranges::count(block, '\n') + 1) + ": the line does not fit into memory.\n");
    expect_unchanged_scene();
}

TEST_F(LoadBudget, ALineOfABlockThatDoesNotFitEndsTheLoad) {
    const std::string line(3 * mebibyte, 'x');
    for (const std::string& start :
         {std::string("begin environment\n"), std::string("begin polygon_surface,3,3\n"),
          std::string("begin nurbs_surface,2,2,2,2\n")}) {
        const opening_t opening = open_within(mebibyte, start + "\n" + line + "\nend\n");
        EXPECT_FALSE(opening.opened) << start;
        EXPECT_EQ(opening.log, "2: the line does not fit into memory.\n") << start;
        expect_unchanged_scene();
    }
}

TEST_F(LoadBudget, ALongLineThatFitsIsToldAsAWhole) {
    const std::string line(3 * mebibyte, 'x');
    const opening_t opening = open_within(4 * mebibyte, line + "\n" + triangle_block());
    EXPECT_TRUE(opening.opened);
    EXPECT_TRUE(opening.log == "unknown line: " + line + "\n");
}

TEST_F(LoadBudget, ACommentMayBeOfAnyLength) {
    const std::string comment = '#' + std::string(3 * mebibyte, 'x') + '\n';
    EXPECT_TRUE(open_within(mebibyte, comment + triangle_block() + comment).opened);
}

/// True while something is loaded: a budget within another one is that of the other.
bool is_within_a_load() {
    const load_budget_t probe(1);
    return libutils::memory_budget() > 1;
}

TEST_F(LoadBudget, EveryWayOfLoadingHasOne) {
    ASSERT_FALSE(is_within_a_load());
    int stores = 0, stores_within = 0;
    const watched_stores watch([&](GLsizeiptr) {
        ++stores;
        stores_within += is_within_a_load() ? 1 : 0;
        return true;
    });
    const std::string scene_path = folder.write("a.ulk", triangle_block());
    const std::string stl_path = folder.write("a.stl", stl_file({flat_triangle()}));
    const auto expect_all_within = [&](bool loaded) {
        EXPECT_TRUE(loaded);
        EXPECT_GT(stores, 0);
        EXPECT_EQ(stores_within, stores);
        stores = stores_within = 0;
    };
    glpolygon_t glpolygon;
    std::ostringstream log;
    scene_t scene;
    expect_all_within(load_scene(scene, scene_path.c_str(), glpolygon, log));
    expect_all_within(load_models(scene.models, scene_path.c_str(), glpolygon, log) == 1);
    expect_all_within(load_stl(stl_path.c_str(), scene));
    EXPECT_FALSE(is_within_a_load());
}

TEST_F(LoadBudget, APictureThatDoesNotFitIsNotShown) {
    libutils::image2d image;
    image.format = libutils::image_format::rgb;
    image.type = libutils::image_type::unsigned_integer;
    image.bits = libutils::image_bits::bits_8;
    image.width = image.height = 256;
    ASSERT_TRUE(image.allocate());
    ASSERT_TRUE(libutils::autosaveformat(image, folder.path("large.png").c_str()));
    std::string block = triangle_block();
    block.insert(block.find('\n') + 1, "texture large.png\n");

    libgr::clear_texture_stores();
    const opening_t refused = open_within(mebibyte / 2, block);
    EXPECT_TRUE(refused.opened) << "as with a picture that is missing";
    EXPECT_THAT(refused.errors, HasSubstr("large.png: color autoloadformat failed.\n"));
    // What was claimed for its pixels was given back.
    libgr::clear_texture_stores();
    EXPECT_TRUE(open_within(400'000, block + patch_block()).opened);
    libgr::clear_texture_stores();
    EXPECT_EQ(open_within(mebibyte, block).errors, "");
}

TEST_F(LoadBudget, PicturesAndMeshesShareTheSum) {
    libutils::image2d image;
    image.format = libutils::image_format::rgb;
    image.type = libutils::image_type::unsigned_integer;
    image.bits = libutils::image_bits::bits_8;
    image.width = image.height = 256;
    ASSERT_TRUE(image.allocate());
    ASSERT_TRUE(libutils::autosaveformat(image, folder.path("large.png").c_str()));
    std::string block = triangle_block();
    block.insert(block.find('\n') + 1, "texture large.png\n");

    libgr::clear_texture_stores();
    EXPECT_TRUE(open_within(mebibyte, block).opened);
    libgr::clear_texture_stores();
    EXPECT_TRUE(open_within(mebibyte, repeated(2, patch_block())).opened);
    libgr::clear_texture_stores();
    const opening_t opening = open_within(mebibyte, block + repeated(2, patch_block()));
    EXPECT_FALSE(opening.opened);
    EXPECT_EQ(opening.log, "nurbs.makeVertices() error.\n");
}

}  // namespace
