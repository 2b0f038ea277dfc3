#pragma once

#include <cstdint>

#include "utils/pictures/image_format.h"
#include "utils/pictures/image_window.h"

namespace libutils {

/// Pictures behind each other: image2d with a dimension more. No command reaches this: it is for grTexture3D.
class image3d : public image_window_t {
  public:
    std::uint32_t format = 0;
    std::uint32_t type = 0;
    std::uint32_t bits = 0;
    const pack_t* pack = nullptr;
    /// Pixels of a stored row; 0 means `width`.
    std::uint32_t row_length = 0;
    /// Rows of a stored picture; 0 means `height`.
    std::uint32_t image_height = 0;
    /// Pixels, rows and pictures before the first one.
    std::uint32_t skip_x = 0;
    std::uint32_t skip_y = 0;
    std::uint32_t skip_z = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t depth = 0;
    bool compressed = false;
    palette_t palette;

    std::uint32_t bitsperpixel() const { return bits_per_pixel(format, bits); }
    /// Bytes from one row to the next; all ones when the number does not fit.
    std::uint64_t linesize() const {
        return row_size(row_length != 0 ? row_length : width, bitsperpixel(), pack);
    }
    /// Bytes from one picture to the next; all ones when the number does not fit.
    std::uint64_t imagesize() const {
        return size_product(image_height != 0 ? image_height : height, linesize());
    }
    /// True when the window holds every row of every picture, the skipped ones included, in full lines. A
    /// picture without pixels holds them.
    bool holds_pixels() const;

    using image_window_t::allocate;
    /// As image2d::allocate.
    [[nodiscard]] bool allocate() {
        return fit_window(*this, size_product(std::uint64_t{skip_z} + depth, imagesize()));
    }
};

}  // namespace libutils
