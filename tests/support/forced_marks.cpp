#include "support/forced_marks.h"

#include <GL/glew.h>
#include <dlfcn.h>

#include <iostream>

namespace {

bool is_forced = false;

}  // namespace

/// Takes the place of the GL library's function of this name.
extern "C" GLenum GLAPIENTRY glGetError() {
    static const auto library_function =
        reinterpret_cast<GLenum(GLAPIENTRY*)()>(dlsym(RTLD_NEXT, "glGetError"));
    return is_forced ? static_cast<GLenum>(GL_INVALID_ENUM) : library_function();
}

namespace ulk_test {

forced_marks::forced_marks() : errors(std::cerr) {
    is_forced = true;
}

forced_marks::~forced_marks() {
    is_forced = false;
}

std::vector<std::string> forced_marks::beginning_with(const std::string& prefix) const {
    std::vector<std::string> marks;
    std::istringstream lines(errors.text());
    for (std::string line; std::getline(lines, line);) {
        const std::size_t end = line.rfind(": Error 1280: ");
        if (end != std::string::npos && line.starts_with(prefix))
            marks.push_back(line.substr(0, end));
    }
    return marks;
}

}  // namespace ulk_test
