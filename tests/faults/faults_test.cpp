// The tests of what makes operations fail: what the loops beside this file find depends on it.

#include "support/faults/faults.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "render/gl/array.h"
#include "render/gl/mapped_span.h"
#include "support/gl_context.h"
#include "support/scene_text.h"

namespace {

using namespace ulk_test;

constexpr fault_t no_memory{fallible_t::allocation};

TEST(Faults, CountsAllocationsAndFailsNone) {
    std::uint64_t count = 0;
    {
        const faults_t faults(no_memory, 0);
        const auto one = std::make_unique<int>(1);
        const std::vector<int> two(100);
        count = faults.count();
    }
    EXPECT_EQ(count, 2U);
}

TEST(Faults, FailsTheAllocationOfANumberAndNoOther) {
    bool first = true, second = true, third = true;
    const auto allocates = [] {
        try {
            return std::make_unique<int>(1) != nullptr;
        } catch (const std::bad_alloc&) {
            return false;
        }
    };
    {
        const faults_t faults(no_memory, 2);
        first = allocates();
        second = allocates();
        third = allocates();
    }
    EXPECT_TRUE(first);
    EXPECT_FALSE(second);
    EXPECT_TRUE(third);
}

TEST(Faults, ReachStringsThatTheLibraryAllocates) {
    bool thrown = false, struck = false;
    std::string text(15, 'a');
    {
        const faults_t faults(no_memory, 1);
        try {
            text.append("more than the string has room for in itself");
        } catch (const std::bad_alloc&) {
            thrown = true;
        }
        struck = faults.has_struck();
    }
    EXPECT_TRUE(thrown);
    EXPECT_TRUE(struck);
    EXPECT_EQ(text, "aaaaaaaaaaaaaaa");
}

TEST(Faults, OfFilesHaveTheErrorThatIsAskedFor) {
    const temporary_folder_t folder;
    const std::string path = folder.write("file", "0123456789");
    char bytes[10];
    int error = 0;
    ssize_t failed = 0, after = 0, part = 0;
    const int file = open(path.c_str(), O_RDONLY);
    {
        const faults_t faults({fallible_t::read, EIO}, 1);
        failed = read(file, bytes, sizeof bytes);
        error = errno;
        after = read(file, bytes, 2);
    }
    {
        const faults_t faults({.operation = fallible_t::read, .is_short = true}, 1);
        part = read(file, bytes, 8);
    }
    close(file);
    EXPECT_EQ(failed, -1);
    EXPECT_EQ(error, EIO);
    EXPECT_EQ(after, 2);
    EXPECT_EQ(part, 4);
}

TEST(Faults, LastWhenTheyAreTo) {
    std::array<int, 3> opened{};
    {
        const faults_t faults({.operation = fallible_t::open, .error = EIO, .is_lasting = true}, 2);
        for (int& file : opened) {
            file = open("/", O_RDONLY);
            if (file >= 0)
                close(file);
        }
    }
    EXPECT_GE(opened[0], 0);
    EXPECT_EQ(opened[1], -1);
    EXPECT_EQ(opened[2], -1);
}

class FaultsOfBuffers : public gl_test {};

TEST_F(FaultsOfBuffers, LeaveNoStoreAndAnErrorOfGL) {
    ulk3d::array_t array;
    const auto list = ulk3d::make_element_list({ulk3d::e_type_t::Position});
    bool stored = true;
    {
        const faults_t faults({fallible_t::buffer_store}, 1);
        stored = array.allocate(7, list) && array.provide();
    }
    EXPECT_FALSE(stored);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_OUT_OF_MEMORY));
    EXPECT_TRUE(array.provide());
}

TEST(FailingNumbers, AreAllOfAShortRunAndFewOfALongOne) {
    EXPECT_EQ(failing_numbers(0), std::vector<std::uint64_t>{});
    EXPECT_EQ(failing_numbers(3), (std::vector<std::uint64_t>{1, 2, 3}));
    const std::vector<std::uint64_t> numbers = failing_numbers(100000, 10, 5);
    EXPECT_EQ(numbers.front(), 1U);
    EXPECT_EQ(numbers[9], 10U);
    EXPECT_EQ(numbers.back(), 100000U);
    EXPECT_LE(numbers.size(), 17U);
}

}  // namespace
