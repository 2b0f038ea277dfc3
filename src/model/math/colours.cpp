#include "model/math/colours.h"

#include <algorithm>
#include <cmath>

#include "model/math/matrices.h"

namespace ulk3d {
namespace {

/// One 127th.
constexpr float chroma_scale = 0.007874016F;
constexpr int chroma_zero = 128;

float byte_to_chroma(std::uint8_t byte) {
    return static_cast<float>(byte - chroma_zero) * chroma_scale;
}

std::uint8_t chroma_to_byte(float chroma) {
    const float steps = chroma * 127;
    const int rounded = static_cast<int>(steps < 0 ? steps - 0.5F : steps + 0.5F);
    // In a byte, subtracting 128 and adding 128 are the same.
    return static_cast<std::uint8_t>(rounded - chroma_zero);
}

}  // namespace

std::uint8_t channel_to_byte(float channel) {
    const float v = std::isnan(channel) ? 1.0F : std::clamp(channel, 0.0F, 1.0F);
    return static_cast<std::uint8_t>(v * 255 + 0.5F);
}

col3a bytes_to_colour(const col3aub& bytes) {
    return {byte_to_channel(bytes.r), byte_to_channel(bytes.g), byte_to_channel(bytes.b),
            byte_to_channel(bytes.a)};
}

col3aub colour_to_bytes(const col3a& colour) {
    return {channel_to_byte(colour.r), channel_to_byte(colour.g), channel_to_byte(colour.b),
            channel_to_byte(colour.a)};
}

col3ub ycbcr_to_rgb(const col3ub& ycbcr) {
    const vec3w rgb = vec_times_mtx(
        {byte_to_channel(ycbcr.r), byte_to_chroma(ycbcr.g), byte_to_chroma(ycbcr.b), 1}, ycbcr_to_rgb_matrix);
    return {channel_to_byte(rgb.x), channel_to_byte(rgb.y), channel_to_byte(rgb.z)};
}

col3ub rgb_to_ycbcr(const col3ub& rgb) {
    const vec3w ycbcr = vec_times_mtx(
        {byte_to_channel(rgb.r), byte_to_channel(rgb.g), byte_to_channel(rgb.b), 1}, rgb_to_ycbcr_matrix);
    return {channel_to_byte(ycbcr.x), chroma_to_byte(ycbcr.y), chroma_to_byte(ycbcr.z)};
}

}  // namespace ulk3d
