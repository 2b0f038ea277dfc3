#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace ulk3d {

/// The texture units from which the solid program samples the maps of a surface.
enum class map_unit_t : std::uint32_t { color = 0, bump = 1, specular = 2, cube = 3 };

/// One-pixel textures for surfaces whose pictures could not be loaded: white colour, a flat normal, full
/// specular strength. The solid program always samples its maps; from a unit without a texture it would get
/// black and show the surface unlit. The cube map needs no such texture, since an environment without a
/// picture is black.
///
/// Owns its GL names. Everything but construction and destruction needs a current context; the destructor
/// does nothing without one.
class neutral_maps_t {
  public:
    neutral_maps_t() = default;
    ~neutral_maps_t();
    neutral_maps_t(const neutral_maps_t&) = delete;
    neutral_maps_t& operator=(const neutral_maps_t&) = delete;

    void init();

    /// Binds the map for `unit`, which must be the active one, unless a texture is already bound there. When
    /// it returns true, call `unbind` after the draw, with the same unit active.
    [[nodiscard]] bool bind(map_unit_t unit) const;
    static void unbind();

  private:
    std::array<std::uint32_t, 3> ids{};
};

}  // namespace ulk3d
