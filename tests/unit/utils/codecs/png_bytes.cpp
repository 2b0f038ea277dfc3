#include "unit/utils/codecs/png_bytes.h"

#include <algorithm>
#include <array>

namespace libutils {
namespace {

using namespace std::string_literals;

std::uint32_t crc_of(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    return ~crc;
}

std::uint32_t adler_of(std::string_view bytes) {
    std::uint32_t low = 1, high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<unsigned char>(byte)) % 65521;
        high = (high + low) % 65521;
    }
    return high << 16 | low;
}

/// The bytes in stored blocks, as zlib would take them.
std::string stored(const std::string& bytes) {
    constexpr std::size_t longest = 65535;
    std::string stream = "\x78\x01";
    std::size_t start = 0;
    do {
        const std::string block = bytes.substr(start, longest);
        start += block.size();
        const auto size = static_cast<std::uint16_t>(block.size());
        stream += (start == bytes.size() ? "\1"s : "\0"s) + little16(size) +
                  little16(static_cast<std::uint16_t>(~size)) + block;
    } while (start < bytes.size());
    return stream + big32(adler_of(bytes));
}

std::uint32_t channels_of(int colour_type) {
    return colour_type == 2 ? 3 : colour_type == 4 ? 2 : colour_type == 6 ? 4 : 1;
}

/// Packs samples of any bits, the first one in the highest bits.
class packer_t {
  public:
    void add(std::uint32_t sample, int depth) {
        for (int bit = depth - 1; bit >= 0; --bit) {
            if (used++ % 8 == 0)
                bytes += '\0';
            const std::uint32_t place = 7 - (used - 1) % 8;
            bytes.back() =
                static_cast<char>(static_cast<unsigned char>(bytes.back()) | (sample >> bit & 1) << place);
        }
    }

    std::string bytes;

  private:
    std::uint32_t used = 0;
};

struct pass_t {
    std::uint32_t x, y, step_x, step_y;
};

constexpr std::array<pass_t, 7> passes{
    {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}}};

}  // namespace

std::string png_chunk(const std::string& type, const std::string& data) {
    return big32(static_cast<std::uint32_t>(data.size())) + type + data + big32(crc_of(type + data));
}

std::string png_bytes_t::samples(std::uint32_t first_x, std::uint32_t step_x, std::uint32_t y) const {
    packer_t packer;
    for (std::uint32_t x = first_x; x < width; x += step_x)
        for (std::uint32_t c = 0; c < channels_of(colour_type); ++c)
            packer.add((x * 40503 + y * 26544 + y * y * 7 + x * y + c * 6151 + 1) % (1U << depth), depth);
    return packer.bytes;
}

std::string png_bytes_t::row(std::uint32_t y) const {
    return samples(0, 1, y);
}

std::string png_bytes_t::scanlines() const {
    const std::string no_filter(1, '\0');
    std::string lines;
    if (!interlaced) {
        for (std::uint32_t y = 0; y < height; ++y)
            lines += no_filter + row(y);
        return lines;
    }
    for (const pass_t& pass : passes)
        for (std::uint32_t y = pass.y; y < height && pass.x < width; y += pass.step_y)
            lines += no_filter + samples(pass.x, pass.step_x, y);
    return lines;
}

std::string png_bytes_t::bytes() const {
    const auto byte = [](int value) { return std::string(1, static_cast<char>(value)); };
    const std::string header = big32(width) + big32(height) + byte(depth) + byte(colour_type) + byte(0) +
                               byte(0) + byte(interlaced ? 1 : 0);
    std::string file = "\x89PNG\r\n\x1A\n" + png_chunk("IHDR", header) + chunks;
    const std::string stream = stored(scanlines());
    for (std::size_t start = 0; start < stream.size(); start += chunk_size)
        file += png_chunk("IDAT", stream.substr(start, chunk_size));
    return file + png_chunk("IEND", "");
}

}  // namespace libutils
