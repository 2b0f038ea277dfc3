#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <iostream>
#include <string>
#include <string_view>

#include "support/captured_stream.h"
#include "support/ordinary_user.h"
#include "support/scene_text.h"
#include "utils/pictures/image2d.h"

/// What the tests of the picture forms have in common.
namespace libutils {

using ulk_test::captured_stream;
using ulk_test::temporary_folder_t;

/// A value as the bytes of a little-endian file.
inline std::string little16(std::uint16_t value) {
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
}
inline std::string little32(std::uint32_t value) {
    return little16(static_cast<std::uint16_t>(value & 0xFFFF)) +
           little16(static_cast<std::uint16_t>(value >> 16));
}

/// Bytes 1, 2, 3 and so on.
inline std::string counting(std::size_t count) {
    std::string bytes;
    for (std::size_t i = 1; i <= count; ++i)
        bytes += static_cast<char>(i & 0xFF);
    return bytes;
}

inline std::string text_of(const image_window_t& window) {
    const auto bytes = window.elements();
    return {bytes.begin(), bytes.end()};
}

/// The bytes of row `y` that are part of the picture; row 0 is the bottom one.
inline std::string row_of(const image2d& image, std::uint32_t y) {
    const auto* row = image.pixel(0, y);
    return {row, row + (std::uint64_t{image.width} * image.bitsperpixel() + 7) / 8};
}

/// All rows, the bottom one first; a picture that does not hold its pixels has none.
inline std::string pixels_of(const image2d& image) {
    std::string bytes;
    if (image.holds_pixels())
        for (std::uint32_t y = 0; y < image.height; ++y)
            bytes += row_of(image, y);
    return bytes;
}

/// An unsigned image whose bytes, the padding of its rows included, count up from 1.
inline image2d counting_image(std::uint32_t format, std::uint32_t bits, std::uint32_t width,
                              std::uint32_t height) {
    image2d image;
    image.format = format;
    image.type = image_type::unsigned_integer;
    image.bits = bits;
    image.width = width;
    image.height = height;
    if (!image.allocate())
        return {};
    unsigned char next = 1;
    for (unsigned char& byte : image.elements())
        byte = next++;
    return image;
}

/// Takes what is written to the standard error stream while it lives, that of the libraries written in C too.
class captured_descriptor_t {
  public:
    captured_descriptor_t() : taken(std::tmpfile()), original(dup(STDERR_FILENO)) {
        std::fflush(stderr);
        dup2(fileno(taken), STDERR_FILENO);
    }
    ~captured_descriptor_t() {
        std::fflush(stderr);
        dup2(original, STDERR_FILENO);
        close(original);
        std::fclose(taken);
    }
    captured_descriptor_t(const captured_descriptor_t&) = delete;
    captured_descriptor_t& operator=(const captured_descriptor_t&) = delete;

    /// What was written so far.
    std::string text() const {
        std::fflush(stderr);
        std::string bytes(static_cast<std::size_t>(lseek(fileno(taken), 0, SEEK_END)), '\0');
        const ssize_t count = pread(fileno(taken), bytes.data(), bytes.size(), 0);
        return count == static_cast<ssize_t>(bytes.size()) ? bytes : "not read";
    }

  private:
    std::FILE* taken;
    int original;
};

}  // namespace libutils
