#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>

#include "utils/codecs/png_image.h"
#include "utils/codecs/png_library.h"
#include "utils/files/picture_files.h"

namespace libutils {
namespace {

constexpr int signature_size = 4;

/// No deflated data makes more than 258 bytes of 2 bits.
constexpr std::uint64_t most_bytes_of_one = 1032;

/// What the library may ask for at once, when the file is not longer: rows of a million pixels.
constexpr std::uint64_t least_memory = std::uint64_t{16} << 20;

/// Texts and profiles that decompress to thousands of times their size, each with its terminating zero.
/// Nobody reads them, and the library would keep them all.
constexpr png_byte skipped_chunks[] = "zTXt\0iTXt\0iCCP";
constexpr int skipped_chunk_count = sizeof skipped_chunks / 5;

/// PNG has the high byte first.
const pack_t high_byte_first{std::endian::native == std::endian::little, 4};

struct close_file_t {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using open_file_t = std::unique_ptr<std::FILE, close_file_t>;

open_file_t open_plain_file(const char* path) {
    std::error_code error;
    if (std::filesystem::exists(path, error) && !is_plain_file(path)) {
        errno = std::filesystem::is_directory(path, error) ? EISDIR : ENODEV;
        return nullptr;
    }
    return open_file_t(std::fopen(path, "rb"));
}

bool has_signature(std::FILE* file) {
    std::array<png_byte, signature_size> bytes{};
    return std::fread(bytes.data(), 1, bytes.size(), file) == bytes.size() &&
           png_sig_cmp(bytes.data(), 0, bytes.size()) == 0;
}

/// 0 when the system does not tell.
std::uint64_t size_of(std::FILE* file) {
    struct stat status {};
    return fstat(fileno(file), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

/// The library asks for the memory of a chunk by the length that is written before it, and reads it then.
png_voidp limited_malloc(png_structp png, png_alloc_size_t size) {
    const auto limit = *static_cast<const std::uint64_t*>(png_get_mem_ptr(png));
    return size <= limit ? std::malloc(size) : nullptr;
}

void limited_free(png_structp /*png*/, png_voidp memory) {
    std::free(memory);
}

struct reader_t {
    reader_t() = default;
    ~reader_t() { png_destroy_read_struct(&png, &info, nullptr); }
    reader_t(const reader_t&) = delete;
    reader_t& operator=(const reader_t&) = delete;

    png_structp png = nullptr;
    png_infop info = nullptr;
    std::uint64_t memory_limit = 0;
};

struct header_t {
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    int depth = 0;
    int colour_type = 0;
    std::uint64_t row_bytes = 0;
    /// Owned by the library.
    png_colorp colours = nullptr;
    int colour_count = 0;
};

// No object with a destructor may live in the two functions that the library's errors jump out of.

bool read_header(const reader_t& reader, std::FILE* file, header_t& header) {
    if (setjmp(png_jmpbuf(reader.png)) != 0)
        return false;
    png_init_io(reader.png, file);
    png_set_sig_bytes(reader.png, signature_size);
    png_set_keep_unknown_chunks(reader.png, PNG_HANDLE_CHUNK_NEVER, skipped_chunks, skipped_chunk_count);
    png_read_info(reader.png, reader.info);
    png_get_IHDR(reader.png, reader.info, &header.width, &header.height, &header.depth, &header.colour_type,
                 nullptr, nullptr, nullptr);
    png_set_interlace_handling(reader.png);
    png_read_update_info(reader.png, reader.info);
    header.row_bytes = png_get_rowbytes(reader.png, reader.info);
    png_get_PLTE(reader.png, reader.info, &header.colours, &header.colour_count);
    return true;
}

bool read_rows(const reader_t& reader, png_bytepp rows) {
    if (setjmp(png_jmpbuf(reader.png)) != 0)
        return false;
    png_read_image(reader.png, rows);
    return true;
}

/// False for a header that promises more than any file of that size holds.
bool can_fill(const header_t& header, std::uint64_t file_size) {
    return size_product(header.row_bytes, header.height) <= size_product(file_size, most_bytes_of_one);
}

bool set_palette(palette_t& palette, const header_t& header) {
    const auto count = static_cast<std::uint32_t>(header.colour_count);
    if (!palette.allocate(std::bit_ceil(count)))
        return false;
    for (std::uint32_t i = 0; i < count; ++i)
        palette.set(i, header.colours[i].red, header.colours[i].green, header.colours[i].blue);
    return true;
}

/// Sets all but the pixels, and allocates those.
bool prepare(image2d& image, const header_t& header) {
    image = {};
    image.width = header.width;
    image.height = header.height;
    image.type = image_type::unsigned_integer;
    if (!png_colour_to_format(header.colour_type, image.format) ||
        !png_depth_to_bits(header.depth, image.bits))
        return false;
    if (header.depth == 16)
        image.pack = &high_byte_first;
    if (image.format == image_format::index && !set_palette(image.palette, header))
        return false;
    return image.allocate();
}

}  // namespace

int read_png_image(image2d& image, const char* path) {
    if (!same_png_version(PNG_LIBPNG_VER_STRING, png_get_libpng_ver(nullptr)))
        return png_code::other_version;
    const open_file_t file = open_plain_file(path);
    if (file == nullptr) {
        std::cerr << path << ": file open error, " << std::strerror(errno) << '\n';
        return png_code::no_file;
    }
    if (!has_signature(file.get()))
        return png_code::no_file;
    reader_t reader;
    reader.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    if (reader.png == nullptr)
        return png_code::no_struct;
    reader.info = png_create_info_struct(reader.png);
    if (reader.info == nullptr)
        return png_code::no_info;
    const std::uint64_t file_size = size_of(file.get());
    reader.memory_limit = std::max(least_memory, file_size * 2);
    png_set_mem_fn(reader.png, &reader.memory_limit, limited_malloc, limited_free);
    header_t header;
    if (!read_header(reader, file.get(), header) || !can_fill(header, file_size) || !prepare(image, header) ||
        !read_rows(reader, png_rows(image).data()))
        return report_png_failure();
    return png_code::done;
}

bool load_png(image2d& image, const char* path) {
    return read_png_image(image, path) == png_code::done;
}

}  // namespace libutils
