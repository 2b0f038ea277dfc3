#include "tool/scenes/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <memory>
#include <vector>

#include "tool/command_line/command.h"

namespace ulktool {

using libutils::file_descriptor;

namespace {

struct close_stream_t {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

using stream_pointer_t = std::unique_ptr<std::FILE, close_stream_t>;

/// A file without a name with all that the standard input stream has; null when that can not be made.
stream_pointer_t keep_standard_input() {
    stream_pointer_t kept(std::tmpfile());
    file_descriptor input(::dup(STDIN_FILENO));
    if (kept == nullptr || !input.is_open())
        return nullptr;
    std::vector<char> bytes(std::size_t{64} * 1024);
    while (const std::size_t count = read_some(input, bytes.data(), bytes.size()))
        if (std::fwrite(bytes.data(), 1, count, kept.get()) != count)
            return nullptr;
    if (input.has_read_error() || std::fflush(kept.get()) != 0)
        return nullptr;
    return kept;
}

void end_quietly(int) {
    ::_exit(exit_failed);
}

}  // namespace

std::string standard_input_path() {
    static const stream_pointer_t kept = keep_standard_input();
    return kept != nullptr ? "/proc/self/fd/" + std::to_string(fileno(kept.get())) : std::string();
}

file_descriptor standard_output() {
    std::cout.flush();
    return file_descriptor(::dup(STDOUT_FILENO));
}

void prepare_standard_streams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest number that is free is taken, which is this one. A stream that is opened the wrong way
        // round fails when it is used.
        const int wrong_way = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (::fcntl(descriptor, F_GETFD) == -1 && ::open("/dev/null", wrong_way) != descriptor)
            ::_exit(exit_failed);
    }
    struct sigaction action {};
    action.sa_handler = end_quietly;
    ::sigaction(SIGPIPE, &action, nullptr);
}

bool finish_standard_output() {
    std::cout.flush();
    if (std::cout.good() && std::fflush(stdout) == 0)
        return true;
    std::cerr << "ulktool: the standard output stream could not be written" << std::endl;
    return false;
}

}  // namespace ulktool
