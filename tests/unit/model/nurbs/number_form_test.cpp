#include <gtest/gtest.h>

#include <limits>

#include "model/nurbs/net_edit.h"

namespace {

using ulk3d::colour_form;
using ulk3d::position_form;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float inf = std::numeric_limits<float>::infinity();

TEST(PositionForm, HasThreeNumbersThatAreTheValues) {
    EXPECT_EQ(position_form.components, 3U);
    for (const float value : {0.0F, 0.1F, -99.9999F, 1e-30F}) {
        EXPECT_EQ(position_form.shown(value), static_cast<double>(value));
        EXPECT_EQ(position_form.stored(position_form.shown(value)), value);
    }
    EXPECT_EQ(position_form.stored(0.3), 0.3F);
}

TEST(PositionForm, ValuesWithinTheToleranceAreTheSame) {
    EXPECT_TRUE(position_form.is_same(1, 1.00001F));
    EXPECT_TRUE(position_form.is_same(-0.0F, 0));
    EXPECT_FALSE(position_form.is_same(1, 1.00003F));
    EXPECT_FALSE(position_form.is_same(nan, nan));
}

struct channel_t {
    float channel;
    double shown;
};

TEST(ColourForm, ShowsChannelsAsBytes) {
    EXPECT_EQ(colour_form.components, 4U);
    constexpr channel_t rows[] = {{0, 0},     {1, 255},   {0.5F, 128}, {0.25F, 64}, {-1, 0},    {2, 255},
                                  {nan, 255}, {inf, 255}, {-inf, 0},   {0.001F, 0}, {0.002F, 1}};
    for (const auto& [channel, shown] : rows)
        EXPECT_EQ(colour_form.shown(channel), shown) << channel;
}

TEST(ColourForm, StoresTheLowByteOfTheWholeNumber) {
    EXPECT_EQ(colour_form.stored(0), 0.0F);
    EXPECT_EQ(colour_form.stored(128), 128 * 0.003921569F);
    EXPECT_EQ(colour_form.stored(255), 255 * 0.003921569F);
    EXPECT_EQ(colour_form.stored(127.9), 127 * 0.003921569F);
    EXPECT_EQ(colour_form.stored(257), 1 * 0.003921569F);
}

TEST(ColourForm, ComparesExactly) {
    EXPECT_TRUE(colour_form.is_same(0.5F, 0.5F));
    EXPECT_FALSE(colour_form.is_same(0.5F, 128 * 0.003921569F));
    EXPECT_FALSE(colour_form.is_same(1, 1.0000001F));
}

TEST(ColourForm, EveryByteComesBackAsItWasStored) {
    for (int byte = 0; byte < 256; ++byte) {
        const float stored = colour_form.stored(byte);
        EXPECT_EQ(colour_form.shown(stored), byte);
        EXPECT_TRUE(colour_form.is_same(stored, colour_form.stored(colour_form.shown(stored)))) << byte;
    }
}

}  // namespace
