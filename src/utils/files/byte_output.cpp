#include "utils/files/byte_output.h"

namespace ulk3d {

byte_output::byte_output(const char* path) : file(create_file(path)), broken(!file.is_open()) {}

void byte_output::overwrite(std::uint64_t offset, const void* data, std::size_t size) {
    flush();
    if (!broken)
        broken = !write_all_at(file, data, size, offset);
}

bool byte_output::close() {
    flush();
    if (!file.close())
        broken = true;
    return !broken;
}

void byte_output::flush() {
    if (!broken)
        broken = !write_all(file, buffer.get(), used);
    used = 0;
}

}  // namespace ulk3d
