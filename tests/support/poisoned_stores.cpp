#include "support/poisoned_stores.h"

#include <cstdint>
#include <vector>

namespace ulk_test {

namespace {

PFNGLBUFFERDATAPROC library_function = nullptr;

void GLAPIENTRY poisoned_buffer_data(GLenum target, GLsizeiptr size, const void* data, GLenum usage) {
    const std::vector<std::uint32_t> ones(static_cast<std::size_t>(size) / 4 + 1, 1);
    library_function(target, size, data != nullptr ? data : ones.data(), usage);
}

}  // namespace

poisoned_stores::poisoned_stores() : original(__glewBufferData) {
    library_function = original;
    __glewBufferData = poisoned_buffer_data;
}

poisoned_stores::~poisoned_stores() {
    __glewBufferData = original;
}

}  // namespace ulk_test
