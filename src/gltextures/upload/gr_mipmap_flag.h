#pragma once

#include <GL/glew.h>

namespace libgr {

/// True when GL has the flag that makes it build mipmaps at an upload, and takes it for images of this
/// internal format.
bool has_mipmap_flag_for(GLenum internal_format);

/// Sets or clears that flag.
void set_mipmap_flag(GLenum target, bool on);

/// The message about a compressed image whose mipmaps can not be built.
inline constexpr const char* special_format_words =
    "Compressed 'special format' image is ablen't to build mipmaps, fallback.\n";

}  // namespace libgr
