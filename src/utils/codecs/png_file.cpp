#include "utils/codecs/png_file.h"

#include <png.h>

#include "utils/files/output_file.h"

namespace libutils {

namespace {

/// Keeps a header that lies about the size of its picture from claiming more than a GiB.
constexpr png_uint_32 longest_side = 16384;

png_image rgba_image() {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.format = PNG_FORMAT_RGBA;
    return image;
}

bool read_pixels(png_image& image, rgba_picture_t& picture) {
    if (image.width > longest_side || image.height > longest_side)
        return false;
    image.format = PNG_FORMAT_RGBA;
    picture.width = static_cast<int>(image.width);
    picture.height = static_cast<int>(image.height);
    picture.pixels.resize(std::size_t{image.width} * image.height);
    return png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) != 0;
}

}  // namespace

bool read_png(const char* path, rgba_picture_t& picture) {
    picture = {};
    png_image image = rgba_image();
    const bool whole = png_image_begin_read_from_file(&image, path) != 0 && read_pixels(image, picture);
    png_image_free(&image);
    if (!whole)
        picture = {};
    return whole;
}

bool write_png(const char* path, const rgba_picture_t& picture) {
    if (picture.pixels.empty())
        return false;
    png_image image = rgba_image();
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    output_file file(path, fifo_t::waits_for_reader);
    if (file.stream() == nullptr)
        return false;
    const bool written =
        png_image_write_to_stdio(&image, file.stream(), 0, picture.pixels.data(), 0, nullptr) != 0;
    if (written && file.complete())
        return true;
    file.discard();
    return false;
}

}  // namespace libutils
