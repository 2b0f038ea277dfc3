#include <cstddef>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "utils/pictures/image_target.h"
#include "utils/pictures/image_transforms.h"

namespace libutils {
namespace {

using swap_row_t = void (*)(const unsigned char* from, unsigned char* to, std::size_t pixels);

void swap_pixel(const unsigned char* from, unsigned char* to) {
    to[0] = from[2];
    to[1] = from[1];
    to[2] = from[0];
}

void swap_row_of_3(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    for (std::size_t x = 0; x < pixels; ++x)
        swap_pixel(from + 3 * x, to + 3 * x);
}

void swap_row_of_4(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    for (std::size_t x = 0; x < pixels; ++x) {
        swap_pixel(from + 4 * x, to + 4 * x);
        to[4 * x + 3] = from[4 * x + 3];
    }
}

#if defined(__x86_64__)

[[gnu::target("ssse3")]] inline void shuffle_16(const unsigned char* from, unsigned char* to,
                                                __m128i places) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_shuffle_epi8(bytes, places));
}

/// Five pixels at a time; the sixteenth byte is written again with the next ones.
[[gnu::target("ssse3")]] void quick_swap_row_of_3(const unsigned char* from, unsigned char* to,
                                                  std::size_t pixels) {
    const __m128i places = _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
    std::size_t x = 0;
    for (; x + 21 <= pixels; x += 20)
        for (std::size_t byte = 3 * x; byte < 3 * x + 60; byte += 15)
            shuffle_16(from + byte, to + byte, places);
    swap_row_of_3(from + 3 * x, to + 3 * x, pixels - x);
}

[[gnu::target("ssse3")]] void quick_swap_row_of_4(const unsigned char* from, unsigned char* to,
                                                  std::size_t pixels) {
    const __m128i places = _mm_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15);
    std::size_t x = 0;
    for (; x + 4 <= pixels; x += 4)
        shuffle_16(from + 4 * x, to + 4 * x, places);
    swap_row_of_4(from + 4 * x, to + 4 * x, pixels - x);
}

#endif

swap_row_t swap_row(bool of_3) {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("ssse3"))
        return of_3 ? quick_swap_row_of_3 : quick_swap_row_of_4;
#endif
    return of_3 ? swap_row_of_3 : swap_row_of_4;
}

/// The formats of one order of channels.
struct order_t {
    std::uint32_t format_of_3;
    std::uint32_t format_of_4;
};

constexpr order_t rgb_order{image_format::rgb, image_format::rgba};
constexpr order_t bgr_order{image_format::bgr, image_format::bgra};

bool swap_channels(image2d& target, const image2d& source, const order_t& order, const order_t& swapped) {
    const image2d from = source;
    const bool of_3 = from.format == order.format_of_3;
    const bool of_4 = from.format == order.format_of_4;
    if (from.compressed || !(of_3 || of_4) || from.type > image_type::unsigned_integer ||
        from.bits != image_bits::bits_8 || !from.holds_pixels())
        return refuse(target, from);
    set_header(target, of_3 ? swapped.format_of_3 : swapped.format_of_4, from.type, from);
    if (!target.allocate())
        return refuse(target, from);
    const swap_row_t swap = swap_row(of_3);
    convert_rows(target, from,
                 [&](const unsigned char* pixels, unsigned char* to) { swap(pixels, to, from.width); });
    return true;
}

}  // namespace

bool rgb2bgr(image2d& target, const image2d& source) {
    return swap_channels(target, source, rgb_order, bgr_order);
}

bool bgr2rgb(image2d& target, const image2d& source) {
    return swap_channels(target, source, bgr_order, rgb_order);
}

}  // namespace libutils
