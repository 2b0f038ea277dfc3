#include "utils/memory/mapped_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>

#include "support/scene_text.h"
#include "unit/utils/memory/shared_vectors.h"

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

int calls = 0;

void count_call(int /*signal*/) {
    ++calls;
}
void count_call_with_information(int signal, siginfo_t* info, void* context) {
    calls += signal == SIGBUS && info->si_code <= 0 && context != nullptr ? 1 : 0;
}

/// What SIGBUS does before the first mapping is watched.
struct former_row_t {
    const char* name;
    void (*handler)(int);
    void (*handler_with_information)(int, siginfo_t*, void*);
    int calls;
};

class MappedFileDeathTestOfFormerAction : public MappedFile,
                                          public testing::WithParamInterface<former_row_t> {};

TEST_P(MappedFileDeathTestOfFormerAction, OutlivesASignalThatWasSent) {
    // A process that has watched nothing before.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            // A function that is called for a fault would be called without end.
            alarm(20);
            struct sigaction action {};
            if (GetParam().handler_with_information != nullptr) {
                action.sa_sigaction = GetParam().handler_with_information;
                action.sa_flags = SA_SIGINFO;
            } else {
                action.sa_handler = GetParam().handler;
            }
            sigaction(SIGBUS, &action, nullptr);
            window_t window;
            bool right = window.allocate(0, path.c_str(), 0);
            raise(SIGBUS);
            raise(SIGBUS);
            right = right && calls == GetParam().calls;
            std::filesystem::resize_file(path, 0);
            right = right && window.at(page) == 0;
            std::filesystem::remove_all(folder.path(""));
            _exit(right ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(Actions, MappedFileDeathTestOfFormerAction,
                         testing::Values(former_row_t{"Ignored", SIG_IGN, nullptr, 0},
                                         former_row_t{"Function", count_call, nullptr, 2},
                                         former_row_t{"FunctionWithInformation", nullptr,
                                                      count_call_with_information, 2}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace libutils
