#pragma once

#include <cstdint>
#include <string>

namespace ulk3d {

/// The texture set of one model: what the scene file says, and the GL textures that it became.
struct texture_t {
    std::string texture;         ///< colour map file, relative to the scene file's directory
    std::string bumpmap;         ///< bump map file, likewise
    std::string specular;        ///< specular map file, likewise
    float aniso = 1.0F;          ///< maximum anisotropy
    float refractfactor = 0.0F;  ///< carried for the scene file; the draw uses the environment's value
    bool bumpofs = true;         ///< sets the bump offset from the map's size
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

    /// Loads the pictures that the names stand for; `base_file` is the scene file's path, or null. False when
    /// one can not be loaded. Pictures are not part of the program yet: the handles stay 0.
    bool open(const char* base_file);
};

}  // namespace ulk3d
