#pragma once

#include <cstdint>
#include <string>

#include "utils/memory/alloc_mmap_win.h"
#include "utils/memory/alloc_new.h"
#include "utils/memory/ofsvector.h"
#include "utils/memory/refvector.h"
#include "utils/memory/refvector2.h"

/// The kinds of shared vectors that the tests look at.
namespace libutils {

using bytes_t = refvector2<char, alloc_mmap_win>;
using words_t = refvector2<std::uint32_t, alloc_mmap_win>;
using window_t = ofsvector<unsigned char, alloc_mmap_win>;
using word_window_t = ofsvector<std::uint32_t, alloc_mmap_win>;
using heap_t = refvector2<std::uint16_t, alloc_new>;
using palette_t = refvector<unsigned short, alloc_new>;

/// What a vector shows, as text.
template <class V>
std::string text(const V& vector) {
    return std::string(vector.begin(), vector.end());
}

/// A block of the bytes 0, 1, 2 and so on.
inline window_t counting_window(std::uint64_t count) {
    window_t window;
    window.allocate(count);
    for (std::uint64_t i = 0; i < count; ++i)
        window.at(i) = static_cast<unsigned char>(i);
    return window;
}

}  // namespace libutils
