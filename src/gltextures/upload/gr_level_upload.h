#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <optional>

#include "gltextures/upload/gr_core_format.h"
#include "gltextures/upload/gr_pixel_source.h"
#include "gltextures/upload/gr_unpack.h"
#include "utils/pictures/image_window.h"

namespace libgr {

/// What GL gets of a source in the current context, for which `told` is its triple.
stored_format_t stored_format(const pixel_source_t& source, const gl_triple_t& told);

/// Pixels of a source in the form in which the current context takes them. The unpack state that they need is
/// set while this lives; what `set_unpack_state` has set before is there again after.
class gl_pixels_t {
  public:
    gl_pixels_t(const pixel_source_t& source, const gl_triple_t& told);

    const gl_triple_t& triple() const { return stored.triple; }
    /// Null when there are no bytes.
    const unsigned char* data() const { return bytes.data(); }
    /// False when GL would read beyond the bytes: the level must be left out then.
    bool is_readable() const;
    /// On a core context, makes the texture bound to `target` show the channels as the source means them.
    void set_swizzle(GLenum target) const;

  private:
    image_extent_t extent;
    stored_format_t stored;
    libutils::image_window_t unpacked;
    std::span<const unsigned char> bytes;
    std::optional<tight_unpack_t> tight;
};

enum class transfer_t {
    store,   ///< into storage that is made for it
    refill,  ///< into storage that is there
};

/// Where a level goes, and how.
struct level_place_t {
    GLenum image_target;    ///< the texture's target, or a face of it
    GLenum texture_target;  ///< the target with its parameters
    GLint level = 0;
    bool border = false;  ///< the image has a border; only level 0 is passed to GL with one
    std::uint64_t max_size =
        0;  ///< side of the square storage that the image is padded to, 0 for its own size
    bool is_mipmap_path = false;
    transfer_t transfer = transfer_t::store;
};

/// Uploads one level under the unpack state that is set. grCheckError reports GL errors; a compressed image
/// that the context can not take has a line "error, ARB_texture_compression unsupported when compressed image
/// loading, skip." on the standard error stream. False when GL has been handed nothing: then, and silently
/// when the source's bytes end before its pixels do. Useful where something follows the upload of a whole
/// level.
bool upload_level(const level_place_t& place, const pixel_source_t& source, const gl_triple_t& triple);

/// Builds the levels of the texture on the host, from one image. Of what GLU does not know, volumes included,
/// the one level is uploaded and GL builds the others if it can.
void upload_built_mipmaps(const level_place_t& place, const pixel_source_t& source,
                          const gl_triple_t& triple);

/// Side of the storage that holds `max_size`: the next power of two; a border comes on top of it.
std::uint32_t storage_side(std::uint64_t max_size, bool border);

}  // namespace libgr
