#include "tool/foreign/library/reader_process.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <new>
#include <vector>

#include "support/pictures.h"

namespace {

using ulktool::process_output_t;
using ulktool::reader_process_t;

void send(process_output_t& output, int value) {
    output.write(&value, sizeof value);
}

TEST(ReaderProcess, SendsWhatTheWorkHasWritten) {
    std::vector<int> sent(300000), got(sent.size());
    for (std::size_t i = 0; i < sent.size(); ++i)
        sent[i] = static_cast<int>(i);
    reader_process_t process(
        [&](process_output_t& output) { output.write(sent.data(), sent.size() * sizeof sent[0]); });
    ASSERT_TRUE(process.read(got.data(), got.size() * sizeof got[0]));
    EXPECT_EQ(got, sent);
    char more = 0;
    EXPECT_FALSE(process.read(&more, 1));
    EXPECT_FALSE(process.took_too_long());
}

TEST(ReaderProcess, ACrashEndsWhatItSends) {
    reader_process_t process([](process_output_t& output) {
        send(output, 1);
        output.flush();
        ::raise(SIGSEGV);
    });
    int value = 0;
    EXPECT_TRUE(process.read(&value, sizeof value));
    EXPECT_FALSE(process.read(&value, sizeof value));
    EXPECT_FALSE(process.took_too_long());
}

TEST(ReaderProcess, AnExceptionEndsItToo) {
    reader_process_t process([](process_output_t&) { throw std::bad_alloc(); });
    int value = 0;
    EXPECT_FALSE(process.read(&value, sizeof value));
}

TEST(ReaderProcess, TheEndOfItsTimeIsKnown) {
    reader_process_t process([](process_output_t&) { ::raise(SIGXCPU); });
    int value = 0;
    EXPECT_FALSE(process.read(&value, sizeof value));
    EXPECT_TRUE(process.took_too_long());
}

TEST(ReaderProcess, EndsWithItsOwnerWhileItWorks) {
    const reader_process_t process([](process_output_t& output) {
        for (int i = 0;; ++i)
            send(output, i);
    });
}

TEST(ReaderProcess, PrintsNothing) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
    const int stream = ::dup(STDERR_FILENO);
    ::dup2(::fileno(file.get()), STDERR_FILENO);
    {
        reader_process_t process([](process_output_t&) {
            std::cerr << "a message of the library" << std::endl;
            std::abort();
        });
        int value = 0;
        EXPECT_FALSE(process.read(&value, sizeof value));
    }
    ::dup2(stream, STDERR_FILENO);
    ::close(stream);
    EXPECT_EQ(std::ftell(file.get()), 0);
    std::fseek(file.get(), 0, SEEK_END);
    EXPECT_EQ(std::ftell(file.get()), 0);
}

TEST(ReaderProcess, MemoryIsGrantedByTheSizeOfFiles) {
    if (!ulk_test::no_more_pages_t::is_possible())
        GTEST_SKIP() << "the sanitizer ends a process that has no memory";
    const auto takes = [](std::uint64_t file_bytes, std::size_t bytes) {
        reader_process_t process([=](process_output_t& output) {
            reader_process_t::allow_for(file_bytes);
            const std::vector<char> memory(bytes);
            send(output, memory.back());
        });
        int value = 0;
        return process.read(&value, sizeof value);
    };
    constexpr std::size_t mebibyte = 1 << 20;
    EXPECT_TRUE(takes(0, 30 * mebibyte));
    EXPECT_FALSE(takes(0, 100 * mebibyte));
    EXPECT_TRUE(takes(mebibyte, 100 * mebibyte));
}

}  // namespace
