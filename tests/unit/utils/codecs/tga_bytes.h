#pragma once

#include <cstdint>
#include <string>

#include "unit/utils/codecs/codec_test.h"

namespace libutils {

/// A Targa file for tests, byte by byte.
struct tga_bytes_t {
    std::string id;
    std::uint8_t map_type = 0;
    std::uint8_t image_type = 2;
    std::uint16_t map_origin = 0;
    std::uint16_t map_length = 0;
    std::uint8_t map_entry_size = 0;
    std::string map;
    std::uint16_t width = 4;
    std::uint16_t height = 2;
    std::uint8_t depth = 24;
    std::uint8_t descriptor = 0;
    std::string pixels = counting(24);

    std::string bytes() const {
        const auto byte = [](std::size_t value) { return std::string(1, static_cast<char>(value)); };
        return byte(id.size()) + byte(map_type) + byte(image_type) + little16(map_origin) +
               little16(map_length) + byte(map_entry_size) + little16(0) + little16(0) + little16(width) +
               little16(height) + byte(depth) + byte(descriptor) + id + map + pixels;
    }
};

}  // namespace libutils
