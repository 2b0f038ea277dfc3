#include <array>
#include <limits>
#include <utility>

#include "utils/codecs/file_rows.h"
#include "utils/codecs/tga_file.h"
#include "utils/files/byte_output.h"
#include "utils/pictures/image_transforms.h"

namespace libutils {
namespace {

constexpr std::uint8_t true_colour = 2;
constexpr std::uint32_t longest_side = std::numeric_limits<std::uint16_t>::max();

/// The pixels in the order of the file, and the bits of one; 0 for an image that has no place in it. BGR,
/// BGRA and grey have none, though the form could hold them.
std::uint8_t order_pixels(image2d& ordered, const image2d& image) {
    if (image.type != image_type::unsigned_integer)
        return 0;
    if (image.format == image_format::rgba && image.bits == image_bits::packed_5_5_5_1) {
        ordered = image;
        return 16;
    }
    if (!rgb2bgr(ordered, image))
        return 0;
    return image.format == image_format::rgba ? 32 : 24;
}

/// Sets the fields of the map to the array that is there. False when no fields tell its size.
bool set_map_fields(tga_t& tga) {
    tga.colour_map_type = tga.colour_map.empty() ? 0 : 1;
    if (tga.colour_map.empty()) {
        tga.colour_map_origin = tga.colour_map_length = tga.colour_map_entry_size = 0;
        return true;
    }
    if (tga.colour_map_entry_size == 0 || tga.colour_map.size() % tga.colour_map_entry_size != 0)
        return false;
    const std::size_t entries = tga.colour_map.size() / tga.colour_map_entry_size;
    if (entries < tga.colour_map_origin ||
        entries - tga.colour_map_origin > std::numeric_limits<std::uint16_t>::max())
        return false;
    tga.colour_map_length = static_cast<std::uint16_t>(entries - tga.colour_map_origin);
    return true;
}

void put8(byte_output& file, std::uint8_t value) {
    file.write(&value, sizeof value);
}

void put16(byte_output& file, std::uint16_t value) {
    put8(file, static_cast<std::uint8_t>(value & 0xFF));
    put8(file, static_cast<std::uint8_t>(value >> 8));
}

void put_header(byte_output& file, const tga_t& tga) {
    put8(file, tga.id_length);
    put8(file, tga.colour_map_type);
    put8(file, tga.image_type);
    put16(file, tga.colour_map_origin);
    put16(file, tga.colour_map_length);
    put8(file, tga.colour_map_entry_size);
    put16(file, tga.x_origin);
    put16(file, tga.y_origin);
    put16(file, tga.width);
    put16(file, tga.height);
    put8(file, tga.depth);
    put8(file, tga.descriptor);
}

}  // namespace

bool convert(tga_t& tga, const image2d& image) {
    tga = {};
    if (image.compressed || image.width > longest_side || image.height > longest_side)
        return false;
    image2d ordered;
    const std::uint8_t depth = order_pixels(ordered, image);
    if (depth == 0 || !file_rows(tga.pixels, ordered))
        return false;
    tga.image_type = true_colour;
    tga.width = static_cast<std::uint16_t>(image.width);
    tga.height = static_cast<std::uint16_t>(image.height);
    tga.depth = depth;
    return true;
}

bool save(const tga_t& tga, const char* path) {
    tga_t written = tga;
    if (tga.id.size() > std::numeric_limits<std::uint8_t>::max() || !set_map_fields(written) ||
        !unmap_bytes(written.pixels))
        return false;
    written.id_length = static_cast<std::uint8_t>(tga.id.size());
    const auto pixels = std::as_const(written.pixels).elements();
    byte_output file(path, fifo_t::refuse);
    put_header(file, written);
    file.write(written.id.data(), written.id.size());
    file.write(written.colour_map.data(), written.colour_map.size());
    file.write(pixels.data(), pixels.size());
    return file.complete();
}

bool save_tga(const image2d& image, const char* path) {
    tga_t tga;
    return convert(tga, image) && save(tga, path);
}

}  // namespace libutils
