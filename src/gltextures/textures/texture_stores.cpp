#include "gltextures/textures/texture_stores.h"

#include <cstdlib>

namespace libgr {

texture_store_t<texture_entry_t> model_textures;
texture_store_t<cube_entry_t> cube_textures;

void clear_texture_stores() {
    cube_textures.clear();
    model_textures.clear();
}

void clear_texture_stores_at_exit() {
    // Where there is no room for the hook, the stores' own destruction does the same a little later.
    [[maybe_unused]] static const int registered = std::atexit(clear_texture_stores);
}

}  // namespace libgr
