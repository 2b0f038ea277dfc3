#pragma once

#include <cstdint>
#include <string>

namespace ulk3d {

/// What models of both kinds share: the texture set as written in the scene file, and the GL textures made
/// from it. A field that both kinds have belongs here, so that a NURBS model that becomes a polygon model
/// keeps it; its key belongs in formats/scene/shared_keys.cpp.
struct texture_t {
    std::string texture;         ///< colour map file, relative to the scene file's directory
    std::string bumpmap;         ///< bump map file, likewise
    std::string specular;        ///< specular map file, likewise
    float aniso = 1.0F;          ///< maximum anisotropy
    float refractfactor = 0.0F;  ///< kept for the scene file; drawing uses the environment's value
    bool bumpofs = true;         ///< derives the bump offset from the map's size
    bool bump2mono = false;      ///< converts the bump map to monochrome
    bool mipmap = true;
    bool nearlinear = true;  ///< linear minification
    bool maglinear = true;   ///< linear magnification
    bool mercatorsphere = false;
    float bump_offset_u = 0.0F;
    float bump_offset_v = 0.0F;
    std::uint32_t color_handle = 0;  ///< handles in the store of model textures, 0 for none
    std::uint32_t bump_handle = 0;
    std::uint32_t spec_handle = 0;

    /// Turns the names into textures of the store, loading each picture only once even when several models
    /// use it; an empty name becomes a map of one pixel. `base_file` is the scene file's path, or null; its
    /// drive and directory are put before every name. Requires a current GL context.
    ///
    /// Grey bump maps, and with `bump2mono` coloured ones too, are taken as heights and turned into normals;
    /// others are taken as normals in signed bytes. With `bumpofs` the bump offset becomes half a texel of
    /// the map; otherwise, and without a map, it stays.
    ///
    /// False at the first picture that can not be loaded, or that GL can not show, with lines on the standard
    /// error stream. Its handle is then that of an entry without a GL name, which is left out when drawing,
    /// and the maps behind it keep the handles that they had. A picture that is in the store already is not
    /// loaded again. Of colour and specular maps the filters of the first model that names one hold, of bump
    /// maps those of the last.
    bool open(const char* base_file);
};

}  // namespace ulk3d
