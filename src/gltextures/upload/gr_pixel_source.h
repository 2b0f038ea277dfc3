#pragma once

#include <cstdint>
#include <span>

#include "utils/pictures/image1d.h"
#include "utils/pictures/image2d.h"
#include "utils/pictures/image3d.h"

namespace libgr {

/// Size of an image. An image of less than three dimensions is 1 high or 1 deep.
struct image_extent_t {
    std::uint32_t dimensions;
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t depth;
};

/// What an upload reads of an image, whatever its dimensions. The bytes, the packing and the palette are the
/// image's, which must live as long.
struct pixel_source_t {
    image_extent_t extent;
    std::uint32_t format;
    std::uint32_t type;
    std::uint32_t bits;
    bool compressed;
    const libutils::pack_t* pack;    ///< null: not swapped, rows aligned to 4 bytes
    std::uint32_t row_length = 0;    ///< pixels of a stored row, 0: those of the image
    std::uint32_t image_height = 0;  ///< rows of a stored picture, 0: those of the image
    std::uint32_t skip_pixels = 0;
    std::uint32_t skip_rows = 0;
    std::uint32_t skip_images = 0;
    const libutils::palette_t* palette;
    /// From the pixel pointer to the end of the image's window.
    std::span<const unsigned char> bytes;
};

pixel_source_t pixel_source(const libutils::image1d& image);
pixel_source_t pixel_source(const libutils::image2d& image);
pixel_source_t pixel_source(const libutils::image3d& image);

/// True for an image of palette indices that has a palette.
bool is_indexed(const pixel_source_t& source);

}  // namespace libgr
