#include "render/gl/buffer.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "gltextures/gr_context.h"
#include "render/gl/buffer_store.h"

namespace ulk3d {

namespace {

void print_failure() {
    std::cerr << "buffer_t::MapBufferRange(): ptr is NULL." << std::endl;
}

}  // namespace

void buffer_t::allocate(GLenum binding_target) {
    if (!allocated) {
        glGenBuffers(1, &name);
        allocated = true;
    }
    target = binding_target;
}

void buffer_t::release() {
    if (!allocated)
        return;
    if (libgr::grContextIsCurrent())
        glDeleteBuffers(1, &name);
    allocated = false;
    stored = 0;
    ask({});
}

void buffer_t::swap(buffer_t& other) noexcept {
    std::swap(name, other.name);
    std::swap(target, other.target);
    std::swap(allocated, other.allocated);
    std::swap(write_count, other.write_count);
    std::swap(asked, other.asked);
    std::swap(stored, other.stored);
    std::swap(promised, other.promised);
}

void buffer_t::ask(const asked_t& store) const {
    const std::int64_t bytes = store.byte_size;
    asked = bytes > 0 ? std::optional(store) : std::nullopt;
    promised.hold(static_cast<std::uint64_t>(bytes));
}

void buffer_t::drop_store() {
    bind();
    glBufferData(target, 0, nullptr, GL_DYNAMIC_DRAW);
    unbind();
    stored = 0;
}

void buffer_t::give_back() {
    if (stored == 0)
        return;
    ask({.byte_size = stored, .word = std::nullopt});
    drop_store();
    ++write_count;
}

bool buffer_t::ask_for(std::int64_t byte_size) {
    if (stored == byte_size && !asked)
        return true;
    if (stored > 0)
        drop_store();
    ++write_count;
    ask({});
    const bool is_promised = libutils::can_promise_memory(static_cast<std::uint64_t>(byte_size));
    ask({.byte_size = byte_size, .word = std::nullopt});
    if (is_promised || make_store(first_words_t::overwritten))
        return true;
    ask({});
    return false;
}

bool buffer_t::ask_for_words(std::int64_t first_byte, std::uint32_t word) {
    if (!asked || (first_byte > 0 && asked->word.value_or(word) != word))
        return false;
    ++write_count;
    asked->word = word;
    return true;
}

bool buffer_t::grow(std::int64_t old_size, std::int64_t new_size) {
    if (stored == 0 && !asked)
        return ask_for(new_size);
    if (asked && libutils::can_promise_memory(static_cast<std::uint64_t>(new_size - old_size))) {
        ask({.byte_size = new_size, .word = asked->word});
        return true;
    }
    if (!make_store(first_words_t::kept) || !grow_store(*this, target, old_size, new_size))
        return false;
    stored = new_size;
    return true;
}

bool buffer_t::copy(const buffer_t& other, std::int64_t byte_size) {
    if (!ask_for(byte_size))
        return false;
    if (other.asked) {
        const std::optional<std::uint32_t> word = other.asked->word;
        return !word || ask_for_words(0, *word) || write_words(byte_size, *word);
    }
    if (!make_store(first_words_t::overwritten))
        return false;
    bind();
    glBindBuffer(GL_COPY_READ_BUFFER, other.id());
    glCopyBufferSubData(GL_COPY_READ_BUFFER, target, 0, 0, byte_size);
    glBindBuffer(GL_COPY_READ_BUFFER, 0);
    unbind();
    return true;
}

bool buffer_t::write_words(std::int64_t byte_size, std::uint32_t word) const {
    bind();
    void* const words = glMapBufferRange(target, 0, byte_size, GL_MAP_WRITE_BIT);
    if (words != nullptr)
        std::fill_n(static_cast<std::uint32_t*>(words), byte_size / static_cast<std::int64_t>(sizeof word),
                    word);
    const bool is_written = words != nullptr && glUnmapBuffer(target) == GL_TRUE;
    unbind();
    return is_written;
}

bool buffer_t::make_store(first_words_t words) const {
    if (!asked)
        return true;
    bind();
    const bool is_made = specify_store(target, asked->byte_size, GL_DYNAMIC_DRAW);
    unbind();
    const bool is_empty = words == first_words_t::overwritten || !asked->word;
    if (!is_made || !(is_empty || write_words(asked->byte_size, *asked->word)))
        return false;
    stored = asked->byte_size;
    ask({});
    return true;
}

bool buffer_t::provide(first_words_t words) const {
    const bool is_there = make_store(words);
    if (!is_there)
        print_failure();
    return is_there;
}

void buffer_t::bind() const {
    glBindBuffer(target, id());
}

void buffer_t::unbind() const {
    glBindBuffer(target, 0);
}

void* buffer_t::MapBufferRange(GLintptr offset, GLsizeiptr length, GLbitfield access) {
    if (!provide())
        return nullptr;
    bind();
    void* const pointer = glMapBufferRange(target, offset, length, access);
    unbind();
    if ((access & GL_MAP_WRITE_BIT) != 0)
        ++write_count;
    if (pointer == nullptr)
        print_failure();
    return pointer;
}

void buffer_t::write(GLintptr offset, GLsizeiptr length, const void* data) {
    glBufferSubData(target, offset, length, data);
    ++write_count;
}

void buffer_t::UnmapBuffer() {
    bind();
    glUnmapBuffer(target);
    unbind();
}

}  // namespace ulk3d
