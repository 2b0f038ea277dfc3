#include <array>
#include <filesystem>
#include <fstream>

#include "utils/codecs/tga_file.h"
#include "utils/files/picture_files.h"

namespace libutils {
namespace {

constexpr std::size_t header_size = 18;
constexpr std::uint8_t top_row_first = 0x20;

void set_header(tga_t& tga, const std::array<unsigned char, header_size>& bytes) {
    const auto word = [&bytes](std::size_t i) {
        return static_cast<std::uint16_t>(bytes[i] | bytes[i + 1] << 8);
    };
    tga.id_length = bytes[0];
    tga.colour_map_type = bytes[1];
    tga.image_type = bytes[2];
    tga.colour_map_origin = word(3);
    tga.colour_map_length = word(5);
    tga.colour_map_entry_size = bytes[7];
    tga.x_origin = word(8);
    tga.y_origin = word(10);
    tga.width = word(12);
    tga.height = word(14);
    tga.depth = bytes[16];
    tga.descriptor = bytes[17];
}

/// A file that is read from its start, and that knows how much of it is left: nothing is allocated for bytes
/// that are not there.
class source_t {
  public:
    explicit source_t(const char* path) {
        if (!is_plain_file(path))
            return;
        std::error_code error;
        left = std::filesystem::file_size(path, error);
        if (!error)
            file.open(path, std::ios::binary);
    }

    bool is_open() const { return file.is_open(); }
    bool has(std::uint64_t count) const { return count <= left; }

    [[nodiscard]] bool read(unsigned char* target, std::uint64_t count) {
        if (!has(count))
            return false;
        left -= count;
        file.read(reinterpret_cast<char*>(target), static_cast<std::streamsize>(count));
        return file.good();
    }

    [[nodiscard]] bool read(std::vector<unsigned char>& target, std::uint64_t count) {
        if (!has(count))
            return false;
        target.resize(count);
        return read(target.data(), count);
    }

  private:
    std::ifstream file;
    std::uint64_t left = 0;
};

std::uint64_t row_bytes(const tga_t& tga) {
    const std::uint64_t bytes = std::uint64_t{tga.width} * tga.depth / 8;
    return (bytes + 3) / 4 * 4;
}

struct depth_row_t {
    std::uint8_t depth;
    std::uint32_t format;
    std::uint32_t bits;
};

constexpr std::array<depth_row_t, 4> depth_rows{{
    {8, image_format::grey, image_bits::bits_8},
    {16, image_format::bgra, image_bits::packed_5_5_5_1},
    {24, image_format::bgr, image_bits::bits_8},
    {32, image_format::bgra, image_bits::bits_8},
}};

}  // namespace

bool load(tga_t& tga, const char* path) {
    tga = {};
    source_t source(path);
    std::array<unsigned char, header_size> header{};
    if (!source.is_open() || !source.read(header.data(), header.size()))
        return false;
    set_header(tga, header);
    if (!source.read(tga.id, tga.id_length))
        return false;
    const std::uint64_t entries = std::uint64_t{tga.colour_map_origin} + tga.colour_map_length;
    if (tga.colour_map_type != 0 && !source.read(tga.colour_map, entries * tga.colour_map_entry_size))
        return false;
    const std::uint64_t bytes = row_bytes(tga) * tga.height;
    return source.has(bytes) && claim_window(tga.pixels, bytes) && source.read(tga.pixels.begin(), bytes);
}

bool convert(image2d& image, const tga_t& tga) {
    if ((tga.image_type != 1 && tga.image_type != 2) || (tga.descriptor & top_row_first) != 0)
        return false;
    for (const depth_row_t& row : depth_rows) {
        if (row.depth != tga.depth)
            continue;
        image = {};
        image.format = row.format;
        image.type = image_type::unsigned_integer;
        image.bits = row.bits;
        image.width = tga.width;
        image.height = tga.height;
        static_cast<image_window_t&>(image) = tga.pixels;
        return true;
    }
    return false;
}

bool load_tga(image2d& image, const char* path) {
    tga_t tga;
    return load(tga, path) && convert(image, tga);
}

}  // namespace libutils
