#include "support/forced_marks.h"

#include <GL/glew.h>
#include <dlfcn.h>

#include <iostream>

namespace {

bool is_forced = false;
int fetched = 0;

}  // namespace

/// Takes the place of the GL library's function of this name.
extern "C" GLenum GLAPIENTRY glGetError() {
    static const auto library_function =
        reinterpret_cast<GLenum(GLAPIENTRY*)()>(dlsym(RTLD_NEXT, "glGetError"));
    if (!is_forced)
        return library_function();
    ++fetched;
    return GL_INVALID_ENUM;
}

namespace ulk_test {

forced_marks::forced_marks() : errors(std::cerr) {
    is_forced = true;
    fetched = 0;
}

forced_marks::~forced_marks() {
    is_forced = false;
}

int forced_marks::fetched_errors() const {
    return fetched;
}

std::vector<std::string> forced_marks::beginning_with(const std::string& prefix) const {
    std::vector<std::string> marks;
    std::istringstream lines(errors.text());
    for (std::string line; std::getline(lines, line);) {
        const std::string mark = forced_mark_of(line);
        if (!mark.empty() && mark.starts_with(prefix))
            marks.push_back(mark);
    }
    return marks;
}

std::string forced_mark_of(const std::string& line) {
    const std::size_t end = line.rfind(": Error 1280: ");
    return end == std::string::npos ? std::string() : line.substr(0, end);
}

}  // namespace ulk_test
