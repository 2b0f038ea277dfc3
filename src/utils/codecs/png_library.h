#pragma once

#include <png.h>

#include <cstdint>
#include <vector>

#include "utils/pictures/image2d.h"

/// What the reader and the writer of PNG share in driving libpng.
namespace libutils {

/// Results, as png_image.h tells them.
namespace png_code {
inline constexpr int done = 0;
inline constexpr int no_file = -1;
inline constexpr int no_struct = -2;
inline constexpr int no_info = -3;
inline constexpr int failed = -4;
inline constexpr int other_version = -5;
}  // namespace png_code

/// True when both versions are the same text. If not, three lines on the standard error stream tell them.
[[nodiscard]] bool same_png_version(const char* header, const char* source);

/// Writes the line of a failed file; the result for it.
[[nodiscard]] int report_png_failure();

/// The image's format code for a colour type of the library, and the reverse. False when there is none.
[[nodiscard]] bool png_colour_to_format(int colour_type, std::uint32_t& format);
[[nodiscard]] bool png_format_to_colour(std::uint32_t format, int& colour_type);

/// The image's bit code for the bits of a channel, and the reverse. False when there is none.
[[nodiscard]] bool png_depth_to_bits(int depth, std::uint32_t& bits);
[[nodiscard]] bool png_bits_to_depth(std::uint32_t bits, int& depth);

/// Pointers to the rows of an image that holds its pixels, the top row first.
std::vector<png_bytep> png_rows(const image2d& image);

}  // namespace libutils
