#include "model/nurbs/nurbs.h"

#include <gtest/gtest.h>

#include <new>

#include "model/scene.h"

namespace {

using ulk3d::nurbs_t;

constexpr std::uint64_t most = ~std::uint64_t{0};

TEST(NurbsTables, NewModelIsEmpty) {
    ulk3d::texture_t texture;
    const nurbs_t nurbs(&texture, nullptr);
    EXPECT_EQ(nurbs.texture, &texture);
    EXPECT_EQ(nurbs.count1 + nurbs.order1 + nurbs.count2 + nurbs.order2, 0U);
    EXPECT_EQ(nurbs.resolution1, 33U);
    EXPECT_EQ(nurbs.resolution2, 33U);
    EXPECT_TRUE(nurbs.points.data.empty());
}

TEST(NurbsTables, AllocateMakesZeroedTables) {
    nurbs_t nurbs(nullptr, nullptr);
    ASSERT_TRUE(nurbs.allocate(5, 3, 4, 2));
    EXPECT_EQ(nurbs.count1, 5U);
    EXPECT_EQ(nurbs.order1, 3U);
    EXPECT_EQ(nurbs.count2, 4U);
    EXPECT_EQ(nurbs.order2, 2U);
    EXPECT_EQ(nurbs.knot1.rows, 4U);
    EXPECT_EQ(nurbs.knot1.columns, 8U);
    EXPECT_EQ(nurbs.knot2.rows, 5U);
    EXPECT_EQ(nurbs.knot2.columns, 6U);
    EXPECT_EQ(nurbs.weight.rows, 4U);
    EXPECT_EQ(nurbs.weight.columns, 5U);
    EXPECT_EQ(nurbs.points.rows, 4U);
    EXPECT_EQ(nurbs.points.columns, 5U);
    EXPECT_EQ(nurbs.knot1.data, std::vector<float>(32, 0.0F));
    EXPECT_EQ(nurbs.points.row(3)[4], ulk3d::control_point_t{});
    EXPECT_EQ(nurbs.selection, std::vector<bool>(20, false));
}

TEST(NurbsTables, AllocateDropsOldContentsAndSelection) {
    nurbs_t nurbs(nullptr, nullptr);
    ASSERT_TRUE(nurbs.allocate(2, 2, 2, 2));
    nurbs.weight.row(0)[0] = 7;
    nurbs.selection[3] = true;
    ASSERT_TRUE(nurbs.allocate(2, 2, 2, 2));
    EXPECT_EQ(nurbs.weight.row(0)[0], 0);
    EXPECT_EQ(nurbs.selection, std::vector<bool>(4, false));
}

TEST(NurbsTables, AllocateKeepsTheResolution) {
    nurbs_t nurbs(nullptr, nullptr);
    nurbs.resolution1 = 7;
    ASSERT_TRUE(nurbs.allocate(2, 2, 2, 2));
    EXPECT_EQ(nurbs.resolution1, 7U);
}

TEST(NurbsTables, SizeThatOverflowsRaisesTheStandardError) {
    nurbs_t nurbs(nullptr, nullptr);
    ASSERT_TRUE(nurbs.allocate(2, 2, 2, 2));
    EXPECT_THROW(static_cast<void>(nurbs.allocate(std::uint64_t{1} << 33, 2, std::uint64_t{1} << 33, 2)),
                 std::bad_array_new_length);
    EXPECT_EQ(nurbs.count1, 0U);
    EXPECT_TRUE(nurbs.points.data.empty());
    EXPECT_THROW(static_cast<void>(nurbs.allocate(most, most, 1, 1)), std::bad_array_new_length);
    EXPECT_THROW(static_cast<void>(nurbs.allocate(1, 1, 2, most)), std::bad_array_new_length);
}

TEST(NurbsTables, TablesBeyondTheMemoryFail) {
    nurbs_t nurbs(nullptr, nullptr);
    EXPECT_FALSE(nurbs.allocate(std::uint64_t{1} << 24, 2, std::uint64_t{1} << 24, 2));
    EXPECT_EQ(nurbs.count2, 0U);
    EXPECT_TRUE(nurbs.knot1.data.empty());
}

TEST(NurbsTables, CountsOfZeroAreLegal) {
    nurbs_t nurbs(nullptr, nullptr);
    EXPECT_TRUE(nurbs.allocate(0, 0, 0, 0));
    EXPECT_TRUE(nurbs.allocate(0, 3, 4, 3));
    EXPECT_TRUE(nurbs.points.data.empty());
    nurbs.elementchanged(0, 0);
    nurbs.uploadpoint(0, 0);
}

TEST(NurbsTables, OptionsAreTheWholeTables) {
    nurbs_t nurbs(nullptr, nullptr);
    ASSERT_TRUE(nurbs.allocate(5, 3, 4, 2));
    EXPECT_EQ(nurbs.optioncount(), 3U);
    const std::vector<std::vector<float>*> tables{&nurbs.knot1.data, &nurbs.knot2.data, &nurbs.weight.data};
    const std::vector<std::uint64_t> counts{32, 30, 20};
    for (std::uint32_t n = 0; n < 3; ++n) {
        EXPECT_EQ(nurbs.option(n).data, tables[n]->data());
        EXPECT_EQ(nurbs.option(n).stride, 1U);
        EXPECT_EQ(nurbs.option(n).count, counts[n]);
    }
    EXPECT_EQ(nurbs.option(3).data, nullptr);
    EXPECT_EQ(nurbs.option(3).count, 0U);
}

TEST(NurbsTables, OptionDimensionsAreRowsAndColumns) {
    nurbs_t nurbs(nullptr, nullptr);
    ASSERT_TRUE(nurbs.allocate(5, 3, 4, 2));
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> expected{{4, 8}, {5, 6}, {4, 5}, {0, 0}};
    for (std::uint32_t n = 0; n < 4; ++n) {
        EXPECT_EQ(nurbs.optiondims(n).rows, expected[n].first);
        EXPECT_EQ(nurbs.optiondims(n).columns, expected[n].second);
    }
}

TEST(NurbsTables, OneArrayCanBeEdited) {
    nurbs_t nurbs(nullptr, nullptr);
    EXPECT_EQ(nurbs.arraycount(), 1U);
    EXPECT_EQ(nurbs.array(0), &nurbs.ctlpts);
    EXPECT_EQ(nurbs.array(1), nullptr);
    EXPECT_EQ(static_cast<const nurbs_t&>(nurbs).array(0), &nurbs.ctlpts);
    EXPECT_EQ(nurbs.elementarray(), nullptr);
}

TEST(NurbsTables, BoundsWithoutAnArrayAreTheOrigin) {
    nurbs_t nurbs(nullptr, nullptr);
    ulk3d::pos3 low{1, 2, 3}, high{4, 5, 6};
    nurbs.bounds(low, high);
    EXPECT_EQ(low, ulk3d::pos3{});
    EXPECT_EQ(high, ulk3d::pos3{});
}

TEST(NurbsTables, ModelOfAnEntryWritesIntoTheEntry) {
    const ulk3d::model_entry_t entry(ulk3d::model_kind_t::nurbs);
    EXPECT_EQ(entry.nurbs.texture, &entry.texture);
    EXPECT_EQ(entry.nurbs.polygon, &entry.polygon);
}

}  // namespace
