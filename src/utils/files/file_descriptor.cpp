#include "utils/files/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace libutils {

bool file_descriptor::close() {
    const int closing = std::exchange(descriptor, -1);
    // On Linux an interrupted close has still closed the file and must not be repeated.
    return closing < 0 || ::close(closing) == 0 || errno == EINTR;
}

file_descriptor open_plain_file(const char* path, std::uint64_t& size) {
    // Without O_NONBLOCK opening a FIFO would wait for a writer; plain files are not affected.
    file_descriptor file(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file.is_open() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    size = static_cast<std::uint64_t>(status.st_size);
    return file;
}

std::size_t read_some(file_descriptor& file, char* target, std::size_t size) {
    for (;;) {
        const ssize_t got = ::read(file.get(), target, size);
        if (got >= 0)
            return static_cast<std::size_t>(got);
        if (errno != EINTR) {
            file.note_read_error();
            return 0;
        }
    }
}

}  // namespace libutils
