#include <array>
#include <cstddef>
#include <iostream>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "utils/pictures/image_target.h"
#include "utils/pictures/image_transforms.h"

namespace libutils {
namespace {

/// The sum in single precision and in this order: all ways to it give the same grey.
constexpr float green_part = 0.587F;
constexpr float red_part = 0.299F;
constexpr float blue_part = 0.114F;

void grey_row(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    for (std::size_t x = 0; x < pixels; ++x, from += 3) {
        const float sum = static_cast<float>(from[1]) * green_part + static_cast<float>(from[0]) * red_part +
                          static_cast<float>(from[2]) * blue_part;
        to[x] = static_cast<unsigned char>(static_cast<std::int32_t>(sum));
    }
}

#if defined(__x86_64__)

/// One channel of 8 pixels, 4 in each half, as floats.
[[gnu::target("avx2")]] inline __m256 channel_of_8(__m256i pixels, char channel) {
    const char c = channel;
    const auto from_c = [c](int pixel) { return static_cast<char>(3 * pixel + c); };
    const __m256i places = _mm256_setr_epi8(from_c(0), -1, -1, -1, from_c(1), -1, -1, -1, from_c(2), -1, -1,
                                            -1, from_c(3), -1, -1, -1, from_c(0), -1, -1, -1, from_c(1), -1,
                                            -1, -1, from_c(2), -1, -1, -1, from_c(3), -1, -1, -1);
    return _mm256_cvtepi32_ps(_mm256_shuffle_epi8(pixels, places));
}

/// The greys of 8 pixels. Reads 4 bytes behind them.
[[gnu::target("avx2")]] inline __m256i grey_of_8(const unsigned char* from) {
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + 12));
    const __m256i pixels = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
    const __m256 green = _mm256_mul_ps(channel_of_8(pixels, 1), _mm256_set1_ps(green_part));
    const __m256 red = _mm256_mul_ps(channel_of_8(pixels, 0), _mm256_set1_ps(red_part));
    const __m256 blue = _mm256_mul_ps(channel_of_8(pixels, 2), _mm256_set1_ps(blue_part));
    return _mm256_cvttps_epi32(_mm256_add_ps(_mm256_add_ps(green, red), blue));
}

/// As grey_row, 32 pixels at a time.
[[gnu::target("avx2")]] void grey_row_avx2(const unsigned char* from, unsigned char* to, std::size_t pixels) {
    constexpr std::size_t step = 32;
    // The packs work on each half by itself, and leave groups of four pixels in this order.
    const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    std::size_t x = 0;
    for (; x + step + 2 <= pixels; x += step) {
        const unsigned char* const group = from + 3 * x;
        const __m256i first = _mm256_packus_epi32(grey_of_8(group), grey_of_8(group + 24));
        const __m256i second = _mm256_packus_epi32(grey_of_8(group + 48), grey_of_8(group + 72));
        const __m256i all = _mm256_permutevar8x32_epi32(_mm256_packus_epi16(first, second), order);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + x), all);
    }
    grey_row(from + 3 * x, to + x, pixels - x);
}

#endif

using grey_row_t = void (*)(const unsigned char* from, unsigned char* to, std::size_t pixels);

grey_row_t fastest_grey_row() {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2"))
        return grey_row_avx2;
#endif
    return grey_row;
}

bool refuse_with(image2d& target, const image2d& source, std::uint32_t number, const char* text) {
    std::cerr << number << text << '\n';
    return refuse(target, source);
}

}  // namespace

bool rgb2grey(image2d& target, const image2d& source) {
    const image2d from = source;
    if (from.format != image_format::rgb)
        return refuse_with(target, from, from.format, ": image format is not RGB.");
    if (from.type != image_type::unsigned_integer)
        return refuse_with(target, from, from.type, ": image type is not UINT.");
    if (from.bits != image_bits::bits_8)
        return refuse_with(target, from, from.bits, ": image bits is not 8.");
    if (from.compressed) {
        target.clear();
        set_header(target, image_format::grey, image_type::unsigned_integer, from);
        return true;
    }
    if (!from.holds_pixels())
        return refuse(target, from);
    set_header(target, image_format::grey, image_type::unsigned_integer, from);
    if (!target.allocate())
        return refuse(target, from);
    const grey_row_t convert_row = fastest_grey_row();
    convert_rows(target, from, [&](const unsigned char* pixels, unsigned char* to) {
        convert_row(pixels, to, from.width);
    });
    return true;
}

}  // namespace libutils
