#include "support/memory_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>

namespace ulk_test {

memory_file_t::memory_file_t(const char* label) : descriptor(memfd_create(label, MFD_CLOEXEC)) {
    if (descriptor < 0)
        std::abort();
    name = "/proc/self/fd/" + std::to_string(descriptor);
}

memory_file_t::~memory_file_t() {
    close(descriptor);
}

void memory_file_t::write(std::string_view bytes) const {
    if (ftruncate(descriptor, 0) != 0 ||
        pwrite(descriptor, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        std::abort();
}

std::string memory_file_t::read() const {
    std::string bytes(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)), '\0');
    if (pread(descriptor, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        std::abort();
    return bytes;
}

}  // namespace ulk_test
