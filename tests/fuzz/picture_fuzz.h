#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "support/memory_file.h"
#include "utils/pictures/image2d.h"

/// What the targets of the picture forms have in common.
namespace picture_fuzz {

/// The messages about bad files are right, and far too many here; the libraries write theirs by themselves.
inline void silence_the_error_stream() {
    static const bool silent = (std::cerr.rdbuf(nullptr), stderr = std::fopen("/dev/null", "w"), true);
    static_cast<void>(silent);
}

/// A file that holds the input.
class input_file_t {
  public:
    input_file_t(const std::uint8_t* data, std::size_t size) : file("input") {
        file.write({reinterpret_cast<const char*>(data), size});
    }
    const char* path() const { return file.path(); }

  private:
    ulk_test::memory_file_t file;
};

/// All bytes of a window; every one of them must be there to be read.
inline std::string bytes_of(const libutils::image_window_t& window) {
    const auto bytes = window.elements();
    return {bytes.begin(), bytes.end()};
}

/// The whole bytes of all rows; nothing for an image that does not hold its pixels.
inline std::string pixels_of(const libutils::image2d& image) {
    std::string pixels;
    if (image.holds_pixels())
        for (std::uint32_t y = 0; y < image.height && image.width != 0; ++y)
            pixels.append(reinterpret_cast<const char*>(image.pixel(0, y)),
                          std::uint64_t{image.width} * image.bitsperpixel() / 8);
    return pixels;
}

inline void expect(bool holds) {
    if (!holds)
        std::abort();
}

}  // namespace picture_fuzz
