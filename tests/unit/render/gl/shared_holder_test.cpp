#include "render/gl/shared_holder.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using ulk3d::shared_holder;

struct counted {
    static inline int alive = 0;
    counted() { ++alive; }
    ~counted() { --alive; }
    counted(const counted&) = delete;
    counted& operator=(const counted&) = delete;
    int value = 0;
};

TEST(SharedHolder, DefaultIsNull) {
    const shared_holder<counted> holder;
    EXPECT_FALSE(holder);
    EXPECT_EQ(holder.get(), nullptr);
    EXPECT_EQ(holder.use_count(), 0u);
}

TEST(SharedHolder, CopyAddsOneAndSharesTheObject) {
    const auto first = shared_holder<counted>::make();
    const auto second = first;
    EXPECT_EQ(first.use_count(), 2u);
    second->value = 7;
    EXPECT_EQ((*first).value, 7);
}

TEST(SharedHolder, LastReleaseDestroysTheObject) {
    auto first = shared_holder<counted>::make();
    auto second = first;
    first.reset();
    EXPECT_EQ(counted::alive, 1);
    EXPECT_EQ(second.use_count(), 1u);
    second.reset();
    EXPECT_EQ(counted::alive, 0);
}

TEST(SharedHolder, AssignmentDropsWhatWasHeld) {
    auto first = shared_holder<counted>::make();
    const auto second = shared_holder<counted>::make();
    first = second;
    EXPECT_EQ(counted::alive, 1);
    EXPECT_EQ(second.use_count(), 2u);
}

TEST(SharedHolder, SelfAssignmentKeepsTheObject) {
    auto holder = shared_holder<counted>::make();
    const auto& same = holder;
    holder = same;
    EXPECT_EQ(counted::alive, 1);
    EXPECT_EQ(holder.use_count(), 1u);
}

TEST(SharedHolder, MoveTakesTheReference) {
    auto first = shared_holder<counted>::make();
    const auto second = std::move(first);
    EXPECT_EQ(second.use_count(), 1u);
    EXPECT_FALSE(first);
}

}  // namespace
