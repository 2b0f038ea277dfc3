#include "utils/codecs/tga_file.h"

#include "picture_fuzz.h"

using namespace libutils;
using namespace picture_fuzz;

/// Loads any bytes as a Targa file. A record that was read is the same when it is saved and loaded again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence_the_error_stream();
    const input_file_t input(data, size);
    tga_t tga;
    if (!load(tga, input.path()))
        return 0;
    expect(bytes_of(tga.pixels).size() + tga.id.size() + tga.colour_map.size() + 18 <= size);
    image2d image;
    if (convert(image, tga))
        static_cast<void>(pixels_of(image));
    const ulk_test::memory_file_t output("output");
    tga_t again;
    expect(save(tga, output.path()) && load(again, output.path()));
    expect(again.id == tga.id && again.colour_map == tga.colour_map &&
           bytes_of(again.pixels) == bytes_of(tga.pixels));
    return 0;
}
