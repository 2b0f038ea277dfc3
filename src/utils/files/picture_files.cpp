#include "utils/files/picture_files.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iostream>

#include "utils/files/file_descriptor.h"

namespace libutils {

bool is_plain_file(const char* path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

namespace {

/// The bytes that reads give, which may be fewer than the file's size, as in a file that the kernel makes up.
bool read_whole(const char* path, image_window_t& bytes) {
    std::uint64_t size = 0;
    const file_descriptor file = open_plain_file(path, size);
    if (!file.is_open() || !bytes.try_allocate(size))
        return false;
    std::uint64_t filled = 0;
    ssize_t got = 1;
    while (filled < size && got != 0) {
        got = ::read(file.get(), bytes.begin() + filled, size - filled);
        if (got < 0 && errno != EINTR)
            return false;
        filled += static_cast<std::uint64_t>(std::max<ssize_t>(got, 0));
    }
    return bytes.reallocate(filled);
}

}  // namespace

bool map_picture(const char* path, image_window_t& bytes) {
    if (!is_plain_file(path)) {
        std::cerr << path << ": file stat failed.\n";
        return false;
    }
    if (!bytes.try_allocate(0, path, 0) && !read_whole(path, bytes)) {
        std::cerr << path << ": file load failed.\n";
        return false;
    }
    return true;
}

}  // namespace libutils
