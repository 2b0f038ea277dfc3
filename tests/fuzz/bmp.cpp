#include "utils/codecs/bmp_file.h"

#include "picture_fuzz.h"

using namespace libutils;
using namespace picture_fuzz;

/// Loads any bytes as a bitmap. What can be saved is the same picture when it is loaded again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence_the_error_stream();
    const input_file_t input(data, size);
    bmp_file_t file;
    image2d image;
    if (!load(file, input.path()) || !convert(image, file))
        return 0;
    for (std::uint32_t i = 0; i < image.palette.count; ++i)
        static_cast<void>(image.palette.colour(i));
    const std::string bytes = bytes_of(image);
    expect(bytes.size() <= size);
    bmp_save_t saved;
    if (!convert(saved, image))
        return 0;
    const ulk_test::memory_file_t output("output");
    bmp_file_t second;
    image2d again;
    expect(save(saved, output.path()) && load(second, output.path()) && convert(again, second));
    expect(again.format == image.format && again.bits == image.bits && again.width == image.width &&
           again.height == image.height && bytes_of(again) == bytes);
    return 0;
}
