#include "utils/memory/alloc_new.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <fstream>

namespace libutils {

void* alloc_new::allocate(std::uint64_t& wanted, const char* filename, int /*mode*/, std::uint64_t offset) {
    if (filename != nullptr && wanted == 0) {
        struct stat status {};
        if (stat(filename, &status) != 0)
            return nullptr;
        wanted = static_cast<std::uint64_t>(status.st_size);
    }
    char* const block = new char[wanted]();
    size = wanted;
    if (filename != nullptr) {
        std::ifstream file(filename, std::ios::binary);
        file.seekg(static_cast<std::streamoff>(offset));
        file.read(block, static_cast<std::streamsize>(wanted));
    }
    return block;
}

void* alloc_new::reallocate(void* block, std::uint64_t new_size, std::uint64_t /*offset*/) {
    char* const moved = new char[new_size]();
    if (block != nullptr)
        std::memcpy(moved, block, std::min(size, new_size));
    deallocate(block);
    size = new_size;
    return moved;
}

void alloc_new::deallocate(void* block) {
    delete[] static_cast<char*>(block);
}

}  // namespace libutils
