#include "gltextures/upload/gr_load.h"

#include <iostream>

#include "gltextures/upload/gr_format.h"
#include "gltextures/upload/gr_mipmap_flag.h"
#include "gltextures/upload/gr_pixel_map.h"

namespace libgr {

const upload_family_t family_1d = {.target = GL_TEXTURE_1D,
                                   .generates_mipmaps = false,
                                   .compresses_all_levels = false,
                                   .words_with_flag = nullptr,
                                   .words_without_flag = nullptr};

const upload_family_t family_2d = {.target = GL_TEXTURE_2D,
                                   .generates_mipmaps = true,
                                   .compresses_all_levels = true,
                                   .words_with_flag = special_format_words,
                                   .words_without_flag = special_format_words};

const upload_family_t family_3d = {
    .target = GL_TEXTURE_3D,
    .generates_mipmaps = false,
    .compresses_all_levels = true,
    .words_with_flag = special_format_words,
    .words_without_flag = "Compressed image are can't build mipmaps in this environment.\n"};

namespace {

bool select_format(gl_triple_t& triple, const pixel_source_t& source, bool compress) {
    return grFormatSelect(triple, source.format, source.type, source.bits, compress);
}

level_place_t place_of(const upload_family_t& family, std::size_t level, const upload_settings_t& settings) {
    return {.image_target = family.target,
            .texture_target = family.target,
            .level = static_cast<GLint>(level),
            .border = settings.border,
            .max_size = settings.max_size,
            .transfer = settings.transfer};
}

void upload_one(const upload_family_t& family, std::span<const pixel_source_t> levels, std::size_t level,
                const upload_settings_t& settings) {
    const pixel_source_t& source = levels[level];
    gl_triple_t triple;
    if (!select_format(triple, source, settings.compressed && family.compresses_all_levels))
        return;
    set_unpack_state(source);
    upload_level(place_of(family, level, settings), source, triple);
}

void upload_with_mipmaps(const upload_family_t& family, const pixel_source_t& source,
                         const upload_settings_t& settings) {
    gl_triple_t triple;
    if (!select_format(triple, source, settings.compressed))
        return;
    set_unpack_state(source);
    level_place_t place = place_of(family, 0, settings);
    place.is_mipmap_path = true;
    if (family.generates_mipmaps && GLEW_VERSION_3_0) {
        if (upload_level(place, source, triple))
            glGenerateMipmap(family.target);
    } else if (has_mipmap_flag_for(triple.internal_format)) {
        set_mipmap_flag(family.target, true);
        upload_level(place, source, triple);
        set_mipmap_flag(family.target, false);
    } else if (source.compressed) {
        const char* const words =
            GLEW_SGIS_generate_mipmap ? family.words_with_flag : family.words_without_flag;
        if (words != nullptr)
            std::cerr << words << std::flush;
        upload_level(place, source, triple);
    } else {
        upload_built_mipmaps(place, source, triple);
    }
}

}  // namespace

void upload_levels(const upload_family_t& family, std::span<const pixel_source_t> levels,
                   const upload_settings_t& settings) {
    if (levels.empty())
        return;
    const bool is_mapped = is_indexed(levels.front());
    if (is_mapped)
        grPixelMapSet(true, *levels.front().palette);
    if (settings.mipmap)
        upload_with_mipmaps(family, levels.front(), settings);
    // Levels that a caller has supplied overwrite those that were made.
    for (std::size_t level = settings.mipmap ? 1 : 0; level < levels.size(); ++level)
        upload_one(family, levels, level, settings);
    if (is_mapped)
        grPixelMapSet(false, *levels.front().palette);
}

}  // namespace libgr
