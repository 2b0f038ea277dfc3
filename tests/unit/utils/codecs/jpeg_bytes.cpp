#include "unit/utils/codecs/jpeg_bytes.h"

#include <cstdlib>

namespace libutils {

int jpeg_bytes_t::quarters(std::uint32_t x, std::uint32_t y, int channel) {
    const int quarter = (x < 8 ? 0 : 1) + (y < 8 ? 0 : 2);
    return quarter == 3 || quarter == channel ? 255 : 0;
}

int jpeg_bytes_t::noise(std::uint32_t x, std::uint32_t y, int channel) {
    std::uint32_t hash =
        x * 0x9E3779B1U ^ y * 0x85EBCA77U ^ static_cast<std::uint32_t>(channel) * 0xC2B2AE3DU;
    hash = (hash ^ hash >> 15) * 0x2C1B3C6DU;
    hash = (hash ^ hash >> 12) * 0x297A2D39U;
    return static_cast<int>((hash ^ hash >> 15) & 0xFF);
}

std::string jpeg_bytes_t::bytes() const {
    jpeg_compress_struct library{};
    jpeg_error_mgr errors{};
    library.err = jpeg_std_error(&errors);
    jpeg_create_compress(&library);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&library, &buffer, &size);
    library.image_width = width;
    library.image_height = height;
    library.input_components = components;
    library.in_color_space = given;
    jpeg_set_defaults(&library);
    if (stored != JCS_UNKNOWN)
        jpeg_set_colorspace(&library, stored);
    jpeg_set_quality(&library, quality, TRUE);
    library.arith_code = arithmetic ? TRUE : FALSE;
    library.restart_interval = restart;
    if (full_chroma)
        library.comp_info[0].h_samp_factor = library.comp_info[0].v_samp_factor = 1;
    if (progressive)
        jpeg_simple_progression(&library);
    jpeg_start_compress(&library, TRUE);
    for (const auto& [code, content] : markers)
        jpeg_write_marker(&library, code, reinterpret_cast<const JOCTET*>(content.data()),
                          static_cast<unsigned int>(content.size()));
    std::vector<JSAMPLE> row(width * static_cast<std::size_t>(components));
    for (std::uint32_t y = 0; y < height; ++y) {
        auto* next = row.data();
        for (std::uint32_t x = 0; x < width; ++x)
            for (int channel = 0; channel < components; ++channel)
                *next++ = static_cast<JSAMPLE>(sample(x, y, channel));
        JSAMPROW rows = row.data();
        jpeg_write_scanlines(&library, &rows, 1);
    }
    jpeg_finish_compress(&library);
    jpeg_destroy_compress(&library);
    const std::string file(buffer, buffer + size);
    std::free(buffer);
    return file;
}

std::size_t find_marker(const std::string& bytes, int code, int count) {
    const std::string mark{'\xFF', static_cast<char>(code)};
    std::size_t place = bytes.find(mark);
    while (count-- > 0 && place != std::string::npos)
        place = bytes.find(mark, place + 1);
    return place;
}

std::string with_size(std::string bytes, int frame_code, std::uint16_t width, std::uint16_t height) {
    const std::size_t frame = find_marker(bytes, frame_code);
    const auto put = [&](std::size_t place, std::uint16_t value) {
        bytes[frame + place] = static_cast<char>(value >> 8);
        bytes[frame + place + 1] = static_cast<char>(value & 0xFF);
    };
    put(5, height);
    put(7, width);
    return bytes;
}

}  // namespace libutils
