#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>

namespace libutils {

/// What the holders of one block have in common: it knows bytes alone, so that holders may differ in their
/// elements.
template <class A>
struct control_block {
    std::uint64_t refcount = 0;
    std::uint64_t size = 0;
    A alloc;
    std::byte* data = nullptr;
};

/// Shared array over one block of bytes, which the policy `A` (alloc_new, alloc_mmap_win) puts on the heap,
/// into anonymous memory or over a file.
///
/// A copy shares the block, also between arrays of different element types: what is written through one
/// holder is seen by all. The last holder releases it. Elements are plain records and are never constructed
/// or destroyed; fresh memory is zero. Counts of holders are plain integers: one thread only.
template <class T, class A>
class refvector2 {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    refvector2() = default;
    refvector2(const refvector2& other) : block(other.block) { hold(); }
    template <class U>
    explicit refvector2(const refvector2<U, A>& other) : block(other.block) {
        hold();
    }
    refvector2& operator=(const refvector2& other) {
        share(other);
        return *this;
    }

    /// Drops what is held and shares the block of `other`; nothing happens when both hold the same block
    /// already.
    template <class U>
    void share(const refvector2<U, A>& other) {
        if (block == other.block)
            return;
        drop();
        block = other.block;
        hold();
    }

    /// True with no block or a block of 0 bytes.
    virtual bool empty() const { return block == nullptr || block->size == 0; }
    /// Whole elements in the block.
    virtual std::uint64_t size() const { return block_size() / sizeof(T); }
    /// The first element, null with no block.
    virtual T* begin() { return data(); }
    /// Behind the last element.
    virtual T* end() { return data() + refvector2::size(); }
    virtual const T* begin() const { return data(); }
    virtual const T* end() const { return data() + refvector2::size(); }
    virtual T& at(std::uint64_t i) { return data()[i]; }
    virtual const T& at(std::uint64_t i) const { return data()[i]; }
    virtual T& front() { return *begin(); }
    virtual const T& front() const { return *begin(); }

    /// Takes a fresh block of `count` elements: anonymous, or of `filename` from byte `file_offset` on, where
    /// a count of 0 is the whole file. `mode` is 0 for reading, 1 for reading and writing. With `keep` the
    /// fresh block begins with what the old one held, and the old one stays when there is no fresh one. False
    /// when the policy gives no block.
    virtual bool allocate(std::uint64_t count, const char* filename = nullptr, int mode = 1,
                          std::uint64_t file_offset = 0, bool keep = false) {
        return take_block(count, keep, [&](A& alloc, std::uint64_t& byte_count) {
            return alloc.allocate(byte_count, filename, mode, file_offset);
        });
    }

    /// As `allocate`, from the start of a file and without `keep`, for a policy that can end the process:
    /// here it gives no block instead.
    bool try_allocate(std::uint64_t count, const char* filename = nullptr, int mode = 1) {
        return take_block(count, false, [&](A& alloc, std::uint64_t& byte_count) {
            return alloc.try_allocate(byte_count, filename, mode, 0);
        });
    }

    /// Changes the size of the block, for all its holders; without a block, an anonymous one for reading and
    /// writing is made. `file_offset` moves the view of a file. False when the policy has no such view
    /// (anonymous memory grows no further than it was at first): `begin()` is null then and the array empty,
    /// until a reallocate that fits.
    virtual bool reallocate(std::uint64_t count, std::uint64_t file_offset = 0) {
        if (block == nullptr)
            return refvector2::allocate(count);
        if (!byte_size_fits(count))
            return false;
        void* const view = block->alloc.reallocate(block->data, count * sizeof(T), file_offset);
        block->data = static_cast<std::byte*>(view);
        block->size = view != nullptr ? count * sizeof(T) : 0;
        return block->data != nullptr;
    }

    /// Drops the block.
    virtual void deallocate() { drop(); }
    virtual ~refvector2() { drop(); }

    /// The number of holders of the block, this one included; 0 with no block.
    std::uint64_t use_count() const { return block != nullptr ? block->refcount : 0; }
    /// True when the elements may be written to: not so for a file that was opened for reading.
    bool writable() const { return block != nullptr && block->alloc.writable(); }
    /// The size of the block in bytes, 0 with no block.
    std::uint64_t block_size() const { return block != nullptr ? block->size : 0; }

  protected:
    /// Byte `offset` of the block as an element, null with no block.
    T* data(std::uint64_t offset = 0) const {
        return block != nullptr && block->data != nullptr ? reinterpret_cast<T*>(block->data + offset)
                                                          : nullptr;
    }

  private:
    template <class U, class B>
    friend class refvector2;

    static bool byte_size_fits(std::uint64_t count) {
        return count <= std::numeric_limits<std::uint64_t>::max() / sizeof(T);
    }

    template <class MakeBlock>
    bool take_block(std::uint64_t count, bool keep, MakeBlock&& make_block) {
        if (!keep)
            drop();
        if (!byte_size_fits(count))
            return false;
        auto fresh = std::make_unique<control_block<A>>();
        fresh->size = count * sizeof(T);
        fresh->data = static_cast<std::byte*>(make_block(fresh->alloc, fresh->size));
        if (fresh->data == nullptr)
            return false;
        fresh->refcount = 1;
        // Pages that are for reading alone can not take what is to be kept.
        if (block != nullptr && block->data != nullptr && fresh->alloc.writable())
            std::memcpy(fresh->data, block->data, std::min(fresh->size, block->size));
        drop();
        block = fresh.release();
        return true;
    }

    void hold() {
        if (block != nullptr)
            ++block->refcount;
    }

    void drop() {
        if (block != nullptr && --block->refcount == 0) {
            block->alloc.deallocate(block->data);
            delete block;
        }
        block = nullptr;
    }

    control_block<A>* block = nullptr;
};

}  // namespace libutils
