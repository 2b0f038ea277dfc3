// The scenes that the description of the file format shows.

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>

#include "formats/scene_files.h"
#include "gl/formats/scene/block_reading.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/scene_text.h"

using namespace ulk3d;
using namespace ulk_test;

namespace {

using FileFormatDocument = gl_test;

TEST_F(FileFormatDocument, ItsScenesLoadWithoutAWord) {
    std::istringstream document(read_file(sample("../docs/file-format.md")));
    const temporary_folder_t folder;
    int scenes = 0;
    for (std::string line; std::getline(document, line);) {
        if (line != "```ulk")
            continue;
        std::string text;
        while (std::getline(document, line) && line != "```")
            text += line + "\n";
        scene_t scene;
        std::ostringstream log;
        const captured_stream errors(std::cerr);
        EXPECT_TRUE(load_scene(scene, folder.write("scene.ulk", text).c_str(), surface_programs(), log))
            << text;
        EXPECT_EQ(log.str() + errors.text(), "") << text;
        ++scenes;
    }
    EXPECT_EQ(scenes, 3);
}

}  // namespace
