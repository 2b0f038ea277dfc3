#include "utils/files/picture_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>

namespace libutils {

bool is_plain_file(const char* path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

bool map_picture(const char* path, image_window_t& bytes) {
    if (!is_plain_file(path)) {
        std::cerr << path << ": file stat failed.\n";
        return false;
    }
    // A mapping that fails ends the process, so permission to read is checked beforehand.
    if (faccessat(AT_FDCWD, path, R_OK, AT_EACCESS) != 0 || !bytes.allocate(0, path, 0)) {
        std::cerr << path << ": file load failed.\n";
        return false;
    }
    return true;
}

}  // namespace libutils
