#include "formats/scene/point_fields.h"

#include <gtest/gtest.h>

#include <cmath>

#include "formats/scene/color_writer.h"
#include "formats/scene/field_scanner.h"
#include "model/math/colours.h"
#include "support/scene_text.h"

using namespace ulk3d;

namespace {

constexpr float byte_unit = 0.003921569F;

float radians_of(float degrees) {
    return static_cast<float>(degrees * 0.017453292519943122);
}

}  // namespace

TEST(PointFields, ByteColorsKeepTheirLowEightBits) {
    EXPECT_EQ(read_byte_color(field_scanner("256,0,0,255")), (col3a{0, 0, 0, 255 * byte_unit}));
    EXPECT_EQ(read_byte_color(field_scanner("0x1FF,010,511,-1")),
              (col3a{255 * byte_unit, 8 * byte_unit, 255 * byte_unit, 255 * byte_unit}));
    EXPECT_EQ(read_byte_color(field_scanner("128,128,128,255")).r, 0.501960832F);
}

TEST(PointFields, FloatColorsAreTakenAsTheyAre) {
    EXPECT_EQ(read_float_color(field_scanner("1/4,2,-1,0.5*0.5")), (col3a{0.25F, 2, -1, 0.25F}));
}

TEST(PointFields, DirectionsArePlainNumbers) {
    EXPECT_EQ(read_direction(field_scanner("1+1,2*3,-(1)")), (dir3{1, 1, 2}));
    EXPECT_TRUE(std::isnan(read_direction(field_scanner("nan,0,0")).x));
}

TEST(PointFields, CirclePointTurnsFromYTowardsMinusX) {
    for (const float angle : {0.0F, 30.0F, 90.0F, 123.4F, -45.0F, 720.0F}) {
        const float a = radians_of(angle);
        EXPECT_EQ(circle_point(2.5F, angle, 7), (pos3{-std::sin(a) * 2.5F, std::cos(a) * 2.5F, 7}));
    }
    EXPECT_EQ(circle_point(3, 0, 1), (pos3{-0.0F, 3, 1}));
    EXPECT_FLOAT_EQ(circle_point(3, 90, 1).x, -3);
    EXPECT_EQ(read_circle(field_scanner("1+1,360/4,5")), circle_point(2, 90, 5));
}

TEST(PointFields, SpherePointStartsAtThePole) {
    for (const float angle : {0.0F, 30.0F, 90.0F, 123.4F}) {
        for (const float around : {0.0F, 30.0F, 90.0F, -123.4F}) {
            const float a = radians_of(angle);
            const float b = radians_of(around);
            EXPECT_EQ(sphere_point(2.5F, angle, around),
                      (pos3{-2.5F * std::sin(a) * std::sin(b), 2.5F * std::sin(a) * std::cos(b),
                            2.5F * std::cos(a)}));
        }
    }
    EXPECT_FLOAT_EQ(sphere_point(2, 0, 45).z, 2);
    EXPECT_FLOAT_EQ(sphere_point(2, 90, 0).y, 2);
    EXPECT_FLOAT_EQ(sphere_point(2, 90, 90).x, -2);
    EXPECT_EQ(read_sphere(field_scanner("4/2,90,180/4")), sphere_point(2, 90, 45));
}

TEST(ColorBytes, OfEveryByteComeBack) {
    for (std::uint32_t i = 0; i < 256; ++i) {
        const std::string text = std::to_string(i) + ",0,0," + std::to_string(i);
        const auto byte = static_cast<std::uint8_t>(i);
        EXPECT_EQ(colour_to_bytes(read_byte_color(field_scanner(text.c_str()))), (col3aub{byte, 0, 0, byte}));
    }
}

TEST(ColorWriter, WritesChangesOnly) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.path("colors");
    text_output output(path.c_str());
    color_writer colors;
    colors.write(default_color, output);
    colors.write({0.501F, 0.5F, 0.5F, 1.0F}, output);  // the same bytes
    colors.write({1, 0, 0, 1}, output);
    colors.write({1, 0, 0, 1}, output);
    colors.write({1, 0, 0, 0}, output);
    colors.write(default_color, output);
    ASSERT_TRUE(output.complete());
    EXPECT_EQ(ulk_test::read_file(path), "color 255,0,0,255\r\ncolor 255,0,0,0\r\ncolor 128,128,128,255\r\n");
}
