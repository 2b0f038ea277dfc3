#include "utils/codecs/png_image.h"

#include "picture_fuzz.h"

using namespace libutils;
using namespace picture_fuzz;

namespace {

std::uint32_t crc_of(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    return ~crc;
}

std::uint32_t big32(const std::string& bytes, std::size_t place) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[place + i]);
    return value;
}

/// Puts right the check sums of all chunks, without which hardly an input would come past the first of them.
void mend_check_sums(std::string& bytes) {
    constexpr std::size_t signature = 8, around = 12;
    for (std::size_t place = signature; place + around <= bytes.size();) {
        const std::size_t length = big32(bytes, place);
        if (length > bytes.size() - place - around)
            return;
        const std::uint32_t crc = crc_of(std::string_view(bytes).substr(place + 4, length + 4));
        for (std::size_t i = 0; i < 4; ++i)
            bytes[place + 8 + length + i] = static_cast<char>(crc >> (24 - 8 * i) & 0xFF);
        place += length + around;
    }
}

}  // namespace

/// Loads any bytes as a PNG file. What loads, other than indices, is the same picture when it is saved and
/// loaded again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence_the_error_stream();
    std::string bytes(reinterpret_cast<const char*>(data), size);
    mend_check_sums(bytes);
    const input_file_t input(reinterpret_cast<const std::uint8_t*>(bytes.data()), size);
    image2d image;
    if (read_png_image(image, input.path()) != 0)
        return 0;
    expect(image.holds_pixels());
    const std::string pixels = pixels_of(image);
    for (std::uint32_t i = 0; i < image.palette.count; ++i)
        static_cast<void>(image.palette.colour(i));
    const ulk_test::memory_file_t output("output");
    const int code = write_png_image(output.path(), image, "title");
    if (image.format == image_format::index) {
        expect(code == -4);
        return 0;
    }
    image2d again;
    expect(code == 0 && read_png_image(again, output.path()) == 0);
    expect(again.format == image.format && again.bits == image.bits && again.width == image.width &&
           again.height == image.height && pixels_of(again) == pixels);
    return 0;
}
