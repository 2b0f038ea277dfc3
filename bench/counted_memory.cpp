#include "counted_memory.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::atomic<bool> is_counting = false;  ///< other benchmarks pay no more than this question
std::atomic<std::ptrdiff_t> bytes = 0, peak = 0;

void count(std::ptrdiff_t growth) {
    bytes += growth;
    peak = std::max(peak.load(), bytes.load());
}

void release(void* block) {
    if (is_counting.load(std::memory_order_relaxed))
        count(-static_cast<std::ptrdiff_t>(malloc_usable_size(block)));
    std::free(block);
}

}  // namespace

void start_counting_memory() {
    bytes = peak = 0;
    is_counting = true;
}

double peak_of_counted_memory() {
    is_counting = false;
    return static_cast<double>(peak);
}

void* operator new(std::size_t size) {
    void* const block = std::malloc(std::max(size, std::size_t{1}));
    if (block == nullptr)
        throw std::bad_alloc();
    if (is_counting.load(std::memory_order_relaxed))
        count(static_cast<std::ptrdiff_t>(malloc_usable_size(block)));
    return block;
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    release(block);
}
