#include "render/gl/element_array.h"

#include <algorithm>
#include <iostream>
#include <string>

#include "gltextures/gr_check_error.h"
#include "render/gl/mapped_span.h"

namespace ulk3d {

using libgr::grCheckError;

namespace {

constexpr std::int64_t index_bytes = sizeof(std::uint32_t);

}  // namespace

const record_store_t::kind_t element_array_t::element_kind = {
    .target = GL_ELEMENT_ARRAY_BUFFER,
    .no_buffer = "element object is not allocated.",
    .no_pointer = "element pointer is NULL.",
};

element_array_t::element_array_t() : record_store_t(element_kind, index_bytes) {}

bool element_array_t::allocate(std::int64_t element_count) {
    const auto needed = bytes_of(element_count);
    if (!needed)
        return false;
    // Without a buffer the count is that of an `extend`, which has made no store.
    const bool is_unchanged = element_count == elements && (has_buffer() || element_count == 0);
    make_buffer();
    if (is_unchanged)
        return true;
    const std::int64_t asked_size = std::max(*needed, buffer_size);

    grCheckError("element_array_t::allocate(1)");
    buffer->bind();
    grCheckError("element_array_t::allocate(2)");
    const bool is_granted = take_sizes(element_count, *needed);
    if (grCheckError("element_array_t::allocate(3)")) {
        std::cerr << "elements: " << std::to_string(element_count) << std::endl;
        std::cerr << "buffer_size: " << std::to_string(asked_size) << std::endl;
    }
    buffer->unbind();
    grCheckError("element_array_t::allocate(end)");
    return is_granted;
}

bool element_array_t::extend(std::int64_t element_count) {
    return take_count(element_count);
}

bool element_array_t::fits(std::int64_t element_count) const {
    const auto needed = bytes_of(element_count);
    return needed && buffer_size > *needed;
}

void element_array_t::draw(const vertex_array_ref& vertex_array, GLenum mode) const {
    if (!buffer || !vertex_array)
        return;
    const bool draws_nothing = buffer->awaits_words(restart_mark);
    if (!draws_nothing && (!vertex_array->provide() || !provide()))
        return;
    // Never past the store: what GL reads there is undefined.
    const GLsizei count = to_draw_count(bytes_in_use() / index_bytes);
    grCheckError("element_array_t::draw(0)");
    vertex_array->bind();
    grCheckError("element_array_t::draw(1)");
    buffer->bind();
    grCheckError("element_array_t::draw(2)");
    if (!draws_nothing)
        glDrawElements(mode, count, GL_UNSIGNED_INT, nullptr);
    grCheckError("element_array_t::draw(3)");
    buffer->unbind();
    grCheckError("element_array_t::draw(4)");
    vertex_array->unbind();
    grCheckError("element_array_t::draw(end)");
}

void element_array_t::release() {
    if (buffer)
        drop_buffer();
}

std::ostream& operator<<(std::ostream& stream, const element_array_t& elements) {
    if (elements.element_count() > 0) {
        const const_index_span indices(elements);
        const char* separator = "";
        for (const std::uint32_t index : indices) {
            // Not through the stream's own operator, which would group digits in some locales.
            stream << separator << (index == restart_mark ? "-1" : std::to_string(index));
            separator = ", ";
        }
    }
    return stream << '\n';
}

}  // namespace ulk3d
