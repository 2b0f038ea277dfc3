#pragma once

#include <cstdint>

#include "utils/pictures/image_format.h"
#include "utils/pictures/image_window.h"

namespace libutils {

/// One row of pixels: image2d with a dimension less. No command reaches this: it is for grTexture1D.
class image1d : public image_window_t {
  public:
    std::uint32_t format = 0;
    std::uint32_t type = 0;
    std::uint32_t bits = 0;
    const pack_t* pack = nullptr;
    /// Pixels before the picture.
    std::uint32_t skip_x = 0;
    std::uint32_t width = 0;
    bool compressed = false;
    palette_t palette;

    std::uint32_t bitsperpixel() const { return bits_per_pixel(format, bits); }
    /// Bytes of the row with the pixels that are skipped; all ones when the number does not fit.
    std::uint64_t linesize() const { return row_size(std::uint64_t{skip_x} + width, bitsperpixel(), pack); }
    /// True when the window holds the row. A picture without pixels holds them.
    bool holds_pixels() const { return width == 0 || linesize() <= elements().size(); }

    using image_window_t::allocate;
    /// As image2d::allocate.
    [[nodiscard]] bool allocate() { return fit_window(*this, linesize()); }
};

}  // namespace libutils
