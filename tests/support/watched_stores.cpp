#include "support/watched_stores.h"

#include <utility>

namespace ulk_test {

namespace {

PFNGLBUFFERDATAPROC library_function = nullptr;
std::function<bool(GLsizeiptr)> watcher;

void GLAPIENTRY watched_buffer_data(GLenum target, GLsizeiptr size, const void* data, GLenum usage) {
    if (watcher(size))
        library_function(target, size, data, usage);
}

}  // namespace

watched_stores::watched_stores(std::function<bool(GLsizeiptr)> watch) : original(__glewBufferData) {
    library_function = original;
    watcher = std::move(watch);
    __glewBufferData = watched_buffer_data;
}

watched_stores::~watched_stores() {
    __glewBufferData = original;
    watcher = nullptr;
}

}  // namespace ulk_test
