#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "formats/scene/point_fields.h"
#include "gl/formats/scene/block_reading.h"
#include "support/gl_context.h"
#include "support/scene_text.h"

using namespace ulk3d;
using namespace ulk_test;

namespace {

using NurbsBlock = gl_test;

constexpr float byte_unit = 0.003921569F;

std::string knots() {
    return repeated("knot1 0", 2) + repeated("knot1 1", 2) + repeated("knot1 0", 2) + repeated("knot1 1", 2) +
           repeated("knot2 0", 2) + repeated("knot2 1", 2) + repeated("knot2 0", 2) + repeated("knot2 1", 2);
}

std::string corners() {
    return "position 0,0,0\nposition 1,0,0\nposition 0,1,0\nposition 1,1,0\n";
}

/// A bilinear patch with the given lines in front of its entries.
block_reading_t read_patch(const std::string& text, const std::string& points = corners()) {
    return read_nurbs("begin nurbs_surface,2,2,2,2\n" + text + knots() + repeated("weight 1", 4) + points +
                      "end\n");
}

/// The one control point of a 1 by 1 net that the given lines make.
control_point_t only_point(const std::string& text) {
    const block_reading_t reading = read_nurbs(
        "begin nurbs_surface,1,1,1,1\nknot1 0\nknot1 1\nknot2 0\nknot2 1\n"
        "weight 1\n" +
        text + "end\n");
    EXPECT_TRUE(reading.result) << reading.messages;
    return reading.entry->nurbs.points.data.at(0);
}

}  // namespace

TEST_F(NurbsBlock, SmallestBlockLoadsWithoutAMessage) {
    const block_reading_t reading = read_nurbs(patch_block() + "behind\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.errors, "");
    EXPECT_EQ(reading.last_line, "end");
    EXPECT_EQ(reading.next_line, "behind");
    EXPECT_EQ(reading.counter, 10U + 25);

    const nurbs_t& nurbs = reading.entry->nurbs;
    EXPECT_EQ(nurbs.name, "folder/scene.ulk");
    EXPECT_EQ(reading.entry->polygon.name, "folder/scene.ulk");
    EXPECT_EQ(nurbs.count1, 2U);
    EXPECT_EQ(nurbs.order1, 2U);
    EXPECT_EQ(nurbs.count2, 2U);
    EXPECT_EQ(nurbs.order2, 2U);
    EXPECT_EQ(nurbs.resolution1, 33U);
    EXPECT_EQ(nurbs.resolution2, 33U);
    EXPECT_EQ(nurbs.knot1.data, (std::vector<float>{0, 0, 1, 1, 0, 0, 1, 1}));
    EXPECT_EQ(nurbs.knot2.data, nurbs.knot1.data);
    EXPECT_EQ(nurbs.weight.data, (std::vector<float>{1, 1, 1, 1}));
    EXPECT_EQ(nurbs.points.data[3], (control_point_t{{1, 1, 0}, default_color}));
}

TEST_F(NurbsBlock, TheSurfaceIsBuilt) {
    const block_reading_t reading = read_patch("resolution 3,2\n");
    ASSERT_TRUE(reading.result);
    const auto vertices = vertices_of(*reading.entry);
    ASSERT_EQ(vertices.size(), 6U);
    EXPECT_EQ(vertices[4].position, (pos3{0.5F, 1, 0}));
    EXPECT_EQ(vertices[4].texcoord, (txc2{0.5F, 1}));
    EXPECT_EQ(elements_of(*reading.entry).size(), 7U);
    for (const frame_t& frame : frames_of(*reading.entry))
        EXPECT_EQ(std::fabs(frame.normal.z), 1.0F);
    EXPECT_EQ(reading.entry->nurbs.ctlpts.element_count(), 4);
    // The strips are numbered once they exist.
    EXPECT_EQ(reading.entry->polygon.polyidvector.size(), 5U);
    EXPECT_EQ(reading.entry->polygon.polyidvector[0].position, 0U);
}

TEST_F(NurbsBlock, FieldsOfTheOpeningLineFollowTheFirstComma) {
    const block_reading_t reading = read_nurbs("begin nurbs_surfaces,0x3;1,01,2\nend\n");
    EXPECT_EQ(reading.entry->nurbs.count1, 3U);
    EXPECT_EQ(reading.entry->nurbs.order1, 1U);
    EXPECT_EQ(reading.entry->nurbs.count2, 1U);
    EXPECT_EQ(reading.entry->nurbs.order2, 2U);
}

TEST_F(NurbsBlock, WithoutACommaItFailsWithoutAMessage) {
    const block_reading_t reading = read_nurbs("begin nurbs_surface\nend\n");
    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.counter, 10U);
    EXPECT_EQ(reading.next_line, "end");
}

TEST_F(NurbsBlock, ResolutionIsTwoUnsignedIntegers) {
    EXPECT_EQ(read_patch("resolution 0x4;010\n").entry->nurbs.resolution1, 4U);
    EXPECT_EQ(read_patch("resolution 0x4;010\n").entry->nurbs.resolution2, 8U);
}

TEST_F(NurbsBlock, ColorStaysUntilItIsSetAgain) {
    const block_reading_t reading =
        read_patch("",
                   "position 0,0,0\ncolor 255,0,256,51\nposition 1,0,0\ncircle 1,0,0\n"
                   "fcolor 1+1,-1,0.25,3\nsphere 1,0,0\n");
    ASSERT_TRUE(reading.result);
    const auto& points = reading.entry->nurbs.points.data;
    EXPECT_EQ(points[0].color, default_color);
    EXPECT_EQ(points[1].color, (col3a{255 * byte_unit, 0, 0, 51 * byte_unit}));
    EXPECT_EQ(points[2].color, points[1].color);
    EXPECT_EQ(points[3].color, (col3a{2, -1, 0.25F, 3}));
}

TEST_F(NurbsBlock, PointsHaveThreeForms) {
    EXPECT_EQ(only_point("position 1+1,2*3,-(1)\r\n").position, (pos3{2, 6, -1}));
    EXPECT_EQ(only_point("circle 2,360/8,5\n").position, circle_point(2, 45, 5));
    EXPECT_EQ(only_point("sphere 2,30,15*4\n").position, sphere_point(2, 30, 60));
    EXPECT_EQ(only_point("position 4\n").position, (pos3{4, 0, 0}));
}

TEST_F(NurbsBlock, KnotsAndWeightsArePlainNumbers) {
    const block_reading_t reading = read_nurbs(
        "begin nurbs_surface,1,1,1,1\nknot1 1/2\nknot1 0x10\nknot2 -1e-1\r\nknot2 inf\nweight nan\n"
        "position 0,0,0\nend\n");
    EXPECT_EQ(reading.messages, "");
    const nurbs_t& nurbs = reading.entry->nurbs;
    EXPECT_EQ(nurbs.knot1.data, (std::vector<float>{1, 16}));
    EXPECT_EQ(nurbs.knot2.data, (std::vector<float>{-0.1F, INFINITY}));
    EXPECT_TRUE(std::isnan(nurbs.weight.data[0]));
}

TEST_F(NurbsBlock, KindsMayBeInterleavedInAnyWay) {
    const block_reading_t reading = read_nurbs(
        "begin nurbs_surface,1,1,2,1\nposition 1,0,0\nweight 1\nknot2 0\nknot1 0\nknot2 1\nweight 2\nknot1 "
        "1\n"
        "position 2,0,0\nknot2 2\nknot1 2\nknot1 3\nend\n");
    EXPECT_TRUE(reading.result) << reading.messages;
    const nurbs_t& nurbs = reading.entry->nurbs;
    EXPECT_EQ(nurbs.knot1.data, (std::vector<float>{0, 1, 2, 3}));
    EXPECT_EQ(nurbs.knot2.data, (std::vector<float>{0, 1, 2}));
    EXPECT_EQ(nurbs.weight.data, (std::vector<float>{1, 2}));
    EXPECT_EQ(nurbs.points.data[1].position.x, 2.0F);
}

TEST_F(NurbsBlock, TextureKeysFillTheTexture) {
    const block_reading_t reading =
        read_patch("texture a b.png\r\nbump2mono 1\nbumpmap b\nmipmapping false\n");
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.entry->texture.texture, "a b.png");
    EXPECT_EQ(reading.entry->texture.bumpmap, "b");
    EXPECT_TRUE(reading.entry->texture.bump2mono);
    EXPECT_FALSE(reading.entry->texture.mipmap);
}

TEST_F(NurbsBlock, AKeyWithoutAValueIsAMessageAndUsesUpNoSlot) {
    const struct {
        const char* key;
        const char* message;
    } rows[] = {
        {"resolution", "11: resolution parm is not set. resolution\n"},
        {"color", "11: color parm is not set. color\n"},
        {"fcolor", "11: fcolor parm is not set. fcolor\n"},
        {"knot1", "11: knot1 parm is not set. knot1\n"},
        {"knot2", "11: knot2 parm is not set. knot2\n"},
        {"weight", "11: weight parm is not set. weight\n"},
        {"position", "11: position parm is not set. position\n"},
        {"circle", "11: circle parm is not set. circle\n"},
        {"sphere", "11: sphere parm is not set. sphere\n"},
        {"mipmap", "11: is_mipmap is not set. mipmap\n"},
    };
    for (const auto& row : rows) {
        const block_reading_t reading = read_patch(row.key + std::string("\n"));
        EXPECT_TRUE(reading.result) << row.key;
        EXPECT_EQ(reading.messages, row.message);
        EXPECT_EQ(reading.entry->nurbs.resolution1, 33U);
        EXPECT_EQ(reading.entry->nurbs.points.data[0].color, default_color);
    }
}

TEST_F(NurbsBlock, OtherLinesAreIllegalCommands) {
    const block_reading_t reading =
        read_patch("texcoord 0,0\r\n\r\n# comment\nelement 1\ntangent 1,0,0\nbinormal 1,0,0\nnormal 1,0,0\n");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages,
              "11: illegal command: texcoord 0,0\r\n14: illegal command: element 1\n"
              "15: illegal command: tangent 1,0,0\n16: illegal command: binormal 1,0,0\n"
              "17: illegal command: normal 1,0,0\n");
}

TEST_F(NurbsBlock, AFullKindEndsTheBlockAtOnce) {
    const struct {
        const char* line;
        const char* message;
    } rows[] = {
        {"knot1 9", "35: nurbs knots1(8) >= 8 over.\n"},
        {"knot1", "35: nurbs knots1(8) >= 8 over.\n"},
        {"knot2 9", "35: nurbs knots2(8) >= 8 over.\n"},
        {"weight 9", "35: nurbs weights(4) >= 4 over.\n"},
        {"weight", "35: nurbs weights(4) >= 4 over.\n"},
        {"position 9,9,9", "35: nurbs points(4) >= 4 over.\n"},
        {"circle 9,9,9", "35: nurbs points(4) >= 4 over.\n"},
        {"sphere 9,9,9", "35: nurbs points(4) >= 4 over.\n"},
        {"sphere", "35: nurbs points(4) >= 4 over.\n"},
    };
    for (const auto& row : rows) {
        const block_reading_t reading = read_patch("", corners() + row.line + "\nillegal\n");
        EXPECT_FALSE(reading.result) << row.line;
        EXPECT_EQ(reading.messages, row.message);
        EXPECT_EQ(reading.last_line, row.line);
        EXPECT_EQ(reading.entry->nurbs.name, "") << "nothing is finished";
        EXPECT_EQ(reading.entry->polygon.vertices.element_count(), 0);
    }
}

TEST_F(NurbsBlock, EachShortageIsToldAndTheSurfaceIsBuiltAllTheSame) {
    const block_reading_t reading = read_nurbs(
        "begin nurbs_surface,2,2,2,3\nresolution 4,5\nknot1 0\nknot2 0\nknot2 0\nweight 1\nposition 1,2,3\n"
        "position 1,2,3\nposition 1,2,3\nend\n");
    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.messages,
              "19: knot1(1) < 8: too few knots.\n19: knot2(2) < 10: too few knots.\n"
              "19: weight(1) < 4: too few weights.\n19: point(3) < 4: too few points.\n");
    EXPECT_EQ(reading.entry->nurbs.name, "folder/scene.ulk");
    EXPECT_EQ(reading.entry->polygon.vertices.element_count(), 20);
    EXPECT_EQ(reading.entry->nurbs.points.data[3], control_point_t{});
}

TEST_F(NurbsBlock, OneShortageIsToldAlone) {
    const block_reading_t reading = read_patch("", "position 0,0,0\nposition 1,0,0\nposition 0,1,0\n");
    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.messages, "34: point(3) < 4: too few points.\n");
    EXPECT_EQ(reading.entry->polygon.vertices.element_count(), 33 * 33);
}

TEST_F(NurbsBlock, TheEndOfTheFileEndsItWithoutAShortage) {
    const block_reading_t reading = read_nurbs("begin nurbs_surface,2,2,2,2\nresolution 4,5\nposition 1,2,3");
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.messages, "");
    EXPECT_EQ(reading.entry->nurbs.points.data[0].position, (pos3{1, 2, 3}));
    EXPECT_EQ(reading.entry->nurbs.points.data[1], control_point_t{});
    EXPECT_EQ(reading.entry->nurbs.weight.data, (std::vector<float>(4, 0)));
    EXPECT_EQ(reading.entry->polygon.vertices.element_count(), 20);
    EXPECT_EQ(reading.entry->nurbs.name, "folder/scene.ulk");
}

TEST_F(NurbsBlock, OrdersOfZeroAndAboveThePointCountAreRead) {
    for (const char* numbers : {"2,0,2,0", "1,5,1,7", "2,1024,1,1"}) {
        const block_reading_t reading =
            read_nurbs(std::string("begin nurbs_surface,") + numbers + "\nresolution 3,3\nposition 1,2,3\n");
        EXPECT_TRUE(reading.result) << numbers;
        EXPECT_EQ(reading.messages, "");
    }
}

TEST_F(NurbsBlock, OrdersThatNoSurfaceUsesAreAnAllocateError) {
    for (const char* numbers : {"1,1025,1,1", "1,1,1,1025", "1,4294967295,1,1", "1,1,1,-1"}) {
        const block_reading_t reading = read_nurbs(std::string("begin nurbs_surface,") + numbers + "\nend\n");
        EXPECT_FALSE(reading.result) << numbers;
        EXPECT_EQ(reading.messages, "10: nurbs allocate error.\n");
    }
}

TEST_F(NurbsBlock, CountsThatTheFileCanNotReachAreAnAllocateError) {
    for (const char* numbers :
         {"4294967295,4,4294967295,4", "-1,-1,-1,-1", "65536,4,65536,4", "4294967295,1,1,1",
          "1,1,4294967295,1", "4294967295,0,0,0", "0,0,4294967295,0", "200,4,200,4", "1,1,300000,0"}) {
        const block_reading_t reading =
            read_nurbs(std::string("begin nurbs_surface,") + numbers + "\nposition 1,2,3\nend\n");
        EXPECT_FALSE(reading.result) << numbers;
        EXPECT_EQ(reading.messages, "10: nurbs allocate error.\n") << numbers;
        EXPECT_EQ(reading.entry->nurbs.count1, 0U);
    }
}

TEST_F(NurbsBlock, AResolutionThatCanNotBeBuiltFails) {
    for (const char* resolution : {"4294967295,4294967295", "100000,1000000", "-1,1000"}) {
        const block_reading_t reading = read_patch(std::string("resolution ") + resolution + "\n");
        EXPECT_FALSE(reading.result) << resolution;
        EXPECT_EQ(reading.messages, "nurbs.makeVertices() error.\n") << resolution;
        EXPECT_NE(reading.errors.find("polygon.allocate() fail.\n"), std::string::npos) << reading.errors;
    }
}

TEST_F(NurbsBlock, IsNotWrittenWhenANumberIsZero) {
    for (const char* numbers : {"0,2,2,2", "2,0,2,2", "2,2,0,2", "2,2,2,0"}) {
        const model_entry_t entry(model_kind_t::nurbs);
        const auto count = [numbers](int place) { return static_cast<std::uint64_t>(numbers[place] - '0'); };
        auto& nurbs = const_cast<model_entry_t&>(entry).nurbs;
        EXPECT_TRUE(nurbs.allocate(count(0), count(2), count(4), count(6)));
        EXPECT_EQ(written_nurbs(entry), "") << numbers;
    }
}

TEST_F(NurbsBlock, IsWrittenRowByRowWithTheSecondKnotsLast) {
    const block_reading_t reading = read_nurbs(
        "begin nurbs_surface,2,1,2,2\nresolution 3,4\nspecular s.png\n"
        "knot1 0\nknot1 0.5\nknot1 1\nknot1 0\nknot1 0.25\nknot1 1\n"
        "knot2 0\nknot2 0\nknot2 1\nknot2 2\nknot2 0\nknot2 0\nknot2 1\nknot2 3\n"
        "weight 1\nweight 2\nweight 3\nweight inf\n"
        "position 0,0,1/3\ncolor 10,20,30,40\nposition 1,0,0\nposition 0,1,0\ncolor 128,128,128,255\n"
        "position 1,1,0\nend\n");
    ASSERT_TRUE(reading.result) << reading.messages;
    EXPECT_EQ(
        written_nurbs(*reading.entry),
        "begin nurbs_surface,2,1,2,2\r\nresolution 3,4\r\nrefractfactor 0\r\nspecular s.png\r\n"
        "mercatorsphere false\r\n"
        "knot1 0\r\nknot1 0.5\r\nknot1 1\r\nweight 1\r\nweight 2\r\nposition 0,0,0.333333\r\n"
        "color 10,20,30,40\r\nposition 1,0,0\r\n"
        "knot1 0\r\nknot1 0.25\r\nknot1 1\r\nweight 3\r\nweight inf\r\nposition 0,1,0\r\n"
        "color 128,128,128,255\r\nposition 1,1,0\r\n"
        "\r\n"
        "knot2 0\r\nknot2 0\r\nknot2 1\r\nknot2 2\r\nknot2 0\r\nknot2 0\r\nknot2 1\r\nknot2 3\r\nend\r\n");
}
