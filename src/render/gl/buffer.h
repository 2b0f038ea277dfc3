#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <optional>

#include "gltextures/gl_no_object.h"
#include "utils/memory/memory_budget.h"

namespace ulk3d {

using libgr::gl_no_object;

/// What the first use of a store does with the words that were asked for.
enum class first_words_t {
    kept,         ///< they are there
    overwritten,  ///< they are not: the user writes all words before anyone reads them
};

/// Owner of one GL buffer name, and of the store behind it.
///
/// Can be constructed without a context. The name is created by the first `allocate` and deleted by `release`
/// or the destructor. Every other operation needs a current context.
///
/// A store is asked for first and made at its first use. Drivers clear new stores, which takes longer than
/// filling them, and many are never used: those of picks and of marks, as long as nobody picks or marks. What
/// is asked for counts as taken in utils/memory/memory_budget.h. Whatever hands a buffer's name to a call of
/// GL that reads or writes the store calls `provide` before.
class buffer_t {
  public:
    buffer_t() = default;
    ~buffer_t() { release(); }
    buffer_t(const buffer_t&) = delete;
    buffer_t& operator=(const buffer_t&) = delete;

    /// Creates a name if there is none, and sets the target for later binds. Makes no store.
    void allocate(GLenum target);
    /// Deletes the name, and what was asked for; without a current context only forgets them.
    void release();
    /// Gives the store back, if there is one, and asks for one of the same size with undefined content.
    void give_back();
    /// Exchanges the names and stores of both. Never fails.
    void swap(buffer_t& other) noexcept;

    /// Asks for a store of `byte_size` bytes with undefined content, in place of what there is or was asked
    /// for. A store that has this size already is taken as it is, any other one is given back at once.
    ///
    /// What exceeds the memory that is free is made at once, so that GL refuses it here. False when it does;
    /// there is no store then, and the GL error stays pending for the caller's next grCheckError.
    [[nodiscard]] bool ask_for(std::int64_t byte_size);
    /// Asks that all 32-bit words have this value, if it takes no store to remember that: when the store has
    /// not been made, and the words from `first_byte` on are all that was asked of it so far, or are asked
    /// for as they are. False otherwise; then nothing is changed.
    [[nodiscard]] bool ask_for_words(std::int64_t first_byte, std::uint32_t word);
    /// Grows the store, or what is asked for, from `old_size` to `new_size` bytes and keeps the content.
    /// False when there is no memory; the size and the content then are as they were.
    [[nodiscard]] bool grow(std::int64_t old_size, std::int64_t new_size);
    /// Asks for a store of `byte_size` bytes with the content of `other`, which has at least as many; makes
    /// it if that one is made. False when there is no memory for it.
    [[nodiscard]] bool copy(const buffer_t& other, std::int64_t byte_size);

    /// Makes the store that was asked for, if it is not there yet. False when there is no memory for it; it
    /// is still asked for then, and the GL error stays pending for the caller's next grCheckError.
    [[nodiscard]] bool make_store(first_words_t words) const;
    /// The same, and on failure prints "buffer_t::MapBufferRange(): ptr is NULL." to the standard error
    /// stream: the words of a mapping that fails, as most first uses are mappings.
    [[nodiscard]] bool provide(first_words_t words = first_words_t::kept) const;
    /// True when the store has not been made, and all its words are asked to be `word`.
    bool awaits_words(std::uint32_t word) const { return asked && asked->word == word; }

    /// The GL name, `gl_no_object` before `allocate`.
    GLuint id() const { return allocated ? name : gl_no_object; }
    /// True when GL has given a name.
    bool has_name() const { return allocated && name != 0; }

    /// Binds the name, whether there is a store or not.
    void bind() const;
    void unbind() const;

    /// Maps `length` bytes from `offset` on; the mapping lasts until `UnmapBuffer`, the buffer is unbound at
    /// once. Makes the store that was asked for. On failure prints "buffer_t::MapBufferRange(): ptr is NULL."
    /// to the standard error stream and returns null.
    [[nodiscard]] void* MapBufferRange(GLintptr offset, GLsizeiptr length, GLbitfield access);
    void UnmapBuffer();

    /// Writes into the store, which must be there, at the target that the buffer is bound to.
    void write(GLintptr offset, GLsizeiptr length, const void* data);

    /// The number of the times that this object has let the content change: by mappings, writes, words that
    /// were asked for, and new stores. Only what GL itself writes, in a capture or a copy, does not count.
    std::uint64_t writes() const { return write_count; }

  private:
    GLuint name = 0;
    GLenum target = 0;
    bool allocated = false;
    std::uint64_t write_count = 0;

    struct asked_t {
        std::int64_t byte_size = 0;
        std::optional<std::uint32_t> word;  ///< the value of all words; none when nobody cares
    };
    void ask(const asked_t& store) const;
    void drop_store();
    /// Writes all words of the store that there is. False when it can not be mapped.
    [[nodiscard]] bool write_words(std::int64_t byte_size, std::uint32_t word) const;

    // Making a store is no change that the user of a constant buffer could notice.
    mutable std::optional<asked_t> asked;  ///< none when there is nothing to make
    mutable std::int64_t stored = 0;       ///< bytes of the store that there is
    mutable libutils::promised_memory_t promised;
};

}  // namespace ulk3d
