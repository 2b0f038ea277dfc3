#include "gltextures/textures/texture_store.h"

#include <gtest/gtest.h>

#include <memory>

namespace libgr {
namespace {

using store_t = texture_store_t<int>;

constexpr std::uint32_t slot_of(std::uint32_t handle) {
    return handle & 0xFFFFU;
}

constexpr std::uint32_t generation_of(std::uint32_t handle) {
    return handle >> 16U;
}

TEST(TextureStore, FindsNothingInAnEmptyOne) {
    EXPECT_EQ(store_t().find("a"), 0U);
}

TEST(TextureStore, FindsByNameWhatWasInserted) {
    store_t store;
    const std::uint32_t a = store.insert("a", 1);
    const std::uint32_t b = store.insert("b", 2);
    EXPECT_EQ(store.find("a"), a);
    EXPECT_EQ(store.find("b"), b);
    EXPECT_EQ(store.find("c"), 0U);
}

TEST(TextureStore, HandleIsSlotBelowAndGenerationAbove) {
    store_t store;
    EXPECT_EQ(store.insert("a", 1), 0x00010000U);
    EXPECT_EQ(store.insert("b", 2), 0x00020001U);
    EXPECT_EQ(store.insert("c", 3), 0x00030002U);
}

TEST(TextureStore, GivesTheEntryOfAHandle) {
    store_t store;
    const std::uint32_t a = store.insert("a", 1);
    const std::uint32_t b = store.insert("b", 2);
    EXPECT_EQ(*store.get(a), 1);
    EXPECT_EQ(*store.get(b), 2);
}

TEST(TextureStore, ResolvingDoesNotCompareTheGeneration) {
    store_t store;
    store.insert("a", 1);
    const std::uint32_t b = store.insert("b", 2);
    EXPECT_EQ(store.get(slot_of(b)), store.get(b));
    EXPECT_EQ(store.get(b + 0x70000U), store.get(b));
}

TEST(TextureStore, GivesNothingForASlotWithoutAnEntry) {
    store_t store;
    EXPECT_EQ(store.get(0), nullptr);
    store.insert("a", 1);
    EXPECT_EQ(store.get(1), nullptr);
    EXPECT_EQ(store.get(0xFFFFFFFF), nullptr);
}

TEST(TextureStore, HoldsACopyAtAnAddressThatStays) {
    store_t store;
    int entry = 1;
    const std::uint32_t handle = store.insert("a", entry);
    entry = 2;
    const int* const place = store.get(handle);
    for (int i = 0; i < 1000; ++i)
        store.insert(std::to_string(i), i);
    EXPECT_EQ(store.get(handle), place);
    EXPECT_EQ(*place, 1);
}

TEST(TextureStore, AnInsertionThatIsTakenBackLeavesItsSlotToTheNext) {
    store_t store;
    store.insert("a", 1);
    const std::uint32_t b = store.insert("b", 2);
    store.remove("b");
    store.remove("nothing");
    EXPECT_EQ(store.find("b"), 0U);
    EXPECT_EQ(store.get(b), nullptr);
    EXPECT_EQ(slot_of(store.insert("c", 3)), slot_of(b));
    EXPECT_EQ(*store.get(store.find("c")), 3);
    EXPECT_EQ(*store.get(store.find("a")), 1);
}

TEST(TextureStore, NameGoesToTheLastEntryOfThatName) {
    store_t store;
    const std::uint32_t first = store.insert("a", 1);
    const std::uint32_t second = store.insert("a", 2);
    EXPECT_EQ(store.find("a"), second);
    EXPECT_EQ(*store.get(first), 1);
}

TEST(TextureStore, TakesAFreeSlotBeforeANewOne) {
    store_t store;
    store.insert("a", 1);
    store.insert("b", 2);
    store.free.push_back(0);
    const std::uint32_t c = store.insert("c", 3);
    EXPECT_EQ(c, 0x00030000U);
    EXPECT_EQ(*store.get(c), 3);
    EXPECT_EQ(slot_of(store.insert("d", 4)), 2U);
}

/// A store after `count` insertions.
store_t store_after(std::uint32_t count) {
    store_t store;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (i % store_t::slot_limit == 0)
            store.clear();
        store.insert(std::to_string(i), 0);
    }
    return store;
}

TEST(TextureStore, GenerationWrapsToOneAfterAllOfThem) {
    store_t store = store_after(0x10000);
    EXPECT_EQ(store.generations.back(), 0) << "the last generation, in 16 bits";
    store.clear();
    EXPECT_EQ(generation_of(store.insert("a", 1)), 1U);
}

TEST(TextureStore, FirstSlotWithTheLastGenerationHasAHighHalfOfZero) {
    store_t store = store_after(0xFFFF);
    EXPECT_EQ(generation_of(store.find("65534")), 0xFFFFU);
    store.clear();
    const std::uint32_t handle = store.insert("a", 7);
    EXPECT_EQ(slot_of(handle), 0U);
    EXPECT_EQ(generation_of(handle), 0U);
    EXPECT_EQ(*store.get(handle), 7);
}

TEST(TextureStore, RefusesMoreEntriesThanAHandleCanTell) {
    store_t store = store_after(0x10000);
    EXPECT_EQ(store.insert("one more", 1), 0U);
    EXPECT_EQ(store.find("one more"), 0U);
    EXPECT_EQ(store.slots.size(), 0x10000U);
    EXPECT_NE(store.find("65535"), 0U);
}

TEST(TextureStore, ClearDropsEverything) {
    texture_store_t<std::shared_ptr<int>> store;
    const auto watched = std::make_shared<int>(1);
    const std::uint32_t handle = store.insert("a", watched);
    EXPECT_EQ(watched.use_count(), 2);
    store.clear();
    EXPECT_EQ(watched.use_count(), 1);
    EXPECT_EQ(store.get(handle), nullptr);
    EXPECT_EQ(store.find("a"), 0U);
    EXPECT_TRUE(store.slots.empty());
    EXPECT_TRUE(store.generations.empty());
    EXPECT_TRUE(store.free.empty());
}

TEST(TextureStore, HandlesOfAClearedOneGoOnWithTheGenerations) {
    store_t store;
    store.insert("a", 1);
    store.clear();
    EXPECT_EQ(store.insert("a", 1), 0x00020000U);
}

}  // namespace
}  // namespace libgr
