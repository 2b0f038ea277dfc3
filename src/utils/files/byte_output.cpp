#include "utils/files/byte_output.h"

#include <cstring>

namespace libutils {

void byte_output::write(const void* data, std::size_t size) {
    if (size > capacity) {
        flush();
        file.write(data, size);
    } else if (size != 0) {
        std::memcpy(append(size), data, size);
    }
}

bool byte_output::complete() {
    flush();
    return file.complete();
}

void byte_output::flush() {
    file.write(buffer.get(), used);
    used = 0;
}

}  // namespace libutils
