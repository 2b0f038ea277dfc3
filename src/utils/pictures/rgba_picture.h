#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace libutils {

/// A picture of 8-bit RGBA pixels, alpha not multiplied in. The first row is the top one.
struct rgba_picture_t {
    using pixel_t = std::array<std::uint8_t, 4>;

    int width = 0;
    int height = 0;
    std::vector<pixel_t> pixels;

    /// The pixel in column `x` of row `y`, counted from the left and the top; both must lie in the picture.
    const pixel_t& at(int x, int y) const { return pixels[index(x, y)]; }
    pixel_t& at(int x, int y) { return pixels[index(x, y)]; }

    /// A copy of the rectangle whose upper left corner is at `x`, `y`; all of it must lie in the picture.
    rgba_picture_t part(int x, int y, int part_width, int part_height) const {
        rgba_picture_t copy{part_width, part_height, {}};
        for (int row = y; row < y + part_height; ++row)
            copy.pixels.insert(copy.pixels.end(), &at(x, row), &at(x, row) + part_width);
        return copy;
    }

    bool operator==(const rgba_picture_t&) const = default;

  private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
};

}  // namespace libutils
