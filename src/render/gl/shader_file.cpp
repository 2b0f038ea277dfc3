#include "render/gl/shader_file.h"

#include <sys/stat.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace ulk3d {

namespace {

bool is_plain_file(const std::string& path, std::size_t& size) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    size = static_cast<std::size_t>(status.st_size);
    return true;
}

bool read_bytes(const std::string& path, std::size_t size, shader_text_t& text) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file)
        return false;
    return text.try_allocate(size) && (size == 0 || std::fread(text.begin(), 1, size, file.get()) == size);
}

}  // namespace

bool load_shader_file(shader_text_t& text, const char* name, const char* base_directory) {
    std::string path = name;
    std::size_t size = 0;
    if (!is_plain_file(path, size)) {
        if (base_directory == nullptr)
            return false;
        path = std::string(base_directory) + name;
        if (!is_plain_file(path, size))
            return false;
    }
    return read_bytes(path, size, text);
}

}  // namespace ulk3d
