#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>

#include <cstring>
#include <filesystem>
#include <iostream>
#include <string>

#include "support/captured_stream.h"
#include "support/scene_text.h"
#include "unit/utils/memory/shared_vectors.h"

using namespace libutils;

// One block over every policy.

template <class A>
class SharedBlock : public testing::Test {};
using policies = testing::Types<alloc_new, alloc_mmap_win>;
TYPED_TEST_SUITE(SharedBlock, policies);

TYPED_TEST(SharedBlock, WithoutABlockIsEmpty) {
    refvector2<std::uint32_t, TypeParam> vector;
    EXPECT_TRUE(vector.empty());
    EXPECT_EQ(vector.size(), 0U);
    EXPECT_EQ(vector.begin(), nullptr);
    EXPECT_EQ(vector.end(), nullptr);
    EXPECT_EQ(vector.use_count(), 0U);
    EXPECT_FALSE(vector.writable());
}

TYPED_TEST(SharedBlock, SizeCountsElements) {
    refvector2<std::uint32_t, TypeParam> vector;
    ASSERT_TRUE(vector.allocate(5));
    EXPECT_FALSE(vector.empty());
    EXPECT_EQ(vector.size(), 5U);
    EXPECT_EQ(vector.block_size(), 20U);
    EXPECT_EQ(vector.end() - vector.begin(), 5);
    EXPECT_TRUE(vector.writable());
}

TYPED_TEST(SharedBlock, FreshMemoryIsZero) {
    refvector2<std::uint32_t, TypeParam> vector;
    ASSERT_TRUE(vector.allocate(1000));
    for (const std::uint32_t word : vector)
        EXPECT_EQ(word, 0U);
}

TYPED_TEST(SharedBlock, AtAndFrontReachTheElements) {
    refvector2<std::uint32_t, TypeParam> vector;
    ASSERT_TRUE(vector.allocate(3));
    vector.front() = 7;
    vector.at(2) = 9;
    const auto& constant = vector;
    EXPECT_EQ(constant.front(), 7U);
    EXPECT_EQ(constant.at(2), 9U);
    EXPECT_EQ(&constant.at(1), constant.begin() + 1);
    EXPECT_EQ(constant.end(), constant.begin() + 3);
}

TYPED_TEST(SharedBlock, CopySeesWhatIsWrittenThroughTheOther) {
    refvector2<std::uint32_t, TypeParam> one;
    ASSERT_TRUE(one.allocate(2));
    refvector2<std::uint32_t, TypeParam> other(one);
    one.at(1) = 42;
    EXPECT_EQ(other.at(1), 42U);
    EXPECT_EQ(one.use_count(), 2U);
}

TYPED_TEST(SharedBlock, AssignmentDropsWhatWasHeld) {
    refvector2<std::uint32_t, TypeParam> one, other, witness;
    ASSERT_TRUE(one.allocate(2));
    ASSERT_TRUE(other.allocate(3));
    witness = other;
    EXPECT_EQ(witness.use_count(), 2U);
    other = one;
    EXPECT_EQ(witness.use_count(), 1U);
    EXPECT_EQ(one.use_count(), 2U);
    EXPECT_EQ(other.size(), 2U);
}

TYPED_TEST(SharedBlock, AssignmentOfTheSameBlockKeepsIt) {
    refvector2<std::uint32_t, TypeParam> one;
    ASSERT_TRUE(one.allocate(2));
    one.at(0) = 5;
    refvector2<std::uint32_t, TypeParam> other(one);
    other = one;
    one = static_cast<const refvector2<std::uint32_t, TypeParam>&>(one);
    EXPECT_EQ(one.use_count(), 2U);
    EXPECT_EQ(one.at(0), 5U);
}

TYPED_TEST(SharedBlock, OutlivesItsFirstHolder) {
    refvector2<std::uint32_t, TypeParam> survivor;
    {
        refvector2<std::uint32_t, TypeParam> first;
        ASSERT_TRUE(first.allocate(1));
        first.at(0) = 11;
        survivor = first;
    }
    EXPECT_EQ(survivor.use_count(), 1U);
    EXPECT_EQ(survivor.at(0), 11U);
}

TYPED_TEST(SharedBlock, HoldersMayDifferInTheirElements) {
    refvector2<std::uint32_t, TypeParam> words;
    ASSERT_TRUE(words.allocate(2));
    words.at(1) = 0x04030201;
    const refvector2<unsigned char, TypeParam> bytes(words);
    EXPECT_EQ(bytes.size(), 8U);
    EXPECT_EQ(bytes.at(4), 1);
    EXPECT_EQ(bytes.at(7), 4);
    EXPECT_EQ(words.use_count(), 2U);
}

TYPED_TEST(SharedBlock, AllocateTakesAFreshZeroBlock) {
    refvector2<std::uint32_t, TypeParam> one;
    ASSERT_TRUE(one.allocate(2));
    one.at(0) = 5;
    const refvector2<std::uint32_t, TypeParam> other(one);
    ASSERT_TRUE(one.allocate(4));
    EXPECT_EQ(one.at(0), 0U);
    EXPECT_EQ(other.at(0), 5U);
    EXPECT_EQ(other.use_count(), 1U);
}

TYPED_TEST(SharedBlock, AllocateWithKeepCopiesTheSmallerOfBoth) {
    for (const std::uint64_t count : {2U, 6U}) {
        refvector2<std::uint32_t, TypeParam> vector;
        ASSERT_TRUE(vector.allocate(4));
        for (std::uint32_t i = 0; i < 4; ++i)
            vector.at(i) = i + 1;
        ASSERT_TRUE(vector.allocate(count, nullptr, 1, 0, true));
        ASSERT_EQ(vector.size(), count);
        for (std::uint32_t i = 0; i < count; ++i)
            EXPECT_EQ(vector.at(i), i < 4 ? i + 1 : 0);
    }
}

TYPED_TEST(SharedBlock, CountOfZeroIsAnEmptyBlock) {
    refvector2<std::uint32_t, TypeParam> vector;
    EXPECT_TRUE(vector.allocate(0));
    EXPECT_TRUE(vector.empty());
    EXPECT_EQ(vector.size(), 0U);
    EXPECT_EQ(vector.use_count(), 1U);
}

TYPED_TEST(SharedBlock, SizeThatDoesNotFitIsRefused) {
    refvector2<std::uint32_t, TypeParam> vector;
    EXPECT_FALSE(vector.allocate(std::numeric_limits<std::uint64_t>::max() / 4 + 2));
    EXPECT_TRUE(vector.empty());
    ASSERT_TRUE(vector.allocate(1));
    EXPECT_FALSE(vector.reallocate(std::numeric_limits<std::uint64_t>::max() / 4 + 2));
    EXPECT_EQ(vector.size(), 1U);
}

TYPED_TEST(SharedBlock, ReallocateWithoutABlockMakesOne) {
    refvector2<std::uint32_t, TypeParam> vector;
    ASSERT_TRUE(vector.reallocate(3));
    EXPECT_EQ(vector.size(), 3U);
    vector.at(2) = 1;
    EXPECT_TRUE(vector.writable());
}

TYPED_TEST(SharedBlock, ReallocateToLessKeepsTheBytes) {
    refvector2<std::uint32_t, TypeParam> vector;
    ASSERT_TRUE(vector.allocate(4));
    for (std::uint32_t i = 0; i < 4; ++i)
        vector.at(i) = i + 1;
    ASSERT_TRUE(vector.reallocate(2));
    EXPECT_EQ(vector.size(), 2U);
    EXPECT_EQ(vector.at(0), 1U);
    EXPECT_EQ(vector.at(1), 2U);
}

TYPED_TEST(SharedBlock, ReallocateIsSeenByAllHolders) {
    refvector2<std::uint32_t, TypeParam> one;
    ASSERT_TRUE(one.allocate(4));
    const refvector2<std::uint32_t, TypeParam> other(one);
    ASSERT_TRUE(one.reallocate(2));
    EXPECT_EQ(other.size(), 2U);
    EXPECT_EQ(other.begin(), static_cast<const decltype(one)&>(one).begin());
}

TYPED_TEST(SharedBlock, DeallocateDropsTheReference) {
    refvector2<std::uint32_t, TypeParam> one;
    ASSERT_TRUE(one.allocate(4));
    const refvector2<std::uint32_t, TypeParam> other(one);
    one.deallocate();
    EXPECT_EQ(one.begin(), nullptr);
    EXPECT_TRUE(one.empty());
    EXPECT_EQ(other.use_count(), 1U);
    EXPECT_EQ(other.size(), 4U);
}

TYPED_TEST(SharedBlock, ReadsAFileWholeWhenTheCountIsZero) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "hello, world");
    refvector2<char, TypeParam> vector;
    ASSERT_TRUE(vector.allocate(0, file.c_str(), 0));
    EXPECT_EQ(text(vector), "hello, world");
}

TYPED_TEST(SharedBlock, ReadsPartOfAFile) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "hello, world");
    refvector2<char, TypeParam> vector;
    ASSERT_TRUE(vector.allocate(4, file.c_str(), 0, 3));
    EXPECT_EQ(text(vector), "lo, ");
}

TYPED_TEST(SharedBlock, FileShorterThanItsBlockLeavesZeros) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "abc");
    refvector2<char, TypeParam> vector;
    constexpr std::uint64_t pages = 10000;
    ASSERT_TRUE(vector.allocate(pages, file.c_str(), 0));
    EXPECT_EQ(text(vector), "abc" + std::string(pages - 3, '\0'));
}

TYPED_TEST(SharedBlock, EmptyFileIsAnEmptyBlock) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "");
    refvector2<char, TypeParam> vector;
    EXPECT_TRUE(vector.allocate(0, file.c_str(), 0));
    EXPECT_TRUE(vector.empty());
}

// The heap.

TEST(AllocNew, MissingFileOfUnknownSizeIsRefused) {
    const ulk_test::temporary_folder_t folder;
    heap_t vector;
    EXPECT_FALSE(vector.allocate(0, folder.path("none").c_str(), 0));
    EXPECT_TRUE(vector.empty());
}

TEST(AllocNew, MissingFileOfKnownSizeStillGivesABlock) {
    const ulk_test::temporary_folder_t folder;
    heap_t vector;
    EXPECT_TRUE(vector.allocate(4, folder.path("none").c_str(), 0));
    EXPECT_EQ(vector.size(), 4U);
}

TEST(AllocNew, FailureWithKeepLeavesTheOldBlock) {
    const ulk_test::temporary_folder_t folder;
    heap_t vector;
    ASSERT_TRUE(vector.allocate(2));
    vector.at(1) = 3;
    EXPECT_FALSE(vector.allocate(0, folder.path("none").c_str(), 0, 0, true));
    EXPECT_EQ(vector.size(), 2U);
    EXPECT_EQ(vector.at(1), 3);
    EXPECT_FALSE(vector.allocate(0, folder.path("none").c_str(), 0, 0, false));
    EXPECT_TRUE(vector.empty());
}

TEST(AllocNew, ReallocateGrows) {
    heap_t vector;
    ASSERT_TRUE(vector.allocate(2));
    vector.at(0) = 3;
    vector.at(1) = 4;
    ASSERT_TRUE(vector.reallocate(1000));
    EXPECT_EQ(vector.size(), 1000U);
    EXPECT_EQ(vector.at(0), 3);
    EXPECT_EQ(vector.at(1), 4);
    EXPECT_EQ(vector.at(999), 0);
}

TEST(AllocNew, DeallocateOfNothingIsNothing) {
    alloc_new().deallocate(nullptr);
}

// Mappings.

TEST(AllocMmapWin, UnknownModeIsRefused) {
    for (const int mode : {-1, 2, 3}) {
        bytes_t vector;
        EXPECT_FALSE(vector.allocate(4, nullptr, mode));
        EXPECT_TRUE(vector.empty());
    }
}

TEST(AllocMmapWin, AnonymousMemoryGrowsNoFurtherThanItWasAtFirst) {
    words_t vector;
    ASSERT_TRUE(vector.allocate(1000));
    vector.at(0) = 77;
    EXPECT_FALSE(vector.reallocate(1001));
    EXPECT_EQ(vector.begin(), nullptr);
    EXPECT_TRUE(vector.empty());
    ASSERT_TRUE(vector.reallocate(1000));
    EXPECT_EQ(vector.at(0), 77U);
}

TEST(AllocMmapWin, AnonymousMemoryGrowsBackToItsFirstSize) {
    words_t vector;
    ASSERT_TRUE(vector.allocate(1000));
    vector.at(4) = 77;
    ASSERT_TRUE(vector.reallocate(5));
    ASSERT_TRUE(vector.reallocate(0));
    EXPECT_TRUE(vector.empty());
    ASSERT_TRUE(vector.reallocate(1000));
    EXPECT_EQ(vector.size(), 1000U);
    vector.at(999) = 1;
}

TEST(AllocMmapWin, AnonymousSizeIsANumberOf32Bits) {
    bytes_t vector;
    EXPECT_FALSE(vector.allocate(std::uint64_t{1} << 32));
    EXPECT_TRUE(vector.empty());
}

TEST(AllocMmapWin, ModeZeroIsForReadingOnly) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "abc");
    bytes_t vector;
    ASSERT_TRUE(vector.allocate(0, file.c_str(), 0));
    EXPECT_FALSE(vector.writable());
    ASSERT_TRUE(vector.allocate(3, nullptr, 0));
    EXPECT_FALSE(vector.writable());
}

TEST(AllocMmapWin, KeepWithABlockForReadingShowsTheFile) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "abc");
    bytes_t vector;
    ASSERT_TRUE(vector.allocate(3));
    ASSERT_TRUE(vector.allocate(0, file.c_str(), 0, 0, true));
    EXPECT_EQ(text(vector), "abc");
}

TEST(AllocMmapWin, WritingStaysInThisProcess) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "abc");
    {
        bytes_t vector;
        ASSERT_TRUE(vector.allocate(0, file.c_str(), 1));
        vector.at(1) = 'X';
        EXPECT_EQ(text(vector), "aXc");
    }
    EXPECT_EQ(ulk_test::read_file(file), "abc");
}

TEST(AllocMmapWin, OneFileTwice) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "abc");
    bytes_t one, other;
    ASSERT_TRUE(one.allocate(0, file.c_str(), 1));
    ASSERT_TRUE(other.allocate(0, file.c_str(), 1));
    one.at(0) = 'X';
    EXPECT_EQ(text(other), "abc");
}

TEST(AllocMmapWin, ReallocateOfAFileShowsWhatTheFileHolds) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "hello, world");
    bytes_t vector;
    ASSERT_TRUE(vector.allocate(0, file.c_str(), 1));
    vector.at(7) = 'X';
    ASSERT_TRUE(vector.reallocate(5, 7));
    EXPECT_EQ(text(vector), "world");
    ASSERT_TRUE(vector.reallocate(12));
    EXPECT_EQ(text(vector), "hello, world");
    EXPECT_EQ(ulk_test::read_file(file), "hello, world");
}

TEST(AllocMmapWin, ViewBehindTheMappingIsRefused) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "hello, world");
    bytes_t vector;
    EXPECT_FALSE(vector.allocate(6, file.c_str(), 0, 7));
    EXPECT_FALSE(vector.allocate(0, file.c_str(), 0, 1));
    EXPECT_FALSE(vector.allocate(1, file.c_str(), 0, std::numeric_limits<std::uint64_t>::max()));
    ASSERT_TRUE(vector.allocate(0, file.c_str(), 0));
    EXPECT_FALSE(vector.reallocate(13));
    EXPECT_EQ(vector.begin(), nullptr);
}

TEST(AllocMmapWin, AnyOffsetOfALongFile) {
    const ulk_test::temporary_folder_t folder;
    std::string content(20000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i % 251);
    const std::string file = folder.write("a.bin", content);
    for (const std::uint64_t offset : {1U, 4095U, 4096U, 4097U, 19999U}) {
        bytes_t vector;
        ASSERT_TRUE(vector.allocate(content.size() - offset, file.c_str(), 0, offset));
        EXPECT_EQ(text(vector), content.substr(offset));
    }
}

TEST(AllocMmapWin, MappingKeepsNoFileOpen) {
    const auto open_files = [] {
        const std::filesystem::directory_iterator folder("/proc/self/fd");
        return std::distance(begin(folder), end(folder));
    };
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "abc");
    const auto before = open_files();
    bytes_t vector;
    ASSERT_TRUE(vector.allocate(0, file.c_str(), 0));
    EXPECT_EQ(open_files(), before);
}

TEST(AllocMmapWin, LastHolderReleasesTheMapping) {
    bytes_t vector;
    ASSERT_TRUE(vector.allocate(4096));
    void* const view = vector.begin();
    unsigned char resident = 0;
    ASSERT_EQ(mincore(view, 1, &resident), 0);
    vector.deallocate();
    EXPECT_NE(mincore(view, 1, &resident), 0);
}

TEST(AllocMmapWin, MemoryThatIsTriedForAndNotThereIsNoBlock) {
    constexpr std::uint64_t gigabyte = std::uint64_t{1} << 30;
    bytes_t vector;
    EXPECT_TRUE(vector.try_allocate(0));
    EXPECT_TRUE(vector.try_allocate(1));
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_DATA, &former), 0);
    const rlimit little{gigabyte / 4, former.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_DATA, &little), 0);
    const bool done = vector.try_allocate(gigabyte);
    EXPECT_EQ(setrlimit(RLIMIT_DATA, &former), 0);
    EXPECT_FALSE(done);
    EXPECT_TRUE(vector.empty());
}

TEST(AllocMmapWin, FileThatIsTriedForAndNotThereIsNoBlock) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "abc");
    bytes_t vector;
    const ulk_test::captured_stream errors(std::cerr);
    for (const std::string& path : {folder.path("missing"), folder.path(""), std::string("/dev/null")})
        EXPECT_FALSE(vector.try_allocate(0, path.c_str(), 0)) << path;
    EXPECT_FALSE(vector.try_allocate(std::uint64_t{1} << 60, file.c_str(), 0));
    EXPECT_EQ(errors.text(), "");
    ASSERT_TRUE(vector.try_allocate(0, file.c_str(), 0));
    EXPECT_EQ(std::string(vector.begin(), vector.end()), "abc");
}

TEST(AllocMmapWinDeathTest, MissingFileEndsTheProcess) {
    bytes_t vector;
    EXPECT_EXIT(vector.allocate(0, "/nonexistent/a.bin", 0), testing::ExitedWithCode(ENOENT),
                "^/nonexistent/a\\.bin: file open failed\\.\n"
                "alloc_mmap_win::allocate\\(\\) failed with error 2: No such file or directory\n$");
}

TEST(AllocMmapWinDeathTest, FolderIsAFileThatCanNotBeOpened) {
    const ulk_test::temporary_folder_t folder;
    bytes_t vector;
    EXPECT_EXIT(
        vector.allocate(0, folder.path("").c_str(), 0), testing::ExitedWithCode(EISDIR),
        ": file open failed\\.\nalloc_mmap_win::allocate\\(\\) failed with error 21: Is a directory\n$");
}

TEST(AllocMmapWinDeathTest, DeviceIsAFileThatCanNotBeOpened) {
    bytes_t vector;
    EXPECT_EXIT(vector.allocate(0, "/dev/null", 0), testing::ExitedWithCode(ENODEV),
                "^/dev/null: file open failed\\.\nalloc_mmap_win::allocate\\(\\) failed with error 19: ");
}

TEST(AllocMmapWinDeathTest, MappingThatCanNotBeMadeEndsTheProcess) {
    const ulk_test::temporary_folder_t folder;
    const std::string file = folder.write("a.bin", "abc");
    bytes_t vector;
    EXPECT_EXIT(vector.allocate(std::uint64_t{1} << 60, file.c_str(), 0), testing::ExitedWithCode(ENOMEM),
                "a\\.bin: create file mapping failed\\.\n"
                "alloc_mmap_win::allocate\\(\\) failed with error 12: Cannot allocate memory\n$");
}

// The small kind.

TEST(AllocMmapWinDeathTest, LastMessageIsShownBeforeTheEnd) {
    libutils::show_before_the_end(
        [](const char* message) { std::cerr << "shown: " << message << std::endl; });
    bytes_t vector;
    EXPECT_EXIT(vector.allocate(0, "/nonexistent/a.bin", 0), testing::ExitedWithCode(ENOENT),
                "^/nonexistent/a\\.bin: file open failed\\.\n"
                "(alloc_mmap_win::allocate\\(\\) failed with error 2: No such file or directory)\n"
                "shown: alloc_mmap_win::allocate\\(\\) failed with error 2: No such file or directory\n$");
    EXPECT_NE(libutils::show_before_the_end(nullptr), nullptr);
}

TEST(AllocMmapWinDeathTest, FailureWhileTheLastMessageIsShownEndsTheProcess) {
    libutils::show_before_the_end([](const char*) {
        bytes_t another;
        static_cast<void>(another.allocate(0, "/nonexistent", 0));
    });
    bytes_t vector;
    EXPECT_EXIT(vector.allocate(0, "/nonexistent/a.bin", 0), testing::ExitedWithCode(ENOENT), "");
    libutils::show_before_the_end(nullptr);
}

TEST(Palette, WithoutABlockIsEmpty) {
    palette_t palette;
    EXPECT_TRUE(palette.empty());
    EXPECT_EQ(palette.size(), 0U);
    EXPECT_EQ(palette.begin(), nullptr);
}

TEST(Palette, SizeIsThatOfTheWholeAllocation) {
    palette_t palette;
    ASSERT_TRUE(palette.allocate(256));
    EXPECT_FALSE(palette.empty());
    EXPECT_EQ(palette.size(), 256U * 2 + 32);
    const auto distance =
        reinterpret_cast<std::uintptr_t>(palette.end()) - reinterpret_cast<std::uintptr_t>(palette.begin());
    EXPECT_EQ(distance, palette.size() * sizeof(unsigned short));
    const palette_t& constant = palette;
    EXPECT_EQ(constant.end(), palette.end());
}

TEST(Palette, CopiesShareTheBlock) {
    palette_t palette;
    ASSERT_TRUE(palette.allocate(4));
    const palette_t copy(palette);
    palette_t assigned;
    assigned = palette;
    assigned = static_cast<const palette_t&>(assigned);
    palette.at(3) = 65535;
    palette.front() = 7;
    EXPECT_EQ(copy.at(3), 65535);
    EXPECT_EQ(copy.front(), 7);
    EXPECT_EQ(assigned.begin(), palette.begin());
    palette.deallocate();
    EXPECT_TRUE(palette.empty());
    EXPECT_EQ(copy.at(3), 65535);
}

TEST(Palette, FreshBlockBeginsWithWhatTheOldOneHeld) {
    for (const bool again : {false, true}) {
        palette_t palette;
        ASSERT_TRUE(palette.allocate(4));
        for (unsigned short i = 0; i < 4; ++i)
            palette.at(i) = static_cast<unsigned short>(i + 1);
        ASSERT_TRUE(again ? palette.reallocate(6) : palette.allocate(6));
        EXPECT_EQ(palette.size(), 6U * 2 + 32);
        for (unsigned short i = 0; i < 6; ++i)
            EXPECT_EQ(palette.at(i), i < 4 ? i + 1 : 0);
        ASSERT_TRUE(palette.reallocate(2));
        EXPECT_EQ(palette.at(1), 2);
    }
}

TEST(Palette, FreshBlockLeavesOtherHoldersTheOldOne) {
    palette_t palette;
    ASSERT_TRUE(palette.allocate(1));
    const palette_t other(palette);
    ASSERT_TRUE(palette.allocate(2));
    palette.at(0) = 9;
    EXPECT_EQ(other.at(0), 0);
}

TEST(Palette, CountOfZeroJustDrops) {
    palette_t palette;
    ASSERT_TRUE(palette.allocate(4));
    EXPECT_TRUE(palette.allocate(0));
    EXPECT_TRUE(palette.empty());
    EXPECT_EQ(palette.begin(), nullptr);
}

TEST(Palette, SizeThatDoesNotFitIsRefusedAndKeepsTheBlock) {
    palette_t palette;
    ASSERT_TRUE(palette.allocate(4));
    EXPECT_FALSE(palette.allocate(std::numeric_limits<std::uint64_t>::max() / 2));
    EXPECT_EQ(palette.size(), 4U * 2 + 32);
}
