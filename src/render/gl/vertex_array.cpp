#include "render/gl/vertex_array.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <limits>

#include "gltextures/gr_context.h"

namespace ulk3d {

namespace {

// GL takes an offset into the bound buffer in the form of a pointer.
const void* buffer_offset(std::uint32_t words) {
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(words) * 4);
}

}  // namespace

void vertex_array_t::allocate() {
    if (allocated)
        return;
    glGenVertexArrays(1, &name);
    allocated = true;
}

void vertex_array_t::release() {
    if (!allocated)
        return;
    if (libgr::grContextIsCurrent())
        glDeleteVertexArrays(1, &name);
    allocated = false;
    feeds.clear();
}

void vertex_array_t::bind() const {
    glBindVertexArray(id());
}

void vertex_array_t::unbind() const {
    glBindVertexArray(0);
}

void vertex_array_t::bind_attributes(const element_list_t& list, GLuint stride, GLuint buffer_id,
                                     GLuint first_location) const {
    if (buffer_id == 0)
        return;
    bind();
    glBindBuffer(GL_ARRAY_BUFFER, buffer_id);
    GLuint location = first_location;
    std::uint32_t offset = 0;
    for (const element_t element : elements_of(list)) {
        const element_format_t format = element_format(element);
        glEnableVertexAttribArray(location);
        glVertexAttribPointer(location, static_cast<GLint>(format.components), format.type,
                              format.normalized ? GL_TRUE : GL_FALSE, static_cast<GLsizei>(stride * 4),
                              buffer_offset(offset));
        offset += format.components;
        ++location;
    }
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    unbind();
}

void vertex_array_t::fed_by(const feed_t& feed) {
    const auto is_replaced = [&feed](const feed_t& old) {
        return old.first_location >= feed.first_location &&
               old.first_location + old.count <= feed.first_location + feed.count;
    };
    std::erase_if(feeds, is_replaced);
    feeds.push_back(feed);
}

bool vertex_array_t::provide() const {
    return std::ranges::all_of(feeds, [](const feed_t& feed) {
        const bool is_there = feed.buffer->provide();
        if (!is_there)
            std::cerr << feed.no_store << std::endl;
        return is_there;
    });
}

bool vertex_array_t::draw(GLenum mode, std::int64_t count) const {
    if (!provide())
        return false;
    bind();
    glDrawArrays(mode, 0, to_draw_count(count));
    unbind();
    return true;
}

void bind_attributes(const vertex_array_ref& holder, const element_list_t& list, GLuint stride,
                     GLuint buffer_id, GLuint first_location) {
    if (holder)
        holder->bind_attributes(list, stride, buffer_id, first_location);
}

bool draw(const vertex_array_ref& holder, GLenum mode, std::int64_t count) {
    return !holder || holder->draw(mode, count);
}

GLsizei to_draw_count(std::int64_t count) {
    using limits = std::numeric_limits<GLsizei>;
    return static_cast<GLsizei>(std::clamp<std::int64_t>(count, limits::min(), limits::max()));
}

}  // namespace ulk3d
