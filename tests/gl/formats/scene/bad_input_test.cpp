#include <gtest/gtest.h>

#include <cmath>
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

class BadInput : public gl_test {
  protected:
    /// Loads a text, whatever it is; the messages go to `messages`.
    bool load(const std::string& text) {
        std::ostringstream log;
        scene = {};
        const captured_stream errors(std::cerr);
        const bool result = load_scene(scene, folder.write("bad.ulk", text).c_str(), surface_programs(), log);
        messages = log.str();
        return result;
    }

    scene_t scene;
    std::string messages;
    temporary_folder_t folder;
};

constexpr std::size_t megabytes = 3'000'000;

}  // namespace

TEST_F(BadInput, ATopLevelLineOfMegabytesIsToldWhole) {
    const std::string line(megabytes, 'x');
    EXPECT_TRUE(load(line + "\n" + triangle_block()));
    EXPECT_EQ(messages, "unknown line: " + line + "\n");
}

TEST_F(BadInput, ACommentOfMegabytesIsSkipped) {
    EXPECT_TRUE(load("#" + std::string(megabytes, '\0') + "\n" + triangle_block()));
    EXPECT_EQ(messages, "");
}

TEST_F(BadInput, ANumberOfMegabytesIsRead) {
    EXPECT_TRUE(load("begin polygon_surface,1,0\nposition " + std::string(megabytes, '1') + ",2,0" +
                     std::string(megabytes, '0') + "1\ntangent 0." + std::string(megabytes, '3') +
                     ",0,0\nbinormal 0,1,0\nnormal 0,0,1\nend\n"));
    const model_entry_t& entry = *scene.models.front();
    EXPECT_EQ(vertices_of(entry)[0].position, (pos3{INFINITY, 2, 1}));
    EXPECT_EQ(frames_of(entry)[0].tangent.x, 1.0F / 3);
}

TEST_F(BadInput, AnExpressionOfMegabytesIsEvaluated) {
    std::string sum = "1";
    while (sum.size() < megabytes)
        sum += "+1-1";
    std::string nested = std::string(megabytes / 10, '(') + "2" + std::string(megabytes / 10, ')');
    EXPECT_TRUE(load("begin polygon_surface,1,0\nposition " + sum + "," + nested + ",3\n" +
                     "tangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\nend\n"));
    EXPECT_EQ(vertices_of(*scene.models.front())[0].position, (pos3{1, 2, 3}));
}

TEST_F(BadInput, APathOfMegabytesIsKeptInTheSave) {
    const std::string path(megabytes, 'p');
    const block_reading_t reading = read_polygon("begin polygon_surface,1,0\nspecular " + path +
                                                 "\nposition 0,0,0\ntangent 1,0,0\nbinormal 0,1,0\n"
                                                 "normal 0,0,1\nend\n");
    EXPECT_EQ(reading.entry->texture.specular, path);
    EXPECT_NE(written_polygon(*reading.entry).find("specular " + path + "\r\n"), std::string::npos);
}

TEST_F(BadInput, NulBytesEndNumbersAndStayInMessages) {
    const std::string nul(1, '\0');
    EXPECT_TRUE(load("begin polygon_surface,1,0" + nul + ",9\nposition 1," + nul + "2,3\nilleg" + nul +
                     "al\nnorm" + nul + "al 1,2,3\ntangent 1,0,0\nbinormal 0,1,0\nnormal 0,0,1\nend" + nul +
                     "\n" + nul + "\n"));
    EXPECT_EQ(messages, "2: illegal command: illeg" + nul + "al\n3: illegal command: norm" + nul +
                            "al 1,2,3\nunknown line: " + nul + "\n");
    EXPECT_EQ(vertices_of(*scene.models.front())[0].position, (pos3{1, 0, 0}));
}

TEST_F(BadInput, BytesThatAreNoTextAreUnknownLines) {
    std::string bytes;
    for (int i = 0; i < 20'000; ++i)
        bytes += static_cast<char>((i * 7919 + i / 256) & 0xFF);
    EXPECT_FALSE(load(bytes));
    EXPECT_FALSE(messages.empty());
}

TEST_F(BadInput, AHundredThousandBlocksAreReadInOnePass) {
    std::string text;
    for (int i = 0; i < 100'000; ++i)
        text += "begin environment\nreflectalpha " + std::to_string(i) + "\nend\n";
    EXPECT_TRUE(load(text));
    EXPECT_EQ(messages, "");
    EXPECT_EQ(scene.environment.reflectalpha, 99'999.0F);
}

TEST_F(BadInput, ThousandsOfModelsAreLoaded) {
    std::string text;
    for (int i = 0; i < 2'000; ++i)
        text += "begin polygon_surface,0,0\nend\n";
    EXPECT_TRUE(load(text));
    EXPECT_EQ(scene.models.size(), 2'000U);
}

TEST_F(BadInput, EveryCutOfASceneEndsWell) {
    const std::string text =
        "begin environment\nreflectalpha 1\nend\n" + triangle_block() +
        "begin nurbs_surface,1,1,1,1\nresolution 2,2\nknot1 0\nknot1 1\nknot2 0\nknot2 1\n"
        "weight 1\nsphere 1,2,3\nend\n";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const bool result = load(text.substr(0, length));
        if (length == text.size()) {
            EXPECT_TRUE(result);
            EXPECT_EQ(scene.models.size(), 2U);
        }
    }
}
