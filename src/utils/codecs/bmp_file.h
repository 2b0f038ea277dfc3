#pragma once

#include <cstdint>

#include "utils/memory/alloc_mmap_win.h"
#include "utils/memory/ofsvector.h"
#include "utils/pictures/image2d.h"
#include "utils/pictures/image_window.h"

/// Windows bitmap files, version 3: both headers, a palette of four bytes a colour, and rows from the bottom
/// up, each padded to a multiple of 4 bytes. The values of the headers are little-endian.
namespace libutils {

#pragma pack(push, 1)
struct tagBITMAPFILEHEADER {
    std::uint16_t bfType;
    std::uint32_t bfSize;
    std::uint16_t bfReserved1;
    std::uint16_t bfReserved2;
    std::uint32_t bfOffBits;
};

struct tagBITMAPINFOHEADER {
    std::uint32_t biSize;
    std::int32_t biWidth;
    std::int32_t biHeight;
    std::uint16_t biPlanes;
    std::uint16_t biBitCount;
    std::uint32_t biCompression;
    std::uint32_t biSizeImage;
    std::int32_t biXPelsPerMeter;
    std::int32_t biYPelsPerMeter;
    std::uint32_t biClrUsed;
    std::uint32_t biClrImportant;
};

struct tagRGBQUAD {
    unsigned char rgbBlue;
    unsigned char rgbGreen;
    unsigned char rgbRed;
    unsigned char rgbReserved;
};
#pragma pack(pop)

static_assert(sizeof(tagBITMAPFILEHEADER) == 14);
static_assert(sizeof(tagBITMAPINFOHEADER) == 40);
static_assert(sizeof(tagRGBQUAD) == 4);

/// A bitmap file as it was read: windows into one mapping of it, all of them inside the file.
struct bmp_file_t {
    ofsvector<tagBITMAPFILEHEADER, alloc_mmap_win> file_header;
    ofsvector<tagBITMAPINFOHEADER, alloc_mmap_win> info_header;
    /// From behind the headers to the pixels; empty when the pixels begin there.
    ofsvector<tagRGBQUAD, alloc_mmap_win> palette;
    /// From the pixel offset of the file header to the end of the file.
    image_window_t pixels;
};

/// A bitmap file to be written: what changes from file to file, in the machine's byte order.
struct bmp_save_t {
    tagBITMAPINFOHEADER info_header{};
    image_window_t pixels;
};

/// Maps the file. False with a line on the standard error stream when `path` leads to no file that can be
/// read (map_picture), and without one when the file is shorter than its headers.
[[nodiscard]] bool load(bmp_file_t& bmp, const char* path);

/// Makes an image that shares the file's pixels; nothing is copied but the palette. A palette goes with
/// indices of 1, 4 or 8 bits; without one they are grey. 24 bits are BGR, 32 bits BGRA. False without a
/// message for compressed pixels, any other depth, and 32 bits with a palette.
///
/// Sizes are taken as they stand: the height of a file with its top row first is negative and becomes a huge
/// one, whose rows the image does not hold (image2d::holds_pixels).
[[nodiscard]] bool convert(image2d& image, const bmp_file_t& bmp);

/// Makes a record of grey of 1, 4 or 8 bits, or BGR of 8 bits a channel. The pixels are shared where the
/// image's rows lie as the file has them, and copied where not. Anything else gives the line "convert(to
/// bmp): not supported format." on the standard error stream and false; false without a message for an image
/// that is compressed or does not hold its pixels.
[[nodiscard]] bool convert(bmp_save_t& bmp, const image2d& image);

/// Writes the headers and the pixels, and never a palette. False when not all of it reached the file.
[[nodiscard]] bool save(const bmp_save_t& bmp, const char* path);

/// The whole way from a path to an image, and back. `save_bmp` begins with the exchange of channels, and
/// refuses without a message what has none to exchange.
[[nodiscard]] bool load_bmp(image2d& image, const char* path);
[[nodiscard]] bool save_bmp(const image2d& image, const char* path);

}  // namespace libutils
