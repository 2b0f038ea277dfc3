#include <iostream>

#include "gltextures/gr_check_error.h"
#include "gltextures/upload/gr_format.h"
#include "gltextures/upload/gr_load.h"
#include "gltextures/upload/gr_mipmap_flag.h"
#include "gltextures/upload/gr_pixel_map.h"

namespace libgr {

namespace {

constexpr std::size_t face_count = 6;
constexpr GLenum face_targets[face_count] = {
    GL_TEXTURE_CUBE_MAP_POSITIVE_X, GL_TEXTURE_CUBE_MAP_NEGATIVE_X, GL_TEXTURE_CUBE_MAP_POSITIVE_Y,
    GL_TEXTURE_CUBE_MAP_NEGATIVE_Y, GL_TEXTURE_CUBE_MAP_POSITIVE_Z, GL_TEXTURE_CUBE_MAP_NEGATIVE_Z,
};

using faces_t = std::span<const pixel_source_t>;

level_place_t place_of(std::size_t face, std::size_t level, const upload_settings_t& settings) {
    return {.image_target = face_targets[face],
            .texture_target = GL_TEXTURE_CUBE_MAP,
            .level = static_cast<GLint>(level),
            .border = settings.border,
            .max_size = settings.max_size,
            .is_mipmap_path = settings.mipmap,
            .transfer = settings.transfer};
}

bool upload_face(faces_t faces, std::size_t face, std::size_t level, const upload_settings_t& settings) {
    const pixel_source_t& source = faces[level * face_count + face];
    gl_triple_t triple;
    if (!grFormatSelect(triple, source.format, source.type, source.bits, settings.compressed))
        return false;
    set_unpack_state(source);
    return upload_level(place_of(face, level, settings), source, triple);
}

/// True when all six have been handed to GL.
bool upload_six(faces_t faces, std::size_t level, const upload_settings_t& settings) {
    bool is_whole = true;
    for (std::size_t face = 0; face < face_count; ++face)
        is_whole = upload_face(faces, face, level, settings) && is_whole;
    return is_whole;
}

/// The last resort: every face's mipmaps are built on the host, those of a compressed one not at all.
void build_face(faces_t faces, std::size_t face, const upload_settings_t& settings) {
    const pixel_source_t& source = faces[face];
    gl_triple_t triple;
    if (!grFormatSelect(triple, source.format, source.type, source.bits, settings.compressed))
        return;
    set_unpack_state(source);
    grCheckError("after-unpack_window_subset");
    if (source.compressed) {
        std::cerr << special_format_words << std::flush;
        upload_level(place_of(face, 0, settings), source, triple);
        return;
    }
    upload_built_mipmaps(place_of(face, 0, settings), source, triple);
    grCheckError("after-gluBuild2DMipmaps");
}

void upload_with_mipmaps(faces_t faces, GLenum internal_format, const upload_settings_t& settings) {
    if (GLEW_VERSION_3_0) {
        const bool is_whole = upload_six(faces, 0, settings);
        grCheckError("before-generate_mipmap");
        if (is_whole)
            glGenerateMipmap(GL_TEXTURE_CUBE_MAP);
        grCheckError("after-generate_mipmap");
    } else if (has_mipmap_flag_for(internal_format)) {
        set_mipmap_flag(GL_TEXTURE_CUBE_MAP, true);
        grCheckError("after-texparameter_cubemap-sgis-true");
        upload_six(faces, 0, settings);
        grCheckError("before-texparameter_cubemap-sgis-false");
        set_mipmap_flag(GL_TEXTURE_CUBE_MAP, false);
        grCheckError("after-texparameter_cubemap-sgis-false");
    } else {
        for (std::size_t face = 0; face < face_count; ++face)
            build_face(faces, face, settings);
    }
}

bool upload_faces(faces_t faces, const upload_settings_t& settings) {
    if (!settings.mipmap) {
        for (std::size_t level = 0; level < faces.size() / face_count; ++level)
            upload_six(faces, level, settings);
        return true;
    }
    const pixel_source_t& first = faces.front();
    gl_triple_t triple;
    if (!grFormatSelect(triple, first.format, first.type, first.bits, settings.compressed))
        return false;
    upload_with_mipmaps(faces, triple.internal_format, settings);
    return true;
}

}  // namespace

bool upload_cube_levels(faces_t faces, const upload_settings_t& settings) {
    if (faces.size() < face_count)
        return true;
    const bool is_mapped = is_indexed(faces.front());
    if (is_mapped)
        grPixelMapSet(true, *faces.front().palette);
    const bool is_supported = upload_faces(faces, settings);
    if (is_mapped)
        grPixelMapSet(false, *faces.front().palette);
    return is_supported;
}

}  // namespace libgr
