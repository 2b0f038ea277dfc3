// Opening a file of each kind while something fails: all of it is there afterwards, or nothing.

#include <cerrno>

#include "faults/fault_loop.h"
#include "support/pictures.h"
#include "support/stl_bytes.h"

namespace {

using namespace ulk_test;

constexpr std::array<colour_t, 6> faces{
    {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 0}, {0, 255, 255}, {255, 0, 255}}};

/// What is on the screen before.
std::string former_scene() {
    return triangle_block(0.5F, 0.25F);
}

std::string small_patch() {
    std::string text = patch_block();
    const std::size_t end = text.rfind("end\n");
    return text.insert(end, "resolution 4,3\n");
}

std::string with_maps(std::string block, const std::string& maps) {
    return block.insert(block.find('\n') + 1, maps);
}

class LoadFaults : public fault_loop {
  protected:
    run_t load(const std::string& name) {
        return {.prepare = [this] { open(former_scene()); },
                .command = [this, path = folder.path(name)] { return open_file(path); }};
    }

    void write_maps() {
        write_picture(folder, "colour.jpg", plain_picture(8, 8, {200, 100, 50}));
        write_picture(folder, "bump.bmp", plain_picture(4, 4, {128, 128, 255}));
        write_picture(folder, "bright.png", plain_picture(4, 2, {90, 90, 90}));
        write_picture(folder, "colour.tga", plain_picture(2, 2, {20, 200, 30}));
        write_cube(folder, "sky", faces);
    }
};

/// Every kind of block, and every form of picture.
class SceneLoadFaults : public LoadFaults {
  protected:
    void SetUp() override {
        LoadFaults::SetUp();
        write_maps();
        folder.write("scene.ulk",
                     "begin environment\ncubetex sky.png\nreflectalpha 0.5\nend\n" +
                         with_maps(triangle_block(1, -0.5F),
                                   "texture colour.jpg\nbumpmap bump.bmp\nspecular bright.png\n") +
                         with_maps(small_patch(), "texture colour.tga\n"));
        run = load("scene.ulk");
    }

    run_t run;
};

TEST_F(SceneLoadFaults, OfMemory) {
    fail_everywhere({fallible_t::allocation}, run);
    fail_everywhere({.operation = fallible_t::allocation, .is_lasting = true}, run);
}

TEST_F(SceneLoadFaults, OfBufferStores) {
    fail_everywhere({fallible_t::buffer_store}, run);
    fail_everywhere({.operation = fallible_t::buffer_store, .is_lasting = true}, run);
}

TEST_F(SceneLoadFaults, OfBufferMappings) {
    fail_everywhere({fallible_t::buffer_mapping}, run);
    fail_everywhere({.operation = fallible_t::buffer_mapping, .is_lasting = true}, run);
}

/// What can go wrong with the files of a load. A short read and an interruption are nothing to fail for.
void fail_files(fault_loop& loop, const fault_loop::run_t& run) {
    for (const fallible_t operation :
         {fallible_t::open, fallible_t::read, fallible_t::close, fallible_t::status, fallible_t::mapping})
        loop.fail_everywhere({operation, EIO}, run);
    for (const fallible_t operation : {fallible_t::open, fallible_t::read})
        loop.fail_everywhere({operation, EINTR}, run);
    loop.fail_everywhere({.operation = fallible_t::read, .is_short = true}, run);
    loop.fail_everywhere({fallible_t::mapping, ENOMEM}, run);
}

TEST_F(SceneLoadFaults, OfFiles) {
    fail_files(*this, run);
}

/// Blocks so far apart that each needs a read of its own.
TEST_F(LoadFaults, BetweenBlocksLoadNoneOfThem) {
    std::string comments;
    while (comments.size() < 300000)
        comments += "# nothing\n";
    folder.write("long.ulk", triangle_block() + comments + triangle_block(2));
    EXPECT_GE(fail_everywhere({fallible_t::read, EIO}, load("long.ulk")), 3U);
}

class StlLoadFaults : public LoadFaults {
  protected:
    void SetUp() override {
        LoadFaults::SetUp();
        folder.write("mesh.stl", stl_file({flat_triangle(0.5F), flat_triangle(-0.5F)}));
        run = load("mesh.stl");
    }

    run_t run;
};

TEST_F(StlLoadFaults, OfMemory) {
    run_out_of_memory_everywhere(run);
}

TEST_F(StlLoadFaults, OfFiles) {
    fail_files(*this, run);
}

}  // namespace
