#include "utils/codecs/jpeg_file.h"

#include "picture_fuzz.h"

using namespace libutils;
using namespace picture_fuzz;

namespace {

/// A few bytes may ask for a large picture: such inputs are no find.
bool asks_for_much(const std::uint8_t* data, std::size_t size) {
    constexpr std::uint64_t most_pixels = 1 << 20;
    for (std::size_t i = 0; i + 8 < size; ++i) {
        const bool frame = data[i] == 0xFF && (data[i + 1] & 0xF0) == 0xC0;
        const std::uint64_t height = data[i + 5] * 256U + data[i + 6];
        const std::uint64_t width = data[i + 7] * 256U + data[i + 8];
        if (frame && width * height > most_pixels)
            return true;
    }
    return false;
}

}  // namespace

/// Loads any bytes as a JPEG file. What loads can be encoded, with its markers, and loads again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (asks_for_much(data, size))
        return 0;
    silence_the_error_stream();
    const input_file_t input(data, size);
    jpeg_t jpeg;
    image2d image;
    if (!load(jpeg, input.path()) || !decompress(image, jpeg))
        return 0;
    expect(image.holds_pixels());
    static_cast<void>(pixels_of(image));
    jpeg_t encoded;
    encoded.markers = jpeg.markers;
    image2d again;
    expect(compress(encoded, image, 95, true) && decompress(again, encoded));
    expect(again.format == image.format && again.width == image.width && again.height == image.height);
    return 0;
}
