#include "support/failing_stores.h"

namespace ulk_test {

namespace {

PFNGLBUFFERDATAPROC library_function = nullptr;
int calls_left = 0;

void GLAPIENTRY counted_buffer_data(GLenum target, GLsizeiptr size, const void* data, GLenum usage) {
    if (calls_left > 0) {
        --calls_left;
        library_function(target, size, data, usage);
    }
}

}  // namespace

failing_stores::failing_stores(int first_failing) : original(__glewBufferData) {
    library_function = original;
    calls_left = first_failing - 1;
    __glewBufferData = counted_buffer_data;
}

failing_stores::~failing_stores() {
    __glewBufferData = original;
}

}  // namespace ulk_test
