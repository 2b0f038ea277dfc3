#pragma once

#include <cstdint>
#include <span>

#include "gltextures/upload/gr_level_upload.h"
#include "gltextures/upload/gr_pixel_source.h"

/// How the levels of the image textures get into the texture that is bound. What the classes differ in is
/// told by records; messages and GL errors go to the standard error stream. A level that fails is left out,
/// and the others go on.
namespace libgr {

/// The settings that all image textures have.
struct upload_settings_t {
    std::uint64_t max_size = 0;
    bool compressed = false;
    bool mipmap = false;
    bool border = false;
    transfer_t transfer = transfer_t::store;
};

/// What sets apart the classes of one image per level.
struct upload_family_t {
    GLenum target;
    /// Asks for GL 3.0, which makes mipmaps by itself, before all other ways.
    bool generates_mipmaps;
    /// A compressed format may be chosen for every level, not only for the one that mipmaps are made of.
    bool compresses_all_levels;
    /// The message about a compressed image from which no mipmaps can be made, by whether GL has the mipmap
    /// flag at all; null for nothing.
    const char* words_with_flag;
    const char* words_without_flag;
};

extern const upload_family_t family_1d;
extern const upload_family_t family_2d;
extern const upload_family_t family_3d;

/// Uploads the levels, the one at index i as level i.
void upload_levels(const upload_family_t& family, std::span<const pixel_source_t> levels,
                   const upload_settings_t& settings);

/// The same for a cube map: six faces per level, +x, -x, +y, -y, +z, -z. On the way to mipmaps only the first
/// level is examined. False when its first face has a format that is not supported; nothing more should be
/// done to the texture then.
[[nodiscard]] bool upload_cube_levels(std::span<const pixel_source_t> faces,
                                      const upload_settings_t& settings);

}  // namespace libgr
