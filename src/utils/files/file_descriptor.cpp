#include "utils/files/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace ulk3d {

bool file_descriptor::close() {
    const int closing = std::exchange(descriptor, -1);
    // An interrupted close has closed the file on Linux: there is nothing to repeat.
    return closing < 0 || ::close(closing) == 0 || errno == EINTR;
}

file_descriptor open_plain_file(const char* path, std::uint64_t& size) {
    // Without O_NONBLOCK the open of a FIFO would wait for a writer; it has no effect on plain files.
    file_descriptor file(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.is_open() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    size = static_cast<std::uint64_t>(status.st_size);
    return file;
}

file_descriptor create_file(const char* path) {
    constexpr mode_t rights = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    file_descriptor file(::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, rights));
    // A FIFO that has a reader may be waited for: the reader takes the bytes at its own pace.
    if (file.is_open())
        ::fcntl(file.get(), F_SETFL, ::fcntl(file.get(), F_GETFL) & ~O_NONBLOCK);
    return file;
}

std::size_t read_some(const file_descriptor& file, char* target, std::size_t size) {
    for (;;) {
        const ssize_t got = ::read(file.get(), target, size);
        if (got >= 0)
            return static_cast<std::size_t>(got);
        if (errno != EINTR)
            return 0;
    }
}

namespace {

/// Writes all bytes by a call that takes a part of them: `write_part(data, size)`, with the result of
/// ::write.
template <typename WritePart>
bool write_parts(const char* data, std::size_t size, WritePart&& write_part) {
    while (size > 0) {
        const ssize_t taken = write_part(data, size);
        if (taken < 0 && errno == EINTR)
            continue;
        if (taken <= 0)
            return false;
        data += taken;
        size -= static_cast<std::size_t>(taken);
    }
    return true;
}

}  // namespace

bool write_all(const file_descriptor& file, const char* data, std::size_t size) {
    return write_parts(data, size, [&](const char* part, std::size_t part_size) {
        return ::write(file.get(), part, part_size);
    });
}

bool write_all_at(const file_descriptor& file, const void* data, std::size_t size, std::uint64_t offset) {
    const char* const first = static_cast<const char*>(data);
    return write_parts(first, size, [&](const char* part, std::size_t part_size) {
        return ::pwrite(file.get(), part, part_size, static_cast<off_t>(offset) + (part - first));
    });
}

}  // namespace ulk3d
