#pragma once

#include <cstdint>
// The library's header needs it first.
#include <cstdio>

#include <jpeglib.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace libutils {

/// A JPEG file for tests, straight from libjpeg.
struct jpeg_bytes_t {
    /// A sample of the picture, the top row being 0.
    using sample_t = std::function<int(std::uint32_t x, std::uint32_t y, int channel)>;

    std::uint32_t width = 16;
    std::uint32_t height = 16;
    int components = 3;
    J_COLOR_SPACE given = JCS_RGB;
    /// Unknown is what the library makes of `given`.
    J_COLOR_SPACE stored = JCS_UNKNOWN;
    int quality = 100;
    bool progressive = false;
    bool arithmetic = false;
    /// Chroma at the full size.
    bool full_chroma = false;
    /// Blocks between restart marks; 0 is none.
    unsigned int restart = 0;
    /// Codes and contents, behind the library's own marker.
    std::vector<std::pair<int, std::string>> markers;
    /// Four quarters: red and green on top, blue and white below.
    sample_t sample = quarters;

    std::string bytes() const;

    static int quarters(std::uint32_t x, std::uint32_t y, int channel);
    /// The same bytes in every run, of which no two neighbours are alike.
    static int noise(std::uint32_t x, std::uint32_t y, int channel);
};

/// The place of the `count`-th marker of that code in a file, from 0 on; npos when there is none.
std::size_t find_marker(const std::string& bytes, int code, int count = 0);

/// The file with another size in its header of the frame.
std::string with_size(std::string bytes, int frame_code, std::uint16_t width, std::uint16_t height);

}  // namespace libutils
