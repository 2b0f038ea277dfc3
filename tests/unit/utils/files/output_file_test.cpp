#include "utils/files/output_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <thread>

#include "support/scene_text.h"

using libutils::fifo_t;
using libutils::output_file;

namespace {

std::string make_fifo(const ulk_test::temporary_folder_t& folder) {
    std::string path = folder.path("fifo");
    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
    return path;
}

/// Writes three bytes into a FIFO that has a reader; what the reader gets.
std::string written_to_reader(const std::string& fifo, fifo_t treatment) {
    const int reader = ::open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_GE(reader, 0);
    output_file output(fifo.c_str(), treatment);
    output.write("abc", 3);
    const bool complete = output.complete();
    std::array<char, 8> bytes{};
    const ssize_t got = ::read(reader, bytes.data(), bytes.size());
    ::close(reader);
    EXPECT_EQ(complete, got > 0);
    return {bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0))};
}

}  // namespace

TEST(OutputFile, AFifoWithAReaderTakesTheBytesUnlessItIsRefused) {
    const ulk_test::temporary_folder_t folder;
    const std::string fifo = make_fifo(folder);
    EXPECT_EQ(written_to_reader(fifo, fifo_t::needs_reader), "abc");
    EXPECT_EQ(written_to_reader(fifo, fifo_t::waits_for_reader), "abc");
    EXPECT_EQ(written_to_reader(fifo, fifo_t::refuse), "");
}

TEST(OutputFile, AFifoWithoutAReaderIsWaitedForOnlyWhenAsked) {
    const ulk_test::temporary_folder_t folder;
    const std::string fifo = make_fifo(folder);
    EXPECT_FALSE(output_file(fifo.c_str(), fifo_t::refuse).is_open());
    EXPECT_FALSE(output_file(fifo.c_str(), fifo_t::needs_reader).is_open());
    std::string got;
    std::thread reader([&] { got = ulk_test::read_file(fifo); });
    output_file output(fifo.c_str(), fifo_t::waits_for_reader);
    output.write("abc", 3);
    EXPECT_TRUE(output.complete());
    reader.join();
    EXPECT_EQ(got, "abc");
}

TEST(OutputFile, AStreamWritesIntoTheSameFile) {
    const ulk_test::temporary_folder_t folder;
    const std::string path = folder.write("file", "a longer text than the new one");
    output_file output(path.c_str(), fifo_t::refuse);
    std::FILE* const stream = output.stream();
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(output.stream(), stream);
    EXPECT_TRUE(output.is_open());
    std::fputs("text", stream);
    EXPECT_TRUE(output.complete());
    EXPECT_FALSE(output.is_open());
    EXPECT_EQ(ulk_test::read_file(path), "text");
}

TEST(OutputFile, AStreamThatLosesBytesIsAFailure) {
    for (const bool flushed_before : {false, true}) {
        output_file output("/dev/full", fifo_t::refuse);
        std::fputs("text", output.stream());
        if (flushed_before) {
            EXPECT_NE(std::fflush(output.stream()), 0);
        }
        EXPECT_FALSE(output.complete());
    }
}

TEST(OutputFile, ThereIsNoStreamOfAFileThatIsNotOpen) {
    const ulk_test::temporary_folder_t folder;
    output_file output(folder.path("missing/file").c_str(), fifo_t::refuse);
    EXPECT_EQ(output.stream(), nullptr);
    EXPECT_FALSE(output.complete());
}

TEST(OutputFile, AFailureKeepsWhatWasWrittenBefore) {
    const ulk_test::temporary_folder_t folder;
    output_file output(folder.path("file").c_str(), fifo_t::refuse);
    output.write("abc", 3);
    output.fail();
    output.write("def", 3);
    EXPECT_FALSE(output.complete());
    EXPECT_EQ(ulk_test::read_file(folder.path("file")), "abc");
}
