#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>

#include "formats/scene/scene_text.h"
#include "model/environment.h"
#include "support/captured_stream.h"
#include "support/gl_context.h"
#include "support/scene_text.h"

using namespace ulk3d;

namespace {

struct reading_t {
    bool result = false;
    environment_t environment;
    std::string messages;
    std::uint64_t counter = 5;
    std::string last_line;
    std::string next_line;
};

/// Reads a block whose opening line is line 5 of its file.
reading_t read(const std::string& text) {
    reading_t reading;
    text_lines input(text);
    std::ostringstream log;
    text_line_t line = input.next();
    reading.result =
        read_environment("folder/scene.ulk", reading.environment, reading.counter, line, input, log);
    reading.messages = log.str();
    reading.last_line = line.view();
    reading.next_line = input.next().view();
    return reading;
}

std::string written(const environment_t& environment, bool expected) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.path("block");
    text_output output(path.c_str());
    EXPECT_EQ(write_environment(environment, output), expected);
    EXPECT_TRUE(output.complete());
    return ulk_test::read_file(path);
}

struct EnvironmentBlock : ulk_test::gl_test {};

}  // namespace

TEST_F(EnvironmentBlock, AnEmptyOneKeepsTheDefaults) {
    const reading_t reading = read("begin environment\nend\nbehind\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.environment.cubetex, "");
    EXPECT_EQ(reading.environment.reflectalpha, 1.0F);
    EXPECT_EQ(reading.environment.refractalpha, 0.0F);
    EXPECT_EQ(reading.environment.refractfactor, 1.0F);
    EXPECT_EQ(reading.last_line, "end");
    EXPECT_EQ(reading.next_line, "behind");
    EXPECT_EQ(reading.counter, 6U);
}

TEST_F(EnvironmentBlock, NumbersAreExpressions) {
    const reading_t reading = read(
        "begin environment\r\nreflectalpha 1/4\r\nrefractalpha 0.5+0.25\r\nrefractfactor 2*-3\r\nend\r\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.environment.reflectalpha, 0.25F);
    EXPECT_EQ(reading.environment.refractalpha, 0.75F);
    EXPECT_EQ(reading.environment.refractfactor, -6.0F);
}

TEST_F(EnvironmentBlock, TheCubeMapHasTwoKeysAndKeepsItsBlanks) {
    // Whether the pictures exist is not asked here: only the path is looked at.
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_EQ(read("begin environment\r\ncubetex my sky.png\r\nend\r\n").environment.cubetex, "my sky.png");
    EXPECT_EQ(read("begin environment\ncubemap dir/sky.png\nend\n").environment.cubetex, "dir/sky.png");
    EXPECT_EQ(read("begin environment\ncubetex \xff\xfe\nend\n").environment.cubetex, "\xff\xfe");
}

TEST_F(EnvironmentBlock, ALaterLineWins) {
    EXPECT_EQ(read("begin environment\nreflectalpha 1\nreflectalpha 2\nend\n").environment.reflectalpha,
              2.0F);
}

TEST_F(EnvironmentBlock, BlankLinesAndCommentsAreSilent) {
    const reading_t reading = read("begin environment\n\n\r\n# comment\n#\nend\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.counter, 10U);
}

TEST_F(EnvironmentBlock, OtherLinesAreIllegalCommandsAndTheReadingGoesOn) {
    const reading_t reading = read(
        "begin environment\r\ntexture a\r\n reflectalpha 2\r\nReflectalpha 2\r\nreflectalpha 3\r\nend\r\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages,
              "6: illegal command: texture a\r\n7: illegal command:  reflectalpha 2\r\n"
              "8: illegal command: Reflectalpha 2\r\n");
    EXPECT_EQ(reading.environment.reflectalpha, 3.0F);
}

TEST_F(EnvironmentBlock, AKeyWithoutASpaceIsSkipped) {
    const reading_t reading =
        read("begin environment\ncubetex\ncubemap\r\nreflectalpha\nrefractalpha\nrefractfactor\nend\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.environment.cubetex, "");
    EXPECT_EQ(reading.environment.reflectalpha, 1.0F);
}

TEST_F(EnvironmentBlock, KeysArePrefixesAndSoIsTheEnd) {
    const reading_t reading = read("begin environmental things\nreflectalphas 2\nendless\nreflectalpha 3\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.environment.reflectalpha, 2.0F);
    EXPECT_EQ(reading.next_line, "reflectalpha 3");
}

TEST_F(EnvironmentBlock, TheEndOfTheFileEndsItToo) {
    const reading_t reading = read("begin environment\nreflectalpha 2");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.environment.reflectalpha, 2.0F);
}

TEST_F(EnvironmentBlock, AnotherOpeningLineIsRefused) {
    const reading_t reading = read("begin polygon_surface,3,4\nreflectalpha 2\nend\n");
    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.messages, "not 'begin environment'.\n");
    EXPECT_EQ(reading.environment.reflectalpha, 1.0F);
    EXPECT_EQ(reading.counter, 5U);
}

TEST_F(EnvironmentBlock, NulBytesStayInTheMessage) {
    const reading_t reading = read(std::string("begin environment\na\0b\nend\n", 26));
    EXPECT_EQ(reading.messages, std::string("6: illegal command: a\0b\n", 24));
}

TEST_F(EnvironmentBlock, IsNotWrittenWithoutACubeMap) {
    environment_t environment;
    environment.reflectalpha = 0.5F;
    EXPECT_EQ(written(environment, false), "");
}

TEST_F(EnvironmentBlock, IsWrittenWhole) {
    environment_t environment;
    environment.cubetex = "my sky.png";
    environment.reflectalpha = 1.0F / 3;
    environment.refractfactor = 1e6F;
    EXPECT_EQ(written(environment, true),
              "begin environment\r\ncubetex my sky.png\r\nreflectalpha 0.333333\r\nrefractalpha 0\r\n"
              "refractfactor 1e+06\r\nend\r\n");
}
