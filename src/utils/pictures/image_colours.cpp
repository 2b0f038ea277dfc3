#include <cmath>
#include <cstddef>
#include <iostream>

#include "utils/pictures/image_target.h"
#include "utils/pictures/image_transforms.h"

namespace libutils {
namespace {

/// A byte as a part of 1.
constexpr float byte_step = 0.003921569F;

unsigned char to_byte(float value) {
    if (std::isnan(value) || value > 1.0F)
        return 255;
    if (value < 0.0F)
        return 0;
    return static_cast<unsigned char>(value * 255.0F + 0.5F);
}

bool takes_colours(const image2d& image) {
    const char* fault = nullptr;
    if (image.type != image_type::unsigned_integer)
        fault = "not support image type.";
    else if (image.bits != image_bits::bits_8)
        fault = "not support image bits.";
    else if (image.format != image_format::rgb && image.format != image_format::rgba)
        fault = "not support format.";
    if (fault != nullptr)
        std::cerr << fault << '\n';
    return fault == nullptr;
}

/// Makes `target` a tight copy of `source` in which each channel byte is `change(byte, channel)`.
template <class Change>
bool change_channels(image2d& target, const image2d& source, Change change) {
    const image2d from = source;
    if (!takes_colours(from))
        return refuse(target, from);
    if (!tight_copy(target, from))
        return false;
    const std::uint32_t channels = channel_count(target.format);
    for (std::uint32_t y = 0; y < target.height; ++y)
        for (std::uint32_t x = 0; x < target.width; ++x) {
            unsigned char* const pixel = target.pixel(x, y);
            for (std::uint32_t channel = 0; channel < channels; ++channel)
                pixel[channel] = change(pixel[channel], channel);
        }
    return true;
}

struct direction_t {
    float x, y, z;
};

/// The direction through the place (s, t) of a face, each from -1 to 1, row 0 of the face at t = -1.
direction_t through_face(std::size_t face, float s, float t) {
    switch (face) {
        case 0:
            return {1, -t, -s};
        case 1:
            return {-1, -t, s};
        case 2:
            return {s, 1, t};
        case 3:
            return {s, -1, -t};
        case 4:
            return {s, -t, 1};
        default:
            return {-s, -t, -1};
    }
}

void put_direction(const direction_t& direction, unsigned char* to) {
    const auto [x, y, z] = direction;
    const float length = std::sqrt(x * x + y * y + z * z);
    to[0] = to_byte(x / length * 0.5F + 0.5F);
    to[1] = to_byte(y / length * 0.5F + 0.5F);
    to[2] = to_byte(z / length * 0.5F + 0.5F);
}

}  // namespace

bool fill_colour(image2d& target, const image2d& source, const image_colour_t& colour) {
    return change_channels(target, source,
                           [&](unsigned char, std::size_t channel) { return to_byte(colour[channel]); });
}

bool add_colour(image2d& target, const image2d& source, const image_colour_t& colour) {
    return change_channels(target, source, [&](unsigned char byte, std::size_t channel) {
        return to_byte(static_cast<float>(byte) * byte_step + colour[channel]);
    });
}

bool normalization_cube(std::array<image2d, 6>& faces) {
    constexpr std::uint32_t side = 256;
    const auto coordinate = [](std::uint32_t i) { return static_cast<float>(i) / 127.0F - 1.0F; };
    for (std::size_t face = 0; face < faces.size(); ++face) {
        image2d& image = faces[face];
        image.clear();
        image.width = side;
        image.height = side;
        set_header(image, image_format::rgb, image_type::signed_integer, image);
        if (!image.allocate())
            return false;
        for (std::uint32_t y = 0; y < side; ++y)
            for (std::uint32_t x = 0; x < side; ++x)
                put_direction(through_face(face, coordinate(x), coordinate(y)), image.pixel(x, y));
    }
    return true;
}

}  // namespace libutils
