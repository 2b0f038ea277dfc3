#pragma once

#include <cstdint>
#include <limits>

namespace libutils {

/// A size that no memory has.
inline constexpr std::uint64_t no_size = std::numeric_limits<std::uint64_t>::max();

/// a times b, and a plus b; `no_size` where the result does not fit in 64 bits. For sizes computed from
/// counts that come from a file or a dialog.
inline std::uint64_t size_product(std::uint64_t a, std::uint64_t b) {
    std::uint64_t product = 0;
    return __builtin_mul_overflow(a, b, &product) ? no_size : product;
}
inline std::uint64_t size_sum(std::uint64_t a, std::uint64_t b) {
    std::uint64_t sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? no_size : sum;
}

}  // namespace libutils
