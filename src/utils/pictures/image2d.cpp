#include "utils/pictures/image2d.h"

#include <algorithm>
#include <limits>

namespace libutils {

bool image2d::holds_pixels() const {
    if (width == 0 || height == 0)
        return true;
    const std::uint64_t rows = std::uint64_t{skip_y} + height;
    const std::uint64_t line = linesize();
    // Skips can push the end of a row over the end of its line, and that of the last row out of the window.
    const std::uint64_t row_end = row_size(std::uint64_t{skip_x} + width, bitsperpixel(), &tight_rows);
    const std::uint64_t size = elements().size();
    return size_product(rows, line) <= size && size_sum(size_product(rows - 1, line), row_end) <= size;
}

void image2d::clear() {
    deallocate();
    row_length = 0;
    skip_x = 0;
    skip_y = 0;
    width = 0;
    height = 0;
    palette = {};
}

bool image2d::subimage(const image2d& image, std::uint32_t x, std::uint32_t y, std::uint32_t w,
                       std::uint32_t h) {
    constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
    if (image.compressed || x > image.width || y > image.height || x > most - image.skip_x ||
        y > most - image.skip_y)
        return false;
    const std::uint32_t stored = image.stored_row_length();
    *this = image;
    row_length = stored;
    skip_x += x;
    skip_y += y;
    width = std::min(w, width - x);
    height = std::min(h, height - y);
    return true;
}

}  // namespace libutils
