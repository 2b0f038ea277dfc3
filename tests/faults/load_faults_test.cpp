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
    fail_everywhere({operation_t::allocation}, run);
}

TEST_F(SceneLoadFaults, OfBufferStores) {
    fail_everywhere({operation_t::buffer_store}, run);
    fail_everywhere({.operation = operation_t::buffer_store, .is_lasting = true}, run);
}

TEST_F(SceneLoadFaults, OfBufferMappings) {
    fail_everywhere({operation_t::buffer_mapping}, run);
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

}  // namespace
