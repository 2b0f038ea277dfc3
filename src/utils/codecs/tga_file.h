#pragma once

#include <cstdint>
#include <vector>

#include "utils/pictures/image2d.h"
#include "utils/pictures/image_window.h"

/// Targa files that are not run-length coded. Rows are padded to a multiple of 4 bytes, in reading as in
/// writing, though other programs write them without.
namespace libutils {

/// The fields of the 18 bytes that begin the file, in the machine's byte order, and what follows them.
struct tga_t {
    /// The header's count of the id's bytes.
    std::uint8_t id_length = 0;
    /// 0 without a colour map.
    std::uint8_t colour_map_type = 0;
    /// 1 has indices of a colour map, 2 colours, 3 grey; 9 and up are run-length coded.
    std::uint8_t image_type = 0;
    /// The map has `colour_map_origin` plus `colour_map_length` entries of `colour_map_entry_size` bytes.
    std::uint16_t colour_map_origin = 0;
    std::uint16_t colour_map_length = 0;
    std::uint8_t colour_map_entry_size = 0;
    std::uint16_t x_origin = 0;
    std::uint16_t y_origin = 0;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    /// Bits of a pixel.
    std::uint8_t depth = 0;
    /// Bit 5 is set when the top row comes first.
    std::uint8_t descriptor = 0;
    std::vector<unsigned char> id;
    std::vector<unsigned char> colour_map;
    image_window_t pixels;
};

/// Reads the file. False, without a message, when `path` leads to no plain file that can be read or the file
/// is shorter than its header says, its rows rounded up to a multiple of 4 bytes each.
[[nodiscard]] bool load(tga_t& tga, const char* path);

/// Makes an image that shares the pixels: 8 bits are grey, 16 bits BGRA packed in 5-5-5-1, 24 bits BGR, 32
/// bits BGRA. A colour map is not used. False, without a message, for other depths, for image types other
/// than 1 and 2, and for a file with its top row first.
[[nodiscard]] bool convert(image2d& image, const tga_t& tga);

/// Makes a record of an image, unsigned, in RGB or RGBA of 8 bits a channel, or RGBA packed in 5-5-5-1, whose
/// bytes are taken as they stand and shared. False, without a message, for all else, and for sides above
/// 65535.
[[nodiscard]] bool convert(tga_t& tga, const image2d& image);

/// Writes the header, where the length of the id and the fields of the map are those of the arrays, and what
/// follows it. False when an array does not fit its fields or not all of it reached the file.
[[nodiscard]] bool save(const tga_t& tga, const char* path);

/// The whole way from a path to an image, and back.
[[nodiscard]] bool load_tga(image2d& image, const char* path);
[[nodiscard]] bool save_tga(const image2d& image, const char* path);

}  // namespace libutils
