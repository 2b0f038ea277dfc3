#include <gtest/gtest.h>

#include <iostream>
#include <random>
#include <sstream>

#include "formats/scene_files.h"
#include "fuzz/parts/scene_mutator.h"
#include "fuzz/parts/session_scenes.h"
#include "render/models/glpolygon.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/memory_file.h"

namespace {

using namespace ulk3d;
using namespace ulk_test;

/// A byte set to any value, taken away or put in: what a mutator does that knows nothing of the format.
std::string with_changed_byte(std::string text, std::mt19937& random) {
    const std::size_t place = random() % text.size();
    const auto byte = static_cast<char>(random());
    switch (random() % 3) {
        case 0:
            text[place] = byte;
            break;
        case 1:
            text.erase(place, 1);
            break;
        default:
            text.insert(place, 1, byte);
    }
    return text;
}

class SceneMutatorLoad : public gl_test {
  protected:
    void SetUp() override {
        gl_test::SetUp();
        ASSERT_TRUE(programs.init(nullptr));
    }

    bool loads(const std::string& text) {
        file.write(text);
        scene_t scene;
        std::ostringstream messages;
        return load_scene(scene, file.path(), programs, messages);
    }

    captured_stream errors{std::cerr};
    memory_file_t file{"scene"};
    glpolygon_t programs;
};

TEST_F(SceneMutatorLoad, MutatedScenesLoadMoreOftenThanChangedBytes) {
    constexpr std::size_t rows = 60, changes = 5;
    std::mt19937 random(1);
    std::size_t mutated_loads = 0, changed_loads = 0;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string mutated = session_scene(row), changed = mutated;
        for (std::size_t n = 0; n < changes; ++n) {
            mutated = mutated_scene(mutated, 4096, row * changes + n, nullptr);
            changed = with_changed_byte(changed, random);
        }
        // A mutation changes up to three places.
        for (std::size_t n = 0; n < changes; ++n)
            changed = with_changed_byte(changed, random);
        mutated_loads += loads(mutated) ? 1 : 0;
        changed_loads += loads(changed) ? 1 : 0;
    }
    EXPECT_GT(mutated_loads, 2 * changed_loads);
    EXPECT_GT(mutated_loads, rows / 3);
}

}  // namespace
