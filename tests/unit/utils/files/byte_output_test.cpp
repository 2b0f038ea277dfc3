#include "utils/files/byte_output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "support/scene_text.h"

using libutils::byte_output;
using libutils::fifo_t;

namespace {

void append(byte_output& output, std::string_view bytes) {
    std::ranges::copy(bytes, output.append(bytes.size()));
}

}  // namespace

TEST(ByteOutput, TruncatesWhatWasThere) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.write("file", "a longer text than the new one");
    byte_output output(path.c_str(), fifo_t::needs_reader);
    EXPECT_TRUE(output.is_open());
    append(output, std::string_view("n\0w", 3));
    EXPECT_TRUE(output.complete());
    EXPECT_EQ(ulk_test::read_file(path), std::string("n\0w", 3));
}

TEST(ByteOutput, NothingAppendedIsAnEmptyFile) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.path("file");
    byte_output output(path.c_str(), fifo_t::needs_reader);
    EXPECT_TRUE(output.complete());
    EXPECT_EQ(ulk_test::read_file(path), "");
}

TEST(ByteOutput, PiecesOfAllSizesPassThroughTheBuffer) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.path("file");
    std::string expected;
    byte_output output(path.c_str(), fifo_t::needs_reader);
    for (std::size_t i = 0; i < 2000; ++i) {
        const std::string piece(i * i % 997, static_cast<char>('a' + i % 26));
        append(output, piece);
        expected += piece;
    }
    const std::string whole(byte_output::capacity, 'w');
    append(output, whole);
    append(output, "end");
    EXPECT_TRUE(output.complete());
    EXPECT_EQ(ulk_test::read_file(path), expected + whole + "end");
}

TEST(ByteOutput, APathThatCanNotBeOpenedFailsAtOnce) {
    const ulk_test::temporary_folder_t folder;
    const std::string fifo = folder.path("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {folder.path("missing/file"), folder.path(""), fifo, std::string()}) {
        byte_output output(path.c_str(), fifo_t::needs_reader);
        EXPECT_FALSE(output.is_open()) << path;
        EXPECT_TRUE(output.failed()) << path;
        append(output, "bytes");
        EXPECT_FALSE(output.complete()) << path;
    }
}

TEST(ByteOutput, AFullDiskIsSeenAtTheClose) {
    byte_output output("/dev/full", fifo_t::needs_reader);
    append(output, "bytes");
    EXPECT_FALSE(output.failed());
    EXPECT_FALSE(output.complete());
}

TEST(ByteOutput, AFullDiskIsSeenWhenTheBufferRunsOver) {
    byte_output output("/dev/full", fifo_t::needs_reader);
    append(output, "bytes");
    append(output, std::string(byte_output::capacity, 'x'));
    EXPECT_TRUE(output.failed());
    EXPECT_FALSE(output.complete());
}

TEST(ByteOutput, ACloseThatFailsIsAFailure) {
    const ulk_test::temporary_folder_t folder;
    // The lowest free number is the one that the next open gives.
    const int next = ::open("/dev/null", O_RDONLY);
    ASSERT_GE(next, 0);
    ::close(next);
    byte_output output(folder.path("file").c_str(), fifo_t::needs_reader);
    ASSERT_TRUE(output.is_open());
    ASSERT_EQ(::close(next), 0);
    EXPECT_FALSE(output.complete());
}

TEST(ByteOutput, StaysFailedWhenMarkedSo) {
    const ulk_test::temporary_folder_t folder;
    byte_output output(folder.path("file").c_str(), fifo_t::needs_reader);
    output.fail();
    EXPECT_TRUE(output.failed());
    EXPECT_FALSE(output.complete());
}
