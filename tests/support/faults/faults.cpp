#include "support/faults/faults.h"

#include <GL/glew.h>

#include "support/faults/active_faults.h"

namespace ulk_test {

namespace {

thread_local faults_t* active = nullptr;
PFNGLBUFFERDATAPROC library_buffer_data = nullptr;
PFNGLMAPBUFFERRANGEPROC library_map_buffer_range = nullptr;
GLenum pending_error = GL_NO_ERROR;

/// As drivers do it: the old store is given up first.
void GLAPIENTRY buffer_data(GLenum target, GLsizeiptr size, const void* data, GLenum usage) {
    if (is_to_fail(fallible_t::buffer_store)) {
        library_buffer_data(target, 0, nullptr, usage);
        pending_error = GL_OUT_OF_MEMORY;
        return;
    }
    library_buffer_data(target, size, data, usage);
}

void* GLAPIENTRY map_buffer_range(GLenum target, GLintptr offset, GLsizeiptr length, GLbitfield access) {
    return is_to_fail(fallible_t::buffer_mapping) ? nullptr
                                                  : library_map_buffer_range(target, offset, length, access);
}

}  // namespace

faults_t::faults_t(const fault_t& planned, std::uint64_t first_failing)
    : fault(planned), failing(first_failing) {
    library_buffer_data = __glewBufferData;
    library_map_buffer_range = __glewMapBufferRange;
    __glewBufferData = buffer_data;
    __glewMapBufferRange = map_buffer_range;
    active = this;
}

faults_t::~faults_t() {
    active = nullptr;
    __glewBufferData = library_buffer_data;
    __glewMapBufferRange = library_map_buffer_range;
}

bool faults_t::next_fails(fallible_t operation) {
    if (operation != fault.operation)
        return false;
    ++operations;
    const bool fails = failing != 0 && (operations == failing || (fault.is_lasting && operations > failing));
    struck = struck || fails;
    return fails;
}

faults_t* active_faults() {
    return active;
}

bool is_to_fail(fallible_t operation) {
    return active != nullptr && active->next_fails(operation);
}

std::vector<std::uint64_t> failing_numbers(std::uint64_t count, std::uint64_t dense, std::uint64_t sparse) {
    std::vector<std::uint64_t> numbers;
    const std::uint64_t stride = count > dense ? (count - dense) / sparse + 1 : 1;
    for (std::uint64_t n = 1; n < count; n += n < dense ? 1 : stride)
        numbers.push_back(n);
    if (count > 0)
        numbers.push_back(count);
    return numbers;
}

}  // namespace ulk_test

extern "C" {

GLenum __real_glGetError();
GLenum __wrap_glGetError() {
    if (ulk_test::pending_error == GL_NO_ERROR)
        return __real_glGetError();
    const GLenum error = ulk_test::pending_error;
    ulk_test::pending_error = GL_NO_ERROR;
    return error;
}
}
