#pragma once

#include "utils/pictures/image2d.h"

/// PNG files, through libpng, which writes its own warnings and errors to the standard error stream.
///
/// The results are 0 when all went well, or -1 for a file that can not be opened or is not of this form, -2
/// and -3 when the library's structs can not be made, -4 with the line "FAIL" on the standard error stream
/// after an error of the library, and -5 when the library that runs is of another version than the one that
/// was compiled with, which three lines on that stream tell.
namespace libutils {

/// Reads a picture of any colour type, depth and interlacing as it stands in the file: grey, grey with alpha,
/// RGB, RGBA, or indices with a palette, whose size is rounded up to a power of two with black entries.
/// Pixels below 8 bits are packed. Samples of 16 bits keep the file's byte order; the image's `pack` says so
/// on a machine with the other one. Transparency other than an alpha channel is dropped.
///
/// A path that can not be opened gives the line "<path>: file open error, <reason>".
[[nodiscard]] int read_png_image(image2d& image, const char* path);

/// Writes a picture of the formats that are read, in bits 1, 2, 4, 8 or 16. One of another format or other
/// bits is left unwritten, and the result is 0 then. `title` goes into a text chunk "Title", null into none.
/// A picture of indices always ends in "FAIL": its palette is not written.
///
/// -1 without a message also for an image that is compressed or does not hold its pixels, and when there is
/// no memory for a copy of pixels that are mapped from a file.
[[nodiscard]] int write_png_image(const char* path, const image2d& image, const char* title = nullptr);

/// The whole way from a path to an image, and back without a title: true for the result 0.
[[nodiscard]] bool load_png(image2d& image, const char* path);
[[nodiscard]] bool save_png(const image2d& image, const char* path);

}  // namespace libutils
