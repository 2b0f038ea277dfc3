#include "utils/codecs/file_rows.h"

#include <cstring>
#include <utility>

namespace libutils {

bool file_rows(image_window_t& rows, const image2d& image) {
    if (!image.holds_pixels())
        return false;
    const std::uint64_t line = row_size(image.width, image.bitsperpixel(), nullptr);
    if (image.skip_x == 0 && image.skip_y == 0 && image.linesize() == line) {
        rows = image;
        return true;
    }
    image2d copy;
    copy.format = image.format;
    copy.bits = image.bits;
    copy.width = image.width;
    copy.height = image.height;
    if (!copy.allocate())
        return false;
    const std::uint64_t used = (std::uint64_t{image.width} * image.bitsperpixel() + 7) / 8;
    for (std::uint32_t y = 0; y < image.height; ++y)
        std::memcpy(copy.pixel(0, y), image.pixel(0, y), used);
    rows = copy;
    return true;
}

bool unmap_bytes(image_window_t& window) {
    const auto bytes = std::as_const(window).elements();
    if (bytes.empty() || window.writable())
        return true;
    image_window_t copy;
    if (!fit_window(copy, bytes.size()))
        return false;
    std::memcpy(copy.begin(), bytes.data(), bytes.size());
    window = copy;
    return true;
}

}  // namespace libutils
