#include "render/shaders/shaders.h"

#include <cstring>

#include "render/gl/shader.h"
#include "render/gl/shader_file.h"

namespace ulk3d {

bool compile_source(shader_t& shader, std::uint32_t type, const shader_source_t& source,
                    const char* base_directory) {
    shader_text_t file;
    if (load_shader_file(file, source.name, base_directory))
        return shader.allocate(type, file.empty() ? "" : file.begin(), static_cast<GLint>(file.size()));
    return shader.allocate(type, source.text, static_cast<GLint>(std::strlen(source.text)));
}

}  // namespace ulk3d
