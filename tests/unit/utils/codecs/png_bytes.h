#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "unit/utils/codecs/codec_test.h"

namespace libutils {

/// A value as the bytes of a PNG file.
inline std::string big32(std::uint32_t value) {
    const std::string little = little32(value);
    return {little.rbegin(), little.rend()};
}

/// A chunk with its length and its check sum.
std::string png_chunk(const std::string& type, const std::string& data);

/// A PNG file for tests, made without libpng: its pixels are stored, not deflated.
struct png_bytes_t {
    std::uint32_t width = 11;
    std::uint32_t height = 9;
    int depth = 8;
    /// 0 grey, 2 RGB, 3 indices, 4 grey with alpha, 6 RGBA.
    int colour_type = 2;
    bool interlaced = false;
    /// Whole chunks between the header and the pixels, the palette's too.
    std::string chunks;
    /// Bytes of pixels in each chunk of them.
    std::size_t chunk_size = 100000;

    /// The samples of row `y`, the top one being 0, packed as in a file; all of them differ from row to row.
    std::string row(std::uint32_t y) const;
    std::string bytes() const;

  private:
    std::string samples(std::uint32_t first_x, std::uint32_t step_x, std::uint32_t y) const;
    std::string scanlines() const;
};

}  // namespace libutils
