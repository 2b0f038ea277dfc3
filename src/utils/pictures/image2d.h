#pragma once

#include <cstdint>

#include "utils/pictures/image_format.h"
#include "utils/pictures/image_window.h"

namespace libutils {

/// Picture: a header that says how to read the bytes in its window, which may be a part of a mapped file.
///
/// Row 0 is the bottom row of the picture, as GL has it. A pixel's channels follow each other; rows are
/// `linesize()` bytes apart and may be longer than the picture, and the picture may begin inside of them. A
/// copy takes the header and shares the bytes and the palette: what is written through one is seen by all.
///
/// A header can promise more than the window holds, as in a truncated file. Call `holds_pixels()` before
/// pixels are read, uploaded or saved.
class image2d : public image_window_t {
  public:
    /// A code of image_format, image_type and image_bits each.
    std::uint32_t format = 0;
    std::uint32_t type = 0;
    std::uint32_t bits = 0;
    /// Not owned; null is rows aligned to 4 bytes.
    const pack_t* pack = nullptr;
    /// Pixels of a stored row; 0 means `width`.
    std::uint32_t row_length = 0;
    /// Pixels before the picture in each stored row.
    std::uint32_t skip_x = 0;
    /// Rows before the picture.
    std::uint32_t skip_y = 0;
    /// Pixels across, and rows.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    /// The bytes are compressed data for the GPU, which no conversion takes.
    bool compressed = false;
    /// The colours behind the indices of format 17.
    palette_t palette;

    std::uint32_t bitsperpixel() const { return bits_per_pixel(format, bits); }

    /// Pixels of a stored row, whatever way it is given.
    std::uint32_t stored_row_length() const { return row_length != 0 ? row_length : width; }

    /// Bytes from one row to the next; all ones when the number does not fit.
    std::uint64_t linesize() const { return row_size(stored_row_length(), bitsperpixel(), pack); }

    /// The byte in which the pixel in column `x` of row `y` begins, the skips counted in. The picture must
    /// hold its pixels.
    unsigned char* pixel(std::uint32_t x, std::uint32_t y) { return begin() + pixel_offset(x, y); }
    const unsigned char* pixel(std::uint32_t x, std::uint32_t y) const {
        return begin() + pixel_offset(x, y);
    }

    /// True when all rows of the picture, the skipped ones below it included, lie in the window in full
    /// lines, and the pixels behind the skips do so too. A picture without pixels holds them.
    bool holds_pixels() const;

    using image_window_t::allocate;
    /// Gives the picture bytes of its own for the skipped rows and all others, and no limit, by the rules of
    /// claim_window. The codes, the sizes and the skips come first. False, without bytes, when memory of that
    /// size can not be allocated.
    [[nodiscard]] bool allocate() {
        return claim_window(*this, size_product(std::uint64_t{skip_y} + height, linesize()));
    }

    /// Drops the bytes, the palette, the size and the place in the rows; the codes, `pack` and `compressed`
    /// stay.
    void clear();

    /// Becomes a view of the `w` by `h` pixels of `image` from column `x` and row `y` on, cut to what there
    /// is to the right and above; the bytes are shared. False, and nothing changes, for a compressed image
    /// and for a corner outside of it. No command reaches this.
    [[nodiscard]] bool subimage(const image2d& image, std::uint32_t x, std::uint32_t y, std::uint32_t w,
                                std::uint32_t h);

  private:
    std::uint64_t pixel_offset(std::uint32_t x, std::uint32_t y) const {
        return (std::uint64_t{y} + skip_y) * linesize() + (std::uint64_t{x} + skip_x) * bitsperpixel() / 8;
    }
};

}  // namespace libutils
