#include "utils/memory/alloc_mmap_win.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <limits>
#include <utility>

#include "utils/memory/mapped_files.h"

namespace libutils {
namespace {

/// The size of anonymous memory is a number of 32 bits.
constexpr std::uint64_t most_memory = std::numeric_limits<std::uint32_t>::max();

constexpr const char* not_opened = ": file open failed.";
constexpr const char* not_mapped = ": create file mapping failed.";

last_message_t show_last_message = nullptr;

/// Ends the process without running destructors: what is on the stack above is in no state to be torn down.
[[noreturn]] void fail(const char* filename, const char* what, int error) {
    std::array<char, 256> message{};
    std::snprintf(message.data(), message.size(), "alloc_mmap_win::allocate() failed with error %d: %s",
                  error, std::strerror(error));
    std::cerr << (filename != nullptr ? filename : "") << what << '\n' << message.data() << '\n';
    std::cerr.flush();
    std::cout.flush();
    std::fflush(nullptr);
    // What shows the message may itself run out of memory.
    if (const last_message_t show = std::exchange(show_last_message, nullptr))
        show(message.data());
    std::_Exit(error);
}

/// An open file, closed at the end of the scope: a mapping needs its file no longer than it takes to make it,
/// and a scene may hold more pictures than a process may have open files.
class open_file {
  public:
    open_file(const char* filename, bool for_writing)
        : handle(open(filename, (for_writing ? O_RDWR : O_RDONLY) | O_CLOEXEC | O_NONBLOCK)) {}
    ~open_file() {
        if (handle >= 0)
            close(handle);
    }
    open_file(const open_file&) = delete;
    open_file& operator=(const open_file&) = delete;

    int descriptor() const { return handle; }

  private:
    int handle;
};

}  // namespace

/// Why there is no block: what to say of the file, and the system's error. None without an error.
struct alloc_mmap_win::failure_t {
    const char* what = nullptr;
    int error = 0;
};

last_message_t show_before_the_end(last_message_t show) {
    return std::exchange(show_last_message, show);
}

int alloc_mmap_win::protection() const {
    return writable() ? PROT_READ | PROT_WRITE : PROT_READ;
}

bool alloc_mmap_win::map_memory(std::uint64_t byte_count) {
    // The system maps no less than one byte.
    mapping_size = std::max<std::uint64_t>(byte_count, 1);
    void* const place = mmap(nullptr, mapping_size, protection(), MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    mapping = place != MAP_FAILED ? static_cast<char*>(place) : nullptr;
    return mapping != nullptr;
}

bool alloc_mmap_win::map_file(std::uint64_t byte_count, const char* filename, failure_t& failure) {
    const open_file file(filename, writable());
    if (file.descriptor() < 0) {
        failure = {not_opened, errno};
        return false;
    }
    struct stat status {};
    if (fstat(file.descriptor(), &status) != 0)
        return false;
    if (!S_ISREG(status.st_mode)) {
        failure = {not_opened, S_ISDIR(status.st_mode) ? EISDIR : ENODEV};
        return false;
    }

    make_room_to_watch();
    const auto file_size = static_cast<std::uint64_t>(status.st_size);
    size = byte_count != 0 ? byte_count : file_size;
    // Memory first and the file over its beginning: so there is memory, and zeros, behind the end of the
    // file.
    const bool mapped = map_memory(std::max(size, file_size)) &&
                        (file_size == 0 || mmap(mapping, file_size, protection(), MAP_PRIVATE | MAP_FIXED,
                                                file.descriptor(), 0) != MAP_FAILED);
    if (!mapped) {
        failure = {not_mapped, errno};
        deallocate(nullptr);
        return false;
    }
    watch_mapping(mapping, mapping_size, protection());
    return true;
}

void* alloc_mmap_win::view_at(std::uint64_t view_size, std::uint64_t offset) {
    if (offset > mapping_size || view_size > mapping_size - offset)
        return nullptr;
    size = view_size;
    return mapping + offset;
}

void* alloc_mmap_win::allocate(std::uint64_t& wanted, const char* filename, int mode, std::uint64_t offset) {
    failure_t failure;
    void* const view = make_view(wanted, filename, mode, offset, failure);
    if (failure.error != 0)
        fail(filename, failure.what, failure.error);
    return view;
}

void* alloc_mmap_win::try_allocate(std::uint64_t& wanted, const char* filename, int mode,
                                   std::uint64_t offset) {
    failure_t failure;
    return make_view(wanted, filename, mode, offset, failure);
}

void* alloc_mmap_win::make_view(std::uint64_t& wanted, const char* filename, int mode, std::uint64_t offset,
                                failure_t& failure) {
    if (mode != 0 && mode != 1)
        return nullptr;
    access = mode == 1 ? access_t::write : access_t::read;
    anonymous = filename == nullptr;
    if (anonymous) {
        if (wanted > most_memory)
            return nullptr;
        if (!map_memory(wanted)) {
            failure = {not_mapped, errno};
            return nullptr;
        }
        size = wanted;
        return mapping;
    }
    if (!map_file(wanted, filename, failure))
        return nullptr;
    wanted = size;
    void* const view = view_at(size, offset);
    if (view == nullptr)
        deallocate(nullptr);
    return view;
}

void* alloc_mmap_win::reallocate(void* /*view*/, std::uint64_t new_size, std::uint64_t offset) {
    if (anonymous)
        return view_at(new_size, 0);
    // Private pages that were written to are given up, so that the file shows again.
    if (writable())
        madvise(mapping, mapping_size, MADV_DONTNEED);
    return view_at(new_size, offset);
}

void alloc_mmap_win::deallocate(void* /*view*/) {
    if (mapping != nullptr) {
        if (!anonymous)
            unwatch_mapping(mapping);
        munmap(mapping, mapping_size);
    }
    mapping = nullptr;
    mapping_size = 0;
}

}  // namespace libutils
