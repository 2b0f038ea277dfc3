#pragma once

#include <cstdint>
#include <utility>

namespace libutils {

/// Shared ownership of one object on the heap: a record of a count and the object.
///
/// A default holder is null. Copying adds one to the count, the last holder destroys the object. The count is
/// a plain integer: all holders of one object live on the thread of the GL context.
template <class T>
class shared_holder {
  public:
    shared_holder() = default;
    shared_holder(const shared_holder& other) : held(other.held) {
        if (held != nullptr)
            ++held->count;
    }
    shared_holder(shared_holder&& other) noexcept : held(std::exchange(other.held, nullptr)) {}
    shared_holder& operator=(shared_holder other) noexcept {
        std::swap(held, other.held);
        return *this;
    }
    ~shared_holder() {
        if (held != nullptr && --held->count == 0)
            delete held;
    }

    /// A holder of a new, default constructed object.
    static shared_holder make() {
        shared_holder holder;
        holder.held = new record;
        return holder;
    }

    /// Releases the object; the holder is null afterwards.
    void reset() { *this = shared_holder(); }

    T* get() const { return held == nullptr ? nullptr : &held->object; }
    T* operator->() const { return &held->object; }
    T& operator*() const { return held->object; }
    explicit operator bool() const { return held != nullptr; }

    /// Count of the holders of this object, 0 for a null holder.
    std::uint64_t use_count() const { return held == nullptr ? 0 : held->count; }

  private:
    struct record {
        std::uint64_t count = 1;
        T object;
    };
    record* held = nullptr;
};

}  // namespace libutils
