#pragma once

#include <cstdint>
#include <string>

#include "unit/utils/codecs/codec_test.h"

namespace libutils {

/// A bitmap file for tests, byte by byte.
struct bmp_bytes_t {
    std::int32_t width = 4;
    std::int32_t height = 2;
    std::uint16_t bit_count = 24;
    std::uint32_t compression = 0;
    /// Blue, green, red and a byte of any value for each colour.
    std::string palette;
    std::string pixels = counting(24);
    /// Added to the place behind the palette, where the header has the pixels begin.
    std::int64_t offset_error = 0;

    std::string headers() const {
        const auto offset =
            static_cast<std::uint32_t>(54 + static_cast<std::int64_t>(palette.size()) + offset_error);
        const auto size = static_cast<std::uint32_t>(54 + palette.size() + pixels.size());
        return "BM" + little32(size) + little32(0) + little32(offset) + little32(40) +
               little32(static_cast<std::uint32_t>(width)) + little32(static_cast<std::uint32_t>(height)) +
               little16(1) + little16(bit_count) + little32(compression) +
               little32(static_cast<std::uint32_t>(pixels.size())) + little32(72) + little32(72) +
               little32(0) + little32(0);
    }
    std::string bytes() const { return headers() + palette + pixels; }
};

}  // namespace libutils
