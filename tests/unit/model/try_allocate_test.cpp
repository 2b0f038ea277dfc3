#include "model/try_allocate.h"

#include <gtest/gtest.h>

#include <iostream>
#include <new>
#include <stdexcept>
#include <string>

#include "support/captured_stream.h"

using ulk3d::try_allocate;
using ulk3d::try_command;

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

TEST(TryCommand, GivesTheResultOfTheCommand) {
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_EQ(try_command("name", [] { return std::string("result"); }), "result");
    EXPECT_EQ(errors.text(), "");
}

TEST(TryCommand, TellsThatMemoryHasRunOutAndGivesNothing) {
    const ulk_test::captured_stream errors(std::cerr);
    EXPECT_EQ(try_command("name", []() -> std::string { throw std::bad_alloc(); }), "");
    EXPECT_FALSE(try_command("other", []() -> bool { throw std::bad_alloc(); }));
    try_command("third", [] { throw std::bad_alloc(); });
    EXPECT_EQ(errors.text(), "name: out of memory.\nother: out of memory.\nthird: out of memory.\n");
}
