#include "render/maps/load_picture.h"

#include "gltextures/upload/gr_can_show.h"
#include "model/memory_budget.h"
#include "utils/pictures/image_files.h"

namespace ulk3d {

namespace {

/// A few bytes of a file can become a picture of gigabytes.
bool fits_with_its_texture(const libutils::image2d& image) {
    constexpr std::uint64_t texel_bytes = 4, with_mipmaps_and_copy = 2;
    const std::uint64_t pixels = saturating_product(image.width, image.height);
    return fits_into_memory(saturating_product(pixels, texel_bytes * with_mipmaps_and_copy));
}

}  // namespace

bool load_picture(libutils::image2d& image, const std::string& path, GLenum target) {
    if (libutils::autoloadformat(image, path.c_str()) && libgr::grCanShow(target, image) &&
        fits_with_its_texture(image))
        return true;
    // What a codec leaves of a picture that failed is not looked at again when another model names it.
    image = {};
    return false;
}

}  // namespace ulk3d
