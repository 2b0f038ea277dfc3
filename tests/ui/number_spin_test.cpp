// The spin button of the dialogs in the test's own process. Run by test_window.py on its desktop.

#include "dialogs/controls/number_spin.h"

#include <gtest/gtest.h>

#include <iostream>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "dialogs/controls/labelled_row.h"
#include "support/captured_stream.h"
#include "support/locale_scope.h"

namespace ulk3d {
namespace {

constexpr spin_range_t range{-100, 100, 0.5, 10, 7};

/// Types a text over what a button shows, and leaves it.
void type(Gtk::SpinButton& spin, const char* text) {
    spin.set_text("");
    spin.set_text(text);
    spin.update();
}

TEST(NumberSpin, ReadsNumbersAndSums) {
    number_spin_t spin(range, 4);
    for (const auto& [text, value, shown] : {std::tuple{"1.5", 1.5, "1.5000000"},
                                             {"+5", 5, "5.0000000"},
                                             {"1e-3", 1e-3, "0.0010000"},
                                             {"2/3", 2.0F / 3.0F, "0.6666667"},
                                             {"2*(1+3)", 8, "8.0000000"},
                                             {"1000", 100, "100.0000000"},
                                             {" -2 ", -2, "-2.0000000"}}) {
        type(spin, text);
        EXPECT_EQ(spin.get_value(), value) << text;
        EXPECT_EQ(spin.get_text(), shown) << text;
    }
}

TEST(NumberSpin, WhatCanNotBeReadLeavesTheOldNumber) {
    const ulk_test::captured_stream errors(std::cerr);
    number_spin_t spin(range, 1.0 / 3);
    for (const char* text : {"abc", "", "-", "1,5", "2/", "1/0"}) {
        type(spin, text);
        EXPECT_EQ(spin.get_value(), 1.0 / 3) << text;
        EXPECT_EQ(spin.get_text(), "0.3333333") << text;
        EXPECT_FALSE(spin.is_touched()) << text;
    }
}

TEST(NumberSpin, IsTouchedByWhateverAUserGives) {
    number_spin_t spin(range, 1e-8);
    std::vector<double> given;
    spin.number_given.connect([&given](double number) { given.push_back(number); });
    spin.update();
    EXPECT_FALSE(spin.is_touched());
    EXPECT_EQ(spin.get_value(), 1e-8);
    type(spin, "0.0000000");
    EXPECT_TRUE(spin.is_touched());
    EXPECT_EQ(given, (std::vector{0.0}));

    spin.show_number(5e-9);
    EXPECT_FALSE(spin.is_touched());
    EXPECT_EQ(spin.get_value(), 5e-9);
    spin.spin(Gtk::SPIN_STEP_FORWARD, 0.5);
    EXPECT_TRUE(spin.is_touched());
    EXPECT_EQ(given, (std::vector{0.0, 0.5 + 5e-9}));
}

TEST(NumberSpin, AnotherNumberTakesThePlaceOfWhatIsBeingTyped) {
    number_spin_t spin(range, 1);
    spin.set_text("7");
    spin.show_number(1);
    spin.update();
    EXPECT_EQ(spin.get_value(), 1);
    EXPECT_EQ(spin.get_text(), "1.0000000");
    EXPECT_FALSE(spin.is_touched());
}

TEST(NumberSpin, AWholeNumberIsTheOneThatShows) {
    number_spin_t spin({0, 255, 1, 8, 0}, 3);
    for (const auto& [text, value] : {std::pair{"129.5", 130}, {"2.5", 3}, {"7/2", 4}, {"2.4", 2}}) {
        type(spin, text);
        EXPECT_EQ(spin.get_value(), value) << text;
        EXPECT_EQ(spin.get_text(), std::to_string(value)) << text;
    }
}

TEST(NumberSpin, ThePointIsTheDecimalSignInEveryLocale) {
    for (const char* locale : ulk_test::file_locales) {
        const ulk_test::locale_scope_t scope(locale);
        if (!scope.is_set())
            continue;
        number_spin_t spin(range, 1.5);
        EXPECT_EQ(spin.get_text(), "1.5000000") << locale;
        type(spin, "2.25");
        EXPECT_EQ(spin.get_value(), 2.25) << locale;
        type(spin, "3,5");
        EXPECT_EQ(spin.get_text(), "2.2500000") << locale;
    }
}

TEST(NumberSpin, NumbersOutsideTheRangeAreClamped) {
    EXPECT_EQ(range.clamped(150), 100);
    EXPECT_EQ(range.clamped(-1e9), -100);
    EXPECT_EQ(range.clamped(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(number_spin_t(range, 150).get_value(), 100);
}

TEST(CountSpin, ACountBeyondTheLimitStaysWhenNoNumberIsTyped) {
    count_spin_t spin(1025, 5000);
    EXPECT_EQ(spin.get_text(), "1025");
    {
        const ulk_test::captured_stream errors(std::cerr);
        type(spin, "abc");
    }
    EXPECT_EQ(spin.count(), 5000U);
    type(spin, "1025");
    EXPECT_EQ(spin.count(), 1025U);
    type(spin, "5*5");
    EXPECT_EQ(spin.count(), 25U);
}

}  // namespace
}  // namespace ulk3d
