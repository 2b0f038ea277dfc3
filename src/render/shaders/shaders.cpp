#include "render/shaders/shaders.h"

#include <cstdlib>
#include <cstring>
#include <iostream>

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

void compile_or_end(shader_t& shader, std::uint32_t type, const shader_source_t& source,
                    const char* base_directory, const char* words) {
    if (!compile_source(shader, type, source, base_directory))
        end_without_program(std::string(source.name) + words, shader.compile_log());
}

void end_without_program(const std::string& words, const std::string& log) {
    std::cerr << words << std::endl;
    if (!log.empty())
        std::cerr << log << std::flush;
    std::exit(EXIT_FAILURE);
}

}  // namespace ulk3d
