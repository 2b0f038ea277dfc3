#pragma once

#include <array>

#include "gltextures/textures/gr_texture_object.h"
#include "gltextures/textures/gr_textures.h"
#include "gltextures/textures/texture_store.h"
#include "utils/pictures/image2d.h"

namespace libgr {

/// A picture that models share. `content` and `object` point into their own entry: set them up when the entry
/// is in its store.
struct texture_entry_t {
    libutils::image2d image;
    tex_parameters_2d_t parameters;
    grTexture2D content;
    grTextureObject object;
};

/// The six pictures of an environment, by face.
struct cube_entry_t {
    std::array<libutils::image2d, 6> images;
    tex_parameters_cube_t parameters;
    grTextureCubeMap content;
    grTextureObject object;
};

/// The textures of the whole run. They are used under the GL context and emptied at the end of the process.
extern texture_store_t<texture_entry_t> model_textures;
extern texture_store_t<cube_entry_t> cube_textures;

/// Empties the stores, the cubes first.
void clear_texture_stores();

/// Has the stores emptied when the process exits, while what the textures are made of still exists. Repeated
/// calls do nothing.
void clear_texture_stores_at_exit();

}  // namespace libgr
