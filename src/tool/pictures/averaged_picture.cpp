#include "tool/pictures/averaged_picture.h"

#include <cstdint>

namespace ulktool {

using libutils::rgba_picture_t;

namespace {

rgba_picture_t::pixel_t mean_of_square(const rgba_picture_t& picture, int left, int top, int n) {
    std::array<std::uint32_t, 3> weighted{};
    std::uint32_t opacity = 0;
    for (int y = top; y < top + n; ++y) {
        for (int x = left; x < left + n; ++x) {
            const rgba_picture_t::pixel_t& pixel = picture.at(x, y);
            for (std::size_t channel = 0; channel < 3; ++channel)
                weighted[channel] += std::uint32_t{pixel[channel]} * pixel[3];
            opacity += pixel[3];
        }
    }
    const auto rounded = [](std::uint32_t sum, std::uint32_t count) {
        return static_cast<std::uint8_t>((sum + count / 2) / count);
    };
    // Where nothing is opaque, the colour of the ground stays.
    if (opacity == 0)
        return picture.at(left, top);
    const auto pixels = static_cast<std::uint32_t>(n * n);
    return {rounded(weighted[0], opacity), rounded(weighted[1], opacity), rounded(weighted[2], opacity),
            rounded(opacity, pixels)};
}

}  // namespace

rgba_picture_t averaged_picture(const rgba_picture_t& picture, int n) {
    rgba_picture_t small{picture.width / n, picture.height / n, {}};
    small.pixels.reserve(static_cast<std::size_t>(small.width) * static_cast<std::size_t>(small.height));
    for (int y = 0; y < small.height; ++y)
        for (int x = 0; x < small.width; ++x)
            small.pixels.push_back(mean_of_square(picture, x * n, y * n, n));
    return small;
}

}  // namespace ulktool
