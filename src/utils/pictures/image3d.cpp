#include "utils/pictures/image3d.h"

namespace libutils {

bool image3d::holds_pixels() const {
    if (width == 0 || height == 0 || depth == 0)
        return true;
    const std::uint64_t pictures = std::uint64_t{skip_z} + depth;
    const std::uint64_t rows = std::uint64_t{skip_y} + height;
    // Skips can push the end of a row over the end of its line, and that of a picture over the next one.
    const std::uint64_t row_end = row_size(std::uint64_t{skip_x} + width, bitsperpixel(), &tight_rows);
    const std::uint64_t picture_end = size_sum(size_product(rows - 1, linesize()), row_end);
    const std::uint64_t size = elements().size();
    return size_product(pictures, imagesize()) <= size &&
           size_sum(size_product(pictures - 1, imagesize()), picture_end) <= size;
}

}  // namespace libutils
