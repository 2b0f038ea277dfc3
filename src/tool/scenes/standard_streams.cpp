#include "tool/scenes/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <memory>

#include "tool/command_line/command.h"

namespace ulktool {

using libutils::file_descriptor;

namespace {

struct close_stream_t {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

void end_quietly(int) {
    ::_exit(exit_failed);
}

}  // namespace

file_descriptor read_standard_input(std::uint64_t& size) {
    const std::unique_ptr<std::FILE, close_stream_t> kept(std::tmpfile());
    file_descriptor input(::dup(STDIN_FILENO));
    if (kept == nullptr || !input.is_open())
        return {};
    std::array<char, std::size_t{64} * 1024> bytes;
    size = 0;
    while (const std::size_t count = read_some(input, bytes.data(), bytes.size())) {
        if (std::fwrite(bytes.data(), 1, count, kept.get()) != count)
            return {};
        size += count;
    }
    if (input.has_read_error() || std::fflush(kept.get()) != 0 || std::fseek(kept.get(), 0, SEEK_SET) != 0)
        return {};
    return file_descriptor(::dup(fileno(kept.get())));
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
