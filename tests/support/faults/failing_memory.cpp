// The allocations of the program: operator new of our own code, and malloc where our objects call it.

#include <link.h>
#include <unwind.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "support/faults/active_faults.h"

extern "C" {
extern const char __executable_start;
extern const char etext;
}

namespace ulk_test {
namespace {

struct range_t {
    std::uintptr_t first = 0, last = 0;
    bool has(std::uintptr_t place) const { return place >= first && place < last; }
};

/// Libraries in which our code allocates, through their strings, streams and signals, and from which the
/// exception comes back to it.
struct lenders_t {
    std::array<range_t, 4> ranges{};
    std::size_t count = 0;

    lenders_t() { dl_iterate_phdr(add, this); }

    bool have(std::uintptr_t place) const {
        for (std::size_t i = 0; i < count; ++i)
            if (ranges[i].has(place))
                return true;
        return false;
    }

  private:
    static int add(dl_phdr_info* object, std::size_t /*size*/, void* self) {
        auto& lenders = *static_cast<lenders_t*>(self);
        const bool is_lender = std::strstr(object->dlpi_name, "libstdc++") != nullptr ||
                               std::strstr(object->dlpi_name, "libsigc") != nullptr;
        for (int i = 0; is_lender && i < object->dlpi_phnum; ++i) {
            const auto& segment = object->dlpi_phdr[i];
            if (segment.p_type != PT_LOAD || (segment.p_flags & PF_X) == 0 ||
                lenders.count == lenders.ranges.size())
                continue;
            const std::uintptr_t start = object->dlpi_addr + segment.p_vaddr;
            lenders.ranges[lenders.count++] = {start, start + segment.p_memsz};
        }
        return 0;
    }
};

/// Made before main, when nothing is to fail.
const lenders_t lenders;

bool is_in_program(std::uintptr_t place) {
    return range_t{reinterpret_cast<std::uintptr_t>(&__executable_start),
                   reinterpret_cast<std::uintptr_t>(&etext)}
        .has(place);
}

struct walk_t {
    std::uintptr_t caller;
    bool reached_caller = false;
    bool is_ours = false;
};

_Unwind_Reason_Code step(_Unwind_Context* frame, void* state) {
    auto& walk = *static_cast<walk_t*>(state);
    const std::uintptr_t place = _Unwind_GetIP(frame);
    walk.reached_caller = walk.reached_caller || place == walk.caller;
    if (!walk.reached_caller || lenders.have(place))
        return _URC_NO_REASON;
    walk.is_ours = is_in_program(place);
    return _URC_NORMAL_STOP;
}

/// Whether our code asked for the memory, itself or through a library that lends it its code.
bool is_ours(const void* caller) {
    const auto place = reinterpret_cast<std::uintptr_t>(caller);
    if (!lenders.have(place))
        return is_in_program(place);
    walk_t walk{place};
    _Unwind_Backtrace(step, &walk);
    return walk.is_ours;
}

bool allocation_fails(const void* caller) {
    const faults_t* const faults = active_faults();
    return faults != nullptr && faults->what().operation == fallible_t::allocation && is_ours(caller) &&
           is_to_fail(fallible_t::allocation);
}

}  // namespace
}  // namespace ulk_test

extern "C" {

void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size) {
    return ulk_test::is_to_fail(ulk_test::fallible_t::allocation) ? nullptr : __real_malloc(size);
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return ulk_test::is_to_fail(ulk_test::fallible_t::allocation) ? nullptr : __real_calloc(count, size);
}

void* __wrap_realloc(void* block, std::size_t size) {
    return ulk_test::is_to_fail(ulk_test::fallible_t::allocation) ? nullptr : __real_realloc(block, size);
}
}

namespace {

void* allocate(std::size_t size, const void* caller) {
    void* const block = ulk_test::allocation_fails(caller) ? nullptr : __real_malloc(size != 0 ? size : 1);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

}  // namespace

void* operator new(std::size_t size) {
    return allocate(size, __builtin_return_address(0));
}

void* operator new[](std::size_t size) {
    return allocate(size, __builtin_return_address(0));
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return ulk_test::allocation_fails(__builtin_return_address(0)) ? nullptr
                                                                   : __real_malloc(size != 0 ? size : 1);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return ulk_test::allocation_fails(__builtin_return_address(0)) ? nullptr
                                                                   : __real_malloc(size != 0 ? size : 1);
}

void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete[](void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}
