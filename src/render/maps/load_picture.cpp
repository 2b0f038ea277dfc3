#include "render/maps/load_picture.h"

#include <algorithm>

#include "gltextures/upload/gr_can_show.h"
#include "utils/memory/memory_budget.h"
#include "utils/pictures/image_files.h"

namespace ulk3d {

namespace {

/// A few bytes of a file can become a picture of gigabytes. What its pixels take was claimed before they were
/// read; this is for the texture.
bool claim_texture(const libutils::image2d& image) {
    constexpr std::uint64_t least_texel_bytes = 4, with_mipmaps_and_copy = 2;
    const std::uint64_t texel_bytes = std::max<std::uint64_t>(image.bitsperpixel() / 8, least_texel_bytes);
    const std::uint64_t pixels = libutils::size_product(image.width, image.height);
    return libutils::claim_memory(libutils::size_product(pixels, texel_bytes * with_mipmaps_and_copy));
}

}  // namespace

bool load_picture(libutils::image2d& image, const std::string& path, GLenum target) {
    libutils::trial_claims_t claims;
    if (libutils::autoloadformat(image, path.c_str()) && libgr::grCanShow(target, image) &&
        claim_texture(image)) {
        claims.keep();
        return true;
    }
    // What a codec leaves of a picture that failed is not looked at again when another model names it.
    image = {};
    return false;
}

}  // namespace ulk3d
