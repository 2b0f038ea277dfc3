#include "tool/foreign/library/reader_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>

#include "utils/memory/free_memory.h"
#include "utils/memory/memory_budget.h"
#include "utils/memory/sizes.h"

namespace ulktool {

using libutils::size_product;
using libutils::size_sum;

namespace {

/// What a file is granted: many times what the library takes for usual ones, such as six bytes for each byte
/// of an OBJ file and four of a binary PLY file, as some formats are packed.
constexpr std::uint64_t bytes_at_first = std::uint64_t{64} << 20;
constexpr std::uint64_t bytes_per_file_byte = 100;
constexpr rlim_t seconds_at_first = 5;
constexpr std::uint64_t file_bytes_per_second = std::uint64_t{256} << 10;

/// What the process could take besides when it began, and what it has.
struct grants_t {
    std::uint64_t file_bytes = 0;
    std::uint64_t address_space = 0;
    std::uint64_t budget = 0;
};
grants_t grants;

/// The bytes of this process's address space.
std::uint64_t address_space() {
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

/// Limits above that which the process has been given fail and change nothing.
void set_limit(decltype(RLIMIT_AS) what, std::uint64_t value) {
    struct rlimit limit {};
    if (::getrlimit(what, &limit) != 0)
        return;
    limit.rlim_cur = std::min<rlim_t>(value, limit.rlim_max);
    static_cast<void>(::setrlimit(what, &limit));
}

/// The library, and the C++ runtime when it ends a process, print to the standard streams.
void silence() {
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(nothing, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
}

void prepare_child(pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(1);
    ::prctl(PR_SET_DUMPABLE, 0);
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGPIPE, SIGXCPU})
        ::signal(number, SIG_DFL);
    silence();
    grants = {.file_bytes = 0, .address_space = address_space(), .budget = libutils::memory_budget()};
    reader_process_t::allow_for(0);
}

}  // namespace

void process_output_t::write(const void* data, std::size_t size) {
    const char* bytes = static_cast<const char*>(data);
    while (size > 0) {
        const std::size_t part = std::min(size, capacity - used);
        std::memcpy(buffer.get() + used, bytes, part);
        used += part;
        bytes += part;
        size -= part;
        if (used == capacity)
            flush();
    }
}

void process_output_t::flush() {
    for (std::size_t done = 0; done < used;) {
        const ssize_t written = ::write(pipe, buffer.get() + done, used - done);
        if (written < 0 && errno != EINTR)
            ::_exit(1);
        done += static_cast<std::size_t>(std::max<ssize_t>(written, 0));
    }
    used = 0;
}

reader_process_t::reader_process_t(const std::function<void(process_output_t&)>& work) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return;
    pipe = libutils::file_descriptor(ends[0]);
    const libutils::file_descriptor written(ends[1]);
    const pid_t parent = ::getpid();
    process = ::fork();
    if (process != 0)
        return;
    // No destructor of what the copy has of its parent, such as a GL context, may run here.
    try {
        prepare_child(parent);
        process_output_t output(written.get());
        work(output);
        output.flush();
        ::_exit(0);
    } catch (...) {
        ::_exit(1);
    }
}

reader_process_t::~reader_process_t() {
    if (process <= 0)
        return;
    ::kill(process, SIGKILL);
    static_cast<void>(wait());
}

bool reader_process_t::read(void* data, std::size_t size) {
    char* const bytes = static_cast<char*>(data);
    for (std::size_t done = 0; done < size;) {
        const std::size_t got = read_some(pipe, bytes + done, size - done);
        if (got == 0)
            return false;
        done += got;
    }
    return true;
}

int reader_process_t::wait() {
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR)
        continue;
    process = -1;
    return status;
}

bool reader_process_t::took_too_long() {
    if (process <= 0)
        return false;
    static_cast<void>(pipe.close());
    const int status = wait();
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU;
}

void reader_process_t::allow_for(std::uint64_t file_bytes) {
    grants.file_bytes = size_sum(grants.file_bytes, file_bytes);
    const std::uint64_t memory = std::min(
        grants.budget, size_sum(bytes_at_first, size_product(grants.file_bytes, bytes_per_file_byte)));
    set_limit(RLIMIT_AS, size_sum(grants.address_space, memory));
    set_limit(RLIMIT_CPU, seconds_at_first + grants.file_bytes / file_bytes_per_second);
}

}  // namespace ulktool
