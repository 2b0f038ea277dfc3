#include "model/try_allocate.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

using ulk3d::try_allocate;

TEST(TryAllocate, GivesTheResultOfTheAllocation) {
    EXPECT_TRUE(try_allocate([] { return true; }));
    EXPECT_FALSE(try_allocate([] { return false; }));
}

TEST(TryAllocate, RunningOutOfMemoryIsAFailure) {
    EXPECT_FALSE(try_allocate([]() -> bool { throw std::bad_alloc(); }));
    EXPECT_FALSE(try_allocate([]() -> bool { throw std::bad_array_new_length(); }));
}

TEST(TryAllocate, OtherExceptionsPassThrough) {
    EXPECT_THROW(static_cast<void>(try_allocate([]() -> bool { throw std::runtime_error(""); })),
                 std::runtime_error);
}
