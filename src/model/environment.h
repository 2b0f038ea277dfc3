#pragma once

#include <cstdint>
#include <string>

namespace ulk3d {

/// The scene's environment: a cube map's file name and the values that say how much of it a surface shows.
struct environment_t {
    std::string cubetex;            ///< base file name of the six faces; empty for no environment
    std::uint32_t cube_handle = 0;  ///< handle in the store of cube textures, 0 for none
    float reflectalpha = 1.0F;
    float refractalpha = 0.0F;
    float refractfactor = 1.0F;

    /// Loads the cube map; `base_file` is the scene file's path, or null. False when a face can not be
    /// loaded. Pictures are not part of the program yet: the handle stays 0.
    bool initex(const char* base_file);
};

}  // namespace ulk3d
