#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

namespace libutils {

/// Shared array with its header and its data in one allocation of the policy `A`: the small kind, for
/// palettes.
///
/// A copy shares the block: what is written through one holder is seen by all. The last holder frees it.
/// Elements are plain records, begin zeroed, and are never constructed or destroyed. Counts of holders are
/// plain integers: one thread only.
template <class T, class A>
class refvector {
    static_assert(std::is_trivially_copyable_v<T>);

  public:
    refvector() = default;
    refvector(const refvector& other) : block(other.block) {
        if (block != nullptr)
            ++block->refcount;
    }
    refvector& operator=(const refvector& other) {
        if (block != other.block) {
            drop();
            block = other.block;
            if (block != nullptr)
                ++block->refcount;
        }
        return *this;
    }

    /// True without a block.
    virtual bool empty() const { return block == nullptr || block->total == 0; }
    /// The bytes of the whole allocation, its header of 32 bytes included, and not the count of the elements,
    /// which the user of the array knows; 0 without a block.
    virtual std::uint64_t size() const { return block != nullptr ? block->total : 0; }
    /// The first element, null without a block.
    virtual T* begin() { return data(); }
    /// `size()` elements behind `begin()`: further than the elements reach. Nothing may be read up to there.
    virtual T* end() { return const_cast<T*>(std::as_const(*this).far_end()); }
    virtual const T* begin() const { return data(); }
    virtual const T* end() const { return far_end(); }
    virtual T& at(std::uint64_t i) { return data()[i]; }
    virtual const T& at(std::uint64_t i) const { return data()[i]; }
    virtual T& front() { return *begin(); }
    virtual const T& front() const { return *begin(); }

    /// Takes a fresh block of `count` elements, which begins with what the old block held, and drops the old
    /// one. A count of 0 only drops. A block of this kind holds no file: the other arguments are those of the
    /// other vectors and change nothing. False, with the old block kept, when there is no such block.
    virtual bool allocate(std::uint64_t count, const char* /*filename*/ = nullptr, int /*mode*/ = 1,
                          std::uint64_t /*file_offset*/ = 0, bool /*keep*/ = false) {
        if (count == 0) {
            drop();
            return true;
        }
        header_t* const fresh = make(count);
        if (fresh == nullptr)
            return false;
        if (block != nullptr)
            std::memcpy(static_cast<void*>(fresh + 1), block + 1,
                        std::min(fresh->total, block->total) - sizeof(header_t));
        drop();
        block = fresh;
        return true;
    }
    /// As allocate.
    virtual bool reallocate(std::uint64_t count, std::uint64_t /*file_offset*/ = 0) {
        return refvector::allocate(count);
    }
    virtual void deallocate() { drop(); }
    virtual ~refvector() { drop(); }

  private:
    struct alignas(16) header_t {
        std::uint64_t refcount;
        std::uint64_t total;
        A alloc;
    };
    static_assert(sizeof(header_t) == 32, "the data begins 32 bytes behind the start of the allocation");
    static_assert(std::is_trivially_copyable_v<A>);

    T* data() const { return block != nullptr ? reinterpret_cast<T*>(block + 1) : nullptr; }

    const T* far_end() const {
        return reinterpret_cast<const T*>(reinterpret_cast<std::uintptr_t>(data()) + size() * sizeof(T));
    }

    static header_t* make(std::uint64_t count) {
        if (count > (std::numeric_limits<std::uint64_t>::max() - sizeof(header_t)) / sizeof(T))
            return nullptr;
        std::uint64_t total = count * sizeof(T) + sizeof(header_t);
        A alloc;
        void* const place = alloc.allocate(total, nullptr, 1, 0);
        return place != nullptr ? ::new (place) header_t{1, total, alloc} : nullptr;
    }

    void drop() {
        if (block != nullptr && --block->refcount == 0) {
            A alloc = block->alloc;
            alloc.deallocate(block);
        }
        block = nullptr;
    }

    header_t* block = nullptr;
};

}  // namespace libutils
