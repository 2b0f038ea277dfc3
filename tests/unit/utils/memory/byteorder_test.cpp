#include "utils/memory/byteorder.h"

#include <gtest/gtest.h>

using namespace libutils;

TEST(ByteOrder, MotorolaSwapsAllBytes) {
    const motorola_byteorder motorola;
    const byteorder& order = motorola;
    EXPECT_EQ(order.to_host16(0x1234), 0x3412);
    EXPECT_EQ(order.to_host32(0x12345678), 0x78563412U);
    EXPECT_EQ(order.to_host64(0x0123456789abcdef), 0xefcdab8967452301U);
}

TEST(ByteOrder, IntelChangesNothing) {
    const intel_byteorder intel;
    const byteorder& order = intel;
    EXPECT_EQ(order.to_host16(0x1234), 0x1234);
    EXPECT_EQ(order.to_host32(0x12345678), 0x12345678U);
    EXPECT_EQ(order.to_host64(0x0123456789abcdef), 0x0123456789abcdefU);
}

TEST(ByteOrder, PlainFunctionsDoAsTheClasses) {
    EXPECT_EQ(motorola_to_host16(0x1234), 0x3412);
    EXPECT_EQ(motorola_to_host32(0x12345678), 0x78563412U);
    EXPECT_EQ(motorola_to_host64(0x0123456789abcdef), 0xefcdab8967452301U);
    EXPECT_EQ(intel_to_host16(0x1234), 0x1234);
    EXPECT_EQ(intel_to_host32(0x12345678), 0x12345678U);
    EXPECT_EQ(intel_to_host64(0x0123456789abcdef), 0x0123456789abcdefU);
}

TEST(ByteOrder, SwapIsItsOwnInverse) {
    EXPECT_EQ(motorola_to_host16(motorola_to_host16(0xbeef)), 0xbeef);
    EXPECT_EQ(motorola_to_host32(motorola_to_host32(0xdeadbeef)), 0xdeadbeefU);
    EXPECT_EQ(motorola_to_host64(motorola_to_host64(0xfeedfacedeadbeef)), 0xfeedfacedeadbeefU);
}
