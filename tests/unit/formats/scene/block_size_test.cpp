#include "formats/scene/block_size.h"

#include <gtest/gtest.h>

#include <cstdint>

using ulk3d::is_within_reach;

namespace {

constexpr std::uint64_t mebibyte = 1U << 20;

}  // namespace

TEST(BlockSize, SmallArraysAreGrantedUnseen) {
    EXPECT_TRUE(is_within_reach({.arrays = mebibyte, .lines = ~std::uint64_t{0}}, 0));
    EXPECT_FALSE(is_within_reach({.arrays = mebibyte + 1, .lines = 2}, 0));
}

TEST(BlockSize, LargeArraysNeedTheirLinesInTheFile) {
    EXPECT_TRUE(is_within_reach({.arrays = 10 * mebibyte, .lines = 1001}, 1000));
    EXPECT_FALSE(is_within_reach({.arrays = 10 * mebibyte, .lines = 1002}, 1000));
    EXPECT_FALSE(is_within_reach({.arrays = 10 * mebibyte, .lines = ~std::uint64_t{0}}, 1U << 30));
}
