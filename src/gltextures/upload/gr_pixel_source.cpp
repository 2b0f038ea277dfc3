#include "gltextures/upload/gr_pixel_source.h"

namespace libgr {

pixel_source_t pixel_source(const libutils::image1d& image) {
    return {.extent = {1, image.width, 1, 1},
            .format = image.format,
            .type = image.type,
            .bits = image.bits,
            .compressed = image.compressed,
            .pack = image.pack,
            .skip_pixels = image.skip_x,
            .palette = &image.palette,
            .bytes = image.elements()};
}

pixel_source_t pixel_source(const libutils::image2d& image) {
    return {.extent = {2, image.width, image.height, 1},
            .format = image.format,
            .type = image.type,
            .bits = image.bits,
            .compressed = image.compressed,
            .pack = image.pack,
            .row_length = image.row_length,
            .skip_pixels = image.skip_x,
            .skip_rows = image.skip_y,
            .palette = &image.palette,
            .bytes = image.elements()};
}

pixel_source_t pixel_source(const libutils::image3d& image) {
    return {.extent = {3, image.width, image.height, image.depth},
            .format = image.format,
            .type = image.type,
            .bits = image.bits,
            .compressed = image.compressed,
            .pack = image.pack,
            .row_length = image.row_length,
            .image_height = image.image_height,
            .skip_pixels = image.skip_x,
            .skip_rows = image.skip_y,
            .skip_images = image.skip_z,
            .palette = &image.palette,
            .bytes = image.elements()};
}

bool is_indexed(const pixel_source_t& source) {
    return source.format == libutils::image_format::index && source.palette->count != 0;
}

}  // namespace libgr
