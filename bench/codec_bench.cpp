#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <jpeglib.h>
#include <png.h>

#include "utils/codecs/bmp_file.h"
#include "utils/codecs/jpeg_file.h"
#include "utils/codecs/png_image.h"
#include "utils/codecs/tga_file.h"

/// Loading of a picture of 4096 by 4096 colours in each file form, compared with the least work possible: the
/// library's bare loop for PNG and JPEG, mapping the file for BMP, a single read for TGA.
namespace {

using namespace libutils;

constexpr std::uint32_t side = 4096;
constexpr std::int64_t pixel_bytes = std::int64_t{side} * side * 3;

/// Slopes with some noise, as in a photograph.
image2d picture(std::uint32_t format) {
    image2d image;
    image.format = format;
    image.type = image_type::unsigned_integer;
    image.bits = image_bits::bits_8;
    image.width = image.height = side;
    if (!image.allocate())
        std::exit(1);
    std::uint32_t noise = 1;
    for (std::uint32_t y = 0; y < side; ++y)
        for (std::uint32_t x = 0; x < side; ++x)
            for (std::uint32_t c = 0; c < 3; ++c) {
                noise = noise * 1664525 + 1013904223;
                image.pixel(x, y)[c] = static_cast<unsigned char>((x + y * (c + 1)) / 40 + (noise >> 30));
            }
    return image;
}

/// The picture in the four forms, in files that are removed when the process exits.
class files_t {
  public:
    files_t() {
        const image2d rgb = picture(image_format::rgb);
        bmp_save_t bmp_file;
        tga_t tga_file;
        jpeg_t jpeg_file;
        if (!convert(bmp_file, picture(image_format::bgr)) || !save(bmp_file, bmp.c_str()) ||
            !convert(tga_file, rgb) || !save(tga_file, tga.c_str()) || !compress(jpeg_file, rgb, 90, true) ||
            !save(jpeg_file, jpeg.c_str()) || write_png_image(png.c_str(), rgb) != 0)
            std::exit(1);
    }
    ~files_t() {
        std::error_code ignored;
        for (const std::string& path : {bmp, tga, jpeg, png})
            std::filesystem::remove(path, ignored);
    }

    std::string bmp = path_of(".bmp"), tga = path_of(".tga"), jpeg = path_of(".jpg"), png = path_of(".png");

  private:
    static std::string path_of(const char* extension) {
        const std::string name = "ulk-bench-" + std::to_string(getpid()) + extension;
        return (std::filesystem::temp_directory_path() / name).string();
    }
};

const files_t& files() {
    static const files_t all;
    return all;
}

void expect(benchmark::State& state, bool done) {
    if (!done)
        state.SkipWithError("not read");
}

std::vector<unsigned char*> rows_of(unsigned char* pixels) {
    std::vector<unsigned char*> rows(side);
    for (std::uint32_t y = 0; y < side; ++y)
        rows[y] = pixels + std::size_t{side - 1 - y} * side * 3;
    return rows;
}

unsigned char* fresh_memory() {
    void* const memory =
        mmap(nullptr, pixel_bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        std::exit(1);
    return static_cast<unsigned char*>(memory);
}

void load_png(benchmark::State& state) {
    const std::string& path = files().png;
    for (auto _ : state) {
        image2d image;
        expect(state, read_png_image(image, path.c_str()) == 0);
    }
    state.SetBytesProcessed(state.iterations() * pixel_bytes);
}

void load_png_plainly(benchmark::State& state) {
    const std::string& path = files().png;
    for (auto _ : state) {
        unsigned char* const pixels = fresh_memory();
        std::vector<unsigned char*> rows = rows_of(pixels);
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        png_init_io(png, file);
        png_read_info(png, info);
        png_read_update_info(png, info);
        png_read_image(png, rows.data());
        png_destroy_read_struct(&png, &info, nullptr);
        std::fclose(file);
        munmap(pixels, pixel_bytes);
    }
    state.SetBytesProcessed(state.iterations() * pixel_bytes);
}

void load_jpeg(benchmark::State& state) {
    const std::string& path = files().jpeg;
    for (auto _ : state) {
        jpeg_t jpeg;
        image2d image;
        expect(state, load(jpeg, path.c_str()) && decompress(image, jpeg));
    }
    state.SetBytesProcessed(state.iterations() * pixel_bytes);
}

void load_jpeg_plainly(benchmark::State& state) {
    const std::string& path = files().jpeg;
    for (auto _ : state) {
        unsigned char* const pixels = fresh_memory();
        std::vector<unsigned char*> rows = rows_of(pixels);
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        jpeg_decompress_struct library{};
        jpeg_error_mgr errors{};
        library.err = jpeg_std_error(&errors);
        jpeg_create_decompress(&library);
        jpeg_stdio_src(&library, file);
        jpeg_read_header(&library, TRUE);
        jpeg_start_decompress(&library);
        while (library.output_scanline < library.output_height)
            jpeg_read_scanlines(&library, &rows[library.output_scanline], 1);
        jpeg_finish_decompress(&library);
        jpeg_destroy_decompress(&library);
        std::fclose(file);
        munmap(pixels, pixel_bytes);
    }
    state.SetBytesProcessed(state.iterations() * pixel_bytes);
}

void load_bmp(benchmark::State& state) {
    const std::string& path = files().bmp;
    for (auto _ : state) {
        bmp_file_t file;
        image2d image;
        expect(state, load(file, path.c_str()) && convert(image, file));
        benchmark::DoNotOptimize(*image.begin());
    }
}

void map_bmp(benchmark::State& state) {
    const std::string& path = files().bmp;
    for (auto _ : state) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat status {};
        expect(state, fstat(file, &status) == 0);
        const auto size = static_cast<std::size_t>(status.st_size);
        void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        close(file);
        benchmark::DoNotOptimize(*static_cast<const volatile char*>(bytes));
        munmap(bytes, size);
    }
}

void load_tga(benchmark::State& state) {
    const std::string& path = files().tga;
    for (auto _ : state) {
        tga_t file;
        image2d image;
        expect(state, load(file, path.c_str()) && convert(image, file));
    }
    state.SetBytesProcessed(state.iterations() * pixel_bytes);
}

void read_tga(benchmark::State& state) {
    const std::string& path = files().tga;
    for (auto _ : state) {
        unsigned char* const pixels = fresh_memory();
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        expect(state, pread(file, pixels, pixel_bytes, 18) == pixel_bytes);
        close(file);
        munmap(pixels, pixel_bytes);
    }
    state.SetBytesProcessed(state.iterations() * pixel_bytes);
}

BENCHMARK(load_png)->Unit(benchmark::kMillisecond);
BENCHMARK(load_png_plainly)->Unit(benchmark::kMillisecond);
BENCHMARK(load_jpeg)->Unit(benchmark::kMillisecond);
BENCHMARK(load_jpeg_plainly)->Unit(benchmark::kMillisecond);
BENCHMARK(load_bmp)->Unit(benchmark::kMicrosecond);
BENCHMARK(map_bmp)->Unit(benchmark::kMicrosecond);
BENCHMARK(load_tga)->Unit(benchmark::kMillisecond);
BENCHMARK(read_tga)->Unit(benchmark::kMillisecond);

}  // namespace
