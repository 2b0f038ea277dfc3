#include <bit>
#include <csetjmp>

#include "utils/codecs/file_rows.h"
#include "utils/codecs/png_image.h"
#include "utils/codecs/png_library.h"
#include "utils/files/output_file.h"

namespace libutils {
namespace {

struct writer_t {
    writer_t() = default;
    ~writer_t() { png_destroy_write_struct(&png, &info); }
    writer_t(const writer_t&) = delete;
    writer_t& operator=(const writer_t&) = delete;

    png_structp png = nullptr;
    png_infop info = nullptr;
};

/// What is told to the library about a picture.
struct header_t {
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    int depth = 0;
    int colour_type = 0;
    const char* title = nullptr;
    /// The samples of 16 bits have the low byte first.
    bool swap = false;
};

void set_significant_bits(const writer_t& writer, const header_t& header) {
    const auto depth = static_cast<png_byte>(header.depth);
    png_color_8 bits{};
    if ((header.colour_type & PNG_COLOR_MASK_COLOR) != 0)
        bits.red = bits.green = bits.blue = depth;
    else
        bits.gray = depth;
    if ((header.colour_type & PNG_COLOR_MASK_ALPHA) != 0)
        bits.alpha = depth;
    png_set_sBIT(writer.png, writer.info, &bits);
}

void set_title(const writer_t& writer, const char* title) {
    // The library's type for texts has no const; it copies them.
    png_text text{};
    text.compression = PNG_TEXT_COMPRESSION_NONE;
    text.key = const_cast<char*>("Title");
    text.text = const_cast<char*>(title);
    png_set_text(writer.png, writer.info, &text, 1);
}

/// False after an error of the library, which jumps out of this function: no object with a destructor may
/// live in it.
bool write(const writer_t& writer, std::FILE* file, const header_t& header, png_bytepp rows) {
    if (setjmp(png_jmpbuf(writer.png)) != 0)
        return false;
    png_init_io(writer.png, file);
    png_set_IHDR(writer.png, writer.info, header.width, header.height, header.depth, header.colour_type,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    set_significant_bits(writer, header);
    if (header.title != nullptr)
        set_title(writer, header.title);
    png_write_info(writer.png, writer.info);
    // png_set_packing would have the library take a byte for each pixel; rows below 8 bits are packed
    // already.
    if (header.swap)
        png_set_swap(writer.png);
    png_write_image(writer.png, rows);
    png_write_end(writer.png, writer.info);
    return true;
}

bool is_low_byte_first(const image2d& image) {
    const bool swapped = image.pack != nullptr && image.pack->swap;
    return swapped != (std::endian::native == std::endian::little);
}

}  // namespace

int write_png_image(const char* path, const image2d& image, const char* title) {
    if (!same_png_version(PNG_LIBPNG_VER_STRING, png_get_libpng_ver(nullptr)))
        return png_code::other_version;
    header_t header{image.width, image.height, 0, 0, title, false};
    if (!png_format_to_colour(image.format, header.colour_type) ||
        !png_bits_to_depth(image.bits, header.depth))
        return png_code::done;
    if (image.compressed || !image.holds_pixels())
        return png_code::no_file;
    header.swap = header.depth == 16 && is_low_byte_first(image);
    image2d own = image;
    if (!unmap_bytes(own))
        return png_code::no_file;
    output_file file(path, fifo_t::refuse);
    if (file.stream() == nullptr)
        return png_code::no_file;
    writer_t writer;
    writer.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    if (writer.png == nullptr)
        return png_code::no_struct;
    writer.info = png_create_info_struct(writer.png);
    if (writer.info == nullptr)
        return png_code::no_info;
    const bool written = write(writer, file.stream(), header, png_rows(own).data());
    return written && file.complete() ? png_code::done : report_png_failure();
}

bool save_png(const image2d& image, const char* path) {
    return write_png_image(path, image) == png_code::done;
}

}  // namespace libutils
