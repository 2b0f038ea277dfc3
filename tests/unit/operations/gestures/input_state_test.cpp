#include "operations/gestures/input_state.h"

#include <gtest/gtest.h>

namespace {

using namespace ulk3d;

TEST(InputState, StartsWithNothingHeld) {
    const input_state_t state;
    EXPECT_EQ(state.modifier, modifier_none);
    for (const std::uint32_t held : state.button)
        EXPECT_EQ(held, no_button_held);
}

TEST(InputState, PressStoresTheCodeOfTheButton) {
    struct row {
        std::uint32_t button, code;
    };
    for (const row& expected : {row{0, 1}, row{1, 2}, row{2, 4}, row{3, 0}, row{4, 0}, row{31, 0}, row{32, 0},
                                row{0xFFFFFFFF, 0}}) {
        input_state_t state;
        EXPECT_TRUE(state.press_or_release(expected.button, false)) << expected.button;
        EXPECT_EQ(state.held(), expected.code) << expected.button;
    }
}

TEST(InputState, PressOfASecondButtonIsRefused) {
    for (const std::uint32_t second : {0U, 1U, 2U, 3U}) {
        input_state_t state;
        ASSERT_TRUE(state.press_or_release(middle_button, false));
        EXPECT_FALSE(state.press_or_release(second, false)) << second;
        EXPECT_EQ(state.held(), middle_button_held);
    }
}

TEST(InputState, ReleaseOfTheHeldButtonFreesTheState) {
    for (const std::uint32_t button : {left_button, middle_button, right_button}) {
        input_state_t state;
        ASSERT_TRUE(state.press_or_release(button, false));
        EXPECT_TRUE(state.press_or_release(button, true));
        EXPECT_EQ(state.held(), no_button_held);
    }
}

TEST(InputState, ReleaseOfAnotherButtonIsTrueAndChangesNothing) {
    for (const std::uint32_t other : {1U, 2U, 3U, 32U}) {
        input_state_t state;
        ASSERT_TRUE(state.press_or_release(left_button, false));
        EXPECT_TRUE(state.press_or_release(other, true)) << other;
        EXPECT_EQ(state.held(), left_button_held) << other;
    }
}

TEST(InputState, ReleaseWithNothingHeldIsTrue) {
    input_state_t state;
    EXPECT_TRUE(state.press_or_release(left_button, true));
    EXPECT_EQ(state.held(), no_button_held);
}

TEST(InputState, EveryModifierStateHoldsAButtonOfItsOwn) {
    input_state_t state;
    state.modifier = modifier_shift;
    ASSERT_TRUE(state.press_or_release(left_button, false));
    state.modifier = modifier_none;
    EXPECT_EQ(state.held(), no_button_held);
    EXPECT_TRUE(state.press_or_release(right_button, false));
    EXPECT_EQ(state.button[modifier_shift], left_button_held);
    EXPECT_EQ(state.button[modifier_none], right_button_held);
}

TEST(InputState, ButtonReleasedWithoutItsModifierStaysHeldThere) {
    input_state_t state;
    state.modifier = modifier_shift;
    ASSERT_TRUE(state.press_or_release(left_button, false));
    state.modifier = modifier_none;
    EXPECT_TRUE(state.press_or_release(left_button, true));
    state.modifier = modifier_shift;
    EXPECT_EQ(state.held(), left_button_held);
    EXPECT_FALSE(state.press_or_release(left_button, false));
}

}  // namespace
