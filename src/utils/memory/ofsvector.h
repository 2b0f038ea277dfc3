#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>

#include "utils/memory/refvector2.h"

namespace libutils {

/// Window into a shared block: the elements from byte `offset` on, `limit` of them at most.
///
/// Several windows, of different element types too, look at one block: a picture file is mapped once and seen
/// through a window for its header, one for its palette and one for its pixels, and the last of them releases
/// it.
template <class T, class A>
class ofsvector : public refvector2<T, A> {
    using base = refvector2<T, A>;

  public:
    static constexpr std::uint64_t no_limit = std::numeric_limits<std::uint64_t>::max();

    ofsvector() = default;
    /// A window into the block that `other` holds, from byte `byte_offset` of the block on.
    template <class U>
    ofsvector(const refvector2<U, A>& other, std::uint64_t byte_offset,
              std::uint64_t element_limit = no_limit)
        : base(other), offset(byte_offset), limit(element_limit) {}

    /// Start of the window, in bytes from the start of the block.
    std::uint64_t offset = 0;
    /// The most elements that the window may show.
    std::uint64_t limit = no_limit;

    /// True when the block is empty or the limit is 0.
    bool empty() const override { return base::empty() || limit == 0; }
    /// Elements behind `offset`, `limit` at most. It wraps around when the window begins behind its block;
    /// windows belong inside their block. Where an offset comes from a file, `elements()` is the one to ask.
    std::uint64_t size() const override { return std::min((this->block_size() - offset) / sizeof(T), limit); }
    T* begin() override { return this->data(offset); }
    T* end() override { return begin() + size(); }
    const T* begin() const override { return this->data(offset); }
    const T* end() const override { return begin() + size(); }
    T& at(std::uint64_t i) override { return begin()[i]; }
    const T& at(std::uint64_t i) const override { return begin()[i]; }

    /// The elements of the window that are inside the block, wherever the window begins.
    std::span<T> elements() { return holds_window() ? std::span<T>(begin(), size()) : std::span<T>(); }
    std::span<const T> elements() const {
        return holds_window() ? std::span<const T>(begin(), size()) : std::span<const T>();
    }

    /// As in the base; the window shows the whole of the fresh block.
    bool allocate(std::uint64_t count, const char* filename = nullptr, int mode = 1,
                  std::uint64_t file_offset = 0, bool keep = false) override {
        const bool done = base::allocate(count, filename, mode, file_offset, keep);
        show_all();
        return done;
    }
    bool try_allocate(std::uint64_t count, const char* filename = nullptr, int mode = 1) {
        const bool done = base::try_allocate(count, filename, mode);
        show_all();
        return done;
    }
    /// As in the base, but removes the limit; the window begins where it did.
    bool reallocate(std::uint64_t count, std::uint64_t file_offset = 0) override {
        limit = no_limit;
        return base::reallocate(count, file_offset);
    }
    void deallocate() override {
        base::deallocate();
        show_all();
    }

  private:
    void show_all() {
        offset = 0;
        limit = no_limit;
    }

    bool holds_window() const { return this->data() != nullptr && offset <= this->block_size(); }
};

}  // namespace libutils
