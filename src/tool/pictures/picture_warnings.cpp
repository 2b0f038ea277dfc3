#include "tool/pictures/picture_warnings.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <string_view>

#include "utils/codecs/bmp_file.h"
#include "utils/codecs/tga_file.h"
#include "utils/memory/byteorder.h"
#include "utils/text/strings.h"

namespace ulktool {

using libutils::image2d;
namespace image_bits = libutils::image_bits;
namespace image_format = libutils::image_format;

namespace {

void add(std::string& warnings, const char* warning) {
    if (!warnings.empty())
        warnings += "; ";
    warnings += warning;
}

/// The byte of a pixel that has its opacity, and the bits in it; no bits for a form that is not looked at.
struct opacity_t {
    std::uint32_t byte = 0;
    unsigned int bits = 0;
};

opacity_t opacity_of(const image2d& image) {
    if (image.format != image_format::rgba && image.format != image_format::bgra)
        return {};
    if (image.bits == image_bits::bits_8)
        return {.byte = 3, .bits = 0xFF};
    if (image.bits == image_bits::packed_5_5_5_1)
        return {.byte = 1, .bits = 0x80};
    return {};
}

bool is_transparent(const image2d& image) {
    const opacity_t opacity = opacity_of(image);
    if (opacity.bits == 0)
        return false;
    for (std::uint32_t y = 0; y < image.height; ++y)
        for (std::uint32_t x = 0; x < image.width; ++x)
            if ((image.pixel(x, y)[opacity.byte] & opacity.bits) != 0)
                return false;
    return true;
}

/// The palette is read from behind the shortest header.
void warn_of_bmp(std::string& warnings, const std::string& path) {
    libutils::bmp_file_t bmp;
    if (!load(bmp, path.c_str()))
        return;
    const libutils::tagBITMAPINFOHEADER& header = bmp.info_header.front();
    const bool has_palette = libutils::intel_to_host16(header.biBitCount) <= 8;
    if (has_palette && libutils::intel_to_host32(header.biSize) > sizeof(libutils::tagBITMAPINFOHEADER))
        add(warnings, "its header is longer than 40 bytes, and its colours are wrong");
}

/// Rows are read as groups of four bytes. Files of other programs have none, and load when something stands
/// behind their pixels; files that were written here end where their pixels do.
bool is_skewed(const libutils::tga_t& tga, const std::string& path) {
    constexpr std::uint64_t header_size = 18;
    const std::uint64_t row = std::uint64_t{tga.width} * tga.depth / 8;
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const auto size = static_cast<std::uint64_t>(file.tellg());
    const std::uint64_t read = header_size + tga.id.size() + tga.colour_map.size() + tga.pixels.size();
    return row % 4 != 0 && size != read;
}

void warn_of_tga(std::string& warnings, const std::string& path) {
    constexpr unsigned int right_to_left = 0x10;
    libutils::tga_t tga;
    if (!load(tga, path.c_str()))
        return;
    if ((tga.descriptor & right_to_left) != 0)
        add(warnings, "it is stored from right to left, and shows mirrored");
    if (is_skewed(tga, path))
        add(warnings, "its rows are no whole groups of four bytes, and it shows skewed");
}

/// Goes from chunk to chunk up to the pixels.
void warn_of_png(std::string& warnings, const std::string& path) {
    constexpr std::streamoff signature_size = 8, check_sum_size = 4;
    std::ifstream file(path, std::ios::binary);
    file.seekg(signature_size);
    for (std::array<char, 8> head{}; file.read(head.data(), head.size());) {
        const std::string_view type(head.data() + 4, 4);
        if (type == "tRNS")
            add(warnings, "its transparent colours (tRNS) show opaque");
        if (type == "tRNS" || type == "IDAT")
            return;
        std::streamoff length = 0;
        for (std::size_t i = 0; i < 4; ++i)
            length = length << 8 | static_cast<unsigned char>(head[i]);
        file.seekg(length + check_sum_size, std::ios::cur);
    }
}

struct form_t {
    const char* extension;
    void (*warn)(std::string& warnings, const std::string& path);
};

constexpr std::array<form_t, 3> forms{{{".bmp", warn_of_bmp}, {".tga", warn_of_tga}, {".png", warn_of_png}}};

}  // namespace

std::string picture_warnings(const std::string& path, const image2d& image, bool shows_opacity) {
    std::string warnings;
    if (shows_opacity && is_transparent(image))
        add(warnings, "it has no opacity anywhere, and the model is invisible");
    for (const form_t& form : forms)
        if (libutils::has_extension(path, form.extension) == 0)
            form.warn(warnings, path);
    return warnings;
}

}  // namespace ulktool
