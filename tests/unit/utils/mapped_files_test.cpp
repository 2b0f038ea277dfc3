#include "utils/mapped_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>

#include "support/scene_text.h"
#include "unit/utils/shared_vectors.h"

namespace libutils {
namespace {

class MappedFile : public testing::Test {
  protected:
    const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    ulk_test::temporary_folder_t folder;
    const std::string path = folder.write("a", std::string(page * 4, 'x'));
};

using MappedFileDeathTest = MappedFile;

TEST_F(MappedFile, ShowsZerosBehindItsEndWhenItIsCut) {
    window_t window;
    ASSERT_TRUE(window.allocate(0, path.c_str(), 0));
    std::filesystem::resize_file(path, page);
    EXPECT_EQ(text(window), std::string(page, 'x') + std::string(page * 3, '\0'));
}

TEST_F(MappedFile, CutInsideAPageShowsZerosFromThere) {
    window_t window;
    ASSERT_TRUE(window.allocate(0, path.c_str(), 0));
    std::filesystem::resize_file(path, page + 10);
    EXPECT_EQ(text(window), std::string(page + 10, 'x') + std::string(page * 3 - 10, '\0'));
}

TEST_F(MappedFile, CanBeCutTwice) {
    window_t window;
    ASSERT_TRUE(window.allocate(0, path.c_str(), 0));
    std::filesystem::resize_file(path, page * 2);
    EXPECT_EQ(window.at(page * 3), 0);
    std::filesystem::resize_file(path, 0);
    EXPECT_EQ(text(window), std::string(page * 4, '\0'));
}

TEST_F(MappedFile, CanBeWrittenToBehindItsEnd) {
    window_t window;
    ASSERT_TRUE(window.allocate(0, path.c_str(), 1));
    std::filesystem::resize_file(path, 0);
    std::ranges::fill(window.elements(), static_cast<unsigned char>('y'));
    EXPECT_EQ(text(window), std::string(page * 4, 'y'));
}

TEST_F(MappedFile, TwoMappingsOfOneFileAreBothMended) {
    window_t first, second;
    ASSERT_TRUE(first.allocate(0, path.c_str(), 0) && second.allocate(0, path.c_str(), 0));
    std::filesystem::resize_file(path, 0);
    EXPECT_EQ(first.at(page), 0);
    EXPECT_EQ(second.at(page * 4 - 1), 0);
}

TEST_F(MappedFileDeathTest, OtherMappingsStillEndTheProcess) {
    window_t window;
    ASSERT_TRUE(window.allocate(0, path.c_str(), 0));
    EXPECT_DEATH(
        {
            const int file = open(path.c_str(), O_RDONLY);
            const auto* bytes =
                static_cast<const volatile char*>(mmap(nullptr, page * 4, PROT_READ, MAP_PRIVATE, file, 0));
            std::filesystem::resize_file(path, 0);
            static_cast<void>(bytes[page]);
        },
        "");
}

TEST_F(MappedFileDeathTest, SignalThatWasSentStillEndsTheProcess) {
    window_t window;
    ASSERT_TRUE(window.allocate(0, path.c_str(), 0));
    EXPECT_DEATH(raise(SIGBUS), "");
}

}  // namespace
}  // namespace libutils
