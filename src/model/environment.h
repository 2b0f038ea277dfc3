#pragma once

#include <cstddef>
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

    /// Turns the name into a cube texture of the store. Its six pictures have "_posx", "_negx", "_posy",
    /// "_negy", "_posz" and "_negz" before the extension of the name; an empty name becomes a black cube.
    /// `base_file` is the scene file's path, or null; its drive and directory are put before the name, and a
    /// drive in the name itself is ignored. A name that is already in the store is not loaded again. Requires
    /// a current GL context.
    ///
    /// False when a face can not be loaded or shown, with lines on the standard error stream; the handle is
    /// then that of an entry without a GL name, which is left out when drawing.
    [[nodiscard]] bool initex(const char* base_file);

    /// The path of one of the six pictures, numbered 0 to 5 in the order above, as `initex` builds it.
    std::string face_path(const char* base_file, std::size_t face) const;
};

}  // namespace ulk3d
