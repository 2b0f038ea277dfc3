#include "render/gl/array.h"

#include <algorithm>
#include <utility>

#include "render/gl/buffer_store.h"

namespace ulk3d {

namespace {

constexpr std::int64_t word_bytes = 4;

}  // namespace

const record_store_t::kind_t array_t::array_kind = {
    .target = GL_ARRAY_BUFFER,
    .no_buffer = "array buffer is not allocated.",
    .no_pointer = "array pointer is NULL.",
};

array_t::array_t() : record_store_t(array_kind, 0) {}

bool array_t::allocate(std::int64_t element_count, const element_list_t& list, const void* data,
                       std::int64_t data_size) {
    GLint most_attributes = 0;
    glGetIntegerv(GL_MAX_VERTEX_ATTRIBS, &most_attributes);
    if (std::cmp_greater(list.size(), most_attributes))
        return false;
    const std::int64_t vertex_bytes = words_of(list) * word_bytes;
    const auto needed = checked_byte_size(element_count, vertex_bytes);
    if (!needed || data_size < 0)
        return false;

    make_buffer();
    record_bytes = vertex_bytes;
    if (!is_same_list(attributes, list))
        attributes = list;
    if (!take_sizes(element_count, *needed))
        return false;
    if (data == nullptr)
        return true;

    if (!buffer->make_store(first_words_t::overwritten)) {
        clear_sizes();
        return false;
    }
    bind();
    buffer->write(0, data_size == 0 ? buffer_size : std::min(data_size, buffer_size), data);
    unbind();
    return true;
}

bool array_t::extend(std::int64_t element_count) {
    if (!buffer)
        return false;
    if (element_count == elements)
        return true;
    if (!bytes_of(element_count))
        return false;
    static_cast<void>(take_count(element_count));  // `holds` reports whether they fit into the store
    return true;
}

bool array_t::fits(std::int64_t element_count) const {
    const auto needed = bytes_of(element_count);
    return needed && buffer_size >= *needed;
}

void array_t::write_all(const void* data) {
    bind();
    if (buffer && data != nullptr)
        buffer->write(0, buffer_size, data);
    unbind();
}

bool array_t::write_one(std::int64_t index, const void* data) {
    if (!provide())
        return false;
    bind();
    const auto offset = bytes_of(index);
    if (buffer && data != nullptr && offset)
        buffer->write(*offset, record_bytes, data);
    unbind();
    return true;
}

void array_t::read_one(std::int64_t index, void* data) const {
    if (!provide())
        return;
    bind();
    const auto offset = bytes_of(index);
    if (buffer && data != nullptr && offset)
        glGetBufferSubData(GL_ARRAY_BUFFER, *offset, record_bytes, data);
    unbind();
}

void array_t::bind_to(const vertex_array_ref& vertex_array, GLuint first_location) const {
    bind_attributes(vertex_array, attributes, vertex_stride(), buffer_id(), first_location);
    if (vertex_array && buffer)
        vertex_array->fed_by(
            {buffer, kind->no_pointer, first_location, static_cast<GLuint>(attributes.size())});
}

void array_t::bind() const {
    static_cast<void>(provide());  // has printed its lines; GL refuses what is then done without a store
    glBindBuffer(GL_ARRAY_BUFFER, buffer ? buffer->id() : gl_no_object);
}

void array_t::unbind() const {
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void array_t::release() {
    drop_buffer();
}

}  // namespace ulk3d
