#include "formats/scene/misread_values.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "formats/scene/usual_sum.h"
#include "support/scene_text.h"

namespace {

using messages_t = std::vector<std::string>;

messages_t messages_of(const std::string& path) {
    messages_t messages;
    ulk3d::find_misread_values(path.c_str(), [&messages](const ulk3d::misread_value_t& found) {
        messages.push_back(std::to_string(found.line) + " " + found.message);
    });
    return messages;
}

messages_t messages_of_text(const std::string& text) {
    const ulk_test::temporary_folder_t folder;
    return messages_of(folder.write("scene.ulk", text));
}

/// What is told of a line in a block.
messages_t messages_of_line(const std::string& line) {
    return messages_of_text("begin polygon_surface,1,1\n" + line + "\nend\n");
}

}  // namespace

TEST(MisreadValues, SamplesHaveNone) {
    for (const char* name : {"mixed.ulk", "mirror.ulk", "patch.ulk", "relief.ulk", "vase.ulk"})
        EXPECT_EQ(messages_of(ulk_test::sample(name)), messages_t()) << name;
}

TEST(MisreadValues, SumsThatUsualArithmeticReadsLikewiseAreWell) {
    for (const char* line :
         {"position 0,-1,+2.5", "position 1-2, (1+3)*2 ,360/8*3", "position 2*-3,6/-2,1e-3",
          "circle 1,-(2),7/3/2", "sphere 0.1+0.2-0.3,1,0x10", "fcolor 1/3,2/3,1,1", "texcoord 1/7,-0",
          "aniso 2*(8)", "position 1/0,0,0\r", "position 1,2,3 ", "positions 1,2,3"})
        EXPECT_EQ(messages_of_line(line), messages_t()) << line;
}

TEST(MisreadValues, SumsThatAreReadOtherwiseAreTold) {
    const std::pair<const char*, const char*> cases[] = {
        {"position 2*(3)+4,0,0", "2 position: 2*(3)+4 is read as 14, not as 10"},
        {"circle 0,1+-2,0", "2 circle: 1+-2 is read as 3, not as -1"},
        {"sphere 0,0,.5", "2 sphere: .5 is read as 0, not as 0.5"},
        {"fcolor 1 2,0,0,1", "2 fcolor: 1 2 is read as 3"},
        {"texcoord 2(3),0", "2 texcoord: 2(3) is read as 5"},
        {"aniso (1", "2 aniso: (1 is read as 1"},
        {"refractfactor 1+x", "2 refractfactor: 1+x is read as 1"},
        {"position 1,,2", "2 position: an empty value is read as 0"},
        {"position nan,0,0", "2 position: nan is read as 0"},
        {"position 3+,0,0", "2 position: 3+ is read as 3"},
    };
    for (const auto& [line, message] : cases)
        EXPECT_EQ(messages_of_line(line), messages_t{message}) << line;
    EXPECT_EQ(messages_of_text("begin environment\nreflectalpha 1+-0.5\nrefractalpha 0\nend\n"),
              messages_t{"2 reflectalpha: 1+-0.5 is read as 1.5, not as 0.5"});
}

TEST(MisreadValues, NumbersThatAreMoreThanOneAreTold) {
    const std::pair<const char*, const char*> cases[] = {
        {"knot1 1/2", "2 knot1: 1/2 is read as 1"},
        {"knot2 x", "2 knot2: x is read as 0"},
        {"weight 1+1", "2 weight: 1+1 is read as 1"},
        {"normal 0,1/2,0", "2 normal: 1/2 is read as 1"},
        {"tangent 1,2*3,0", "2 tangent: 2*3 is read as 2"},
        {"binormal 0,0,1-", "2 binormal: 1- is read as 1"},
        {"color 1.5,2,3,255", "2 color: 1.5 is read as 1"},
        {"element 1+1", "2 element: 1+1 is read as 1"},
        {"resolution 9*2,9", "2 resolution: 9*2 is read as 9"},
    };
    for (const auto& [line, message] : cases)
        EXPECT_EQ(messages_of_line(line), messages_t{message}) << line;
    for (const char* line : {"knot1 nan", "weight -1e-6", "normal inf,0, 1", "element -1", "element 0x10 ",
                             "color 255,255,255,255\r", "resolution 33,33"})
        EXPECT_EQ(messages_of_line(line), messages_t()) << line;
}

TEST(MisreadValues, ListsOfAnotherLengthAreTold) {
    EXPECT_EQ(messages_of_line("position 1,2"),
              messages_t{"2 position: 2 values where the key takes 3; the rest is 0"});
    EXPECT_EQ(messages_of_line("position 1,5,2,5,0,0"),
              messages_t{"2 position: 6 values where the key takes 3; the rest is not read"});
    EXPECT_EQ(messages_of_line("element 1,2"), messages_t{"2 element: 2 values where the key takes 1; the rest is not read"});
    // The reader itself tells of these.
    EXPECT_EQ(messages_of_line("position"), messages_t());
}

TEST(MisreadValues, EachLineOfABlockIsLookedAtAndNoOther) {
    EXPECT_EQ(messages_of_text(
                  "position x,0,0\nbegin polygon_surface,1,1\nposition x,0,0\n#position x,0,0\n"
                  "position 0,0,0\nposition 0,y,z\nend\nposition x,0,0\nbegin nurbs_surface,2\nknot1 1/3"),
              (messages_t{"3 position: x is read as 0", "6 position: y is read as 0",
                          "10 knot1: 1/3 is read as 1"}));
    EXPECT_EQ(messages_of("no such file"), messages_t());
}

TEST(MisreadValues, DeepSumsEndAndAreTold) {
    const std::string deep = std::string(100000, '(') + "1" + std::string(100000, ')');
    EXPECT_EQ(messages_of_line("aniso " + deep), messages_t{"2 aniso: " + deep + " is read as 1"});
}

TEST(UsualSum, GoesByTheRulesOfArithmetic) {
    const std::pair<const char*, double> cases[] = {
        {"1", 1},    {" 1+2*3 ", 7},    {"(1+2)*3", 9}, {"2*(3)+4", 10}, {"8/4/2", 1},     {"1-2-3", -4},
        {"1--2", 3}, {"-(2+3)*2", -10}, {"2*-3", -6},   {".5*4", 2},     {"1e2\t/ 4", 25}, {"((7))", 7},
    };
    for (const auto& [text, value] : cases) {
        const auto found = ulk3d::usual_sum(text);
        ASSERT_TRUE(found) << text;
        EXPECT_EQ(found->value, value) << text;
    }
    for (const char* text :
         {"", " ", "+", "1+", "*2", "1 2", "2(3)", "(1", "1)", "()", "x", "1x", "nan", "inf", "1,2"})
        EXPECT_FALSE(ulk3d::usual_sum(text)) << text;
}
